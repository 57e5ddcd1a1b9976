#include "MCPictureHolder.h"

namespace {
bool IsPercent(LONG value) { return value >= 0 && value <= 100; }
}

int IsValidAnchorsRect(const CRect& rc)
{
    return IsPercent(rc.left) && IsPercent(rc.top) && IsPercent(rc.right) && IsPercent(rc.bottom) &&
           rc.left <= rc.right && rc.top <= rc.bottom;
}
