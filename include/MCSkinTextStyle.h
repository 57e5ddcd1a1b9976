// MCSkinTextStyle: how a skinned control draws its text (the "textstyle" element
// of a font). Byte-packed: the applications store it as it lies in memory, with
// the two colour records following each other byte by byte.
#pragma once
#include <afxwin.h>
#include "MCXMLTypes.h"

#pragma pack(push, 1)
struct MCSkinTextStyle {
    MEFontEffect eEffect;    // "texteffect"
    MCSkinRGB rgbText;       // "rgbtextcolor"
    MCSkinARGB argbEffect;   // "argbeffectcolor"
    MEFontFlags eFlags;      // "textflags"
    bool bRightToLeft;       // "righttoleft"
    bool bEllipsis;          // "ellipsis"

    MCSkinTextStyle()
        : eEffect(static_cast<MEFontEffect>(0)), rgbText(), argbEffect(),
          eFlags(static_cast<MEFontFlags>(0)), bRightToLeft(false), bEllipsis(false)
    {
    }
};
#pragma pack(pop)

static_assert(offsetof(MCSkinTextStyle, argbEffect) == sizeof(MEFontEffect) + sizeof(MCSkinRGB) &&
                  sizeof(MCSkinTextStyle) == sizeof(MEFontEffect) + 3 + 4 + sizeof(MEFontFlags) + 2,
              "MCSkinTextStyle is byte-packed");
