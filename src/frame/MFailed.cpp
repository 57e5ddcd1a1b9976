#include "TesvorFunctions.h"

bool MFailed(HRESULT hr, const wchar_t*, UINT) { return hr < 0; }
