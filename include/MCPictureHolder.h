// MCPictureHolder: loads a picture through the system's OLE picture loader and
// draws it into device contexts, off-screen surfaces and image lists.
#pragma once
#include <afxwin.h>
#include "TesvorUtilExport.h"

// Non-zero when each of the four anchors lies in 0..100, left does not exceed
// right and top does not exceed bottom. Anchors are percentages of the parent's size.
TESVORUTIL_API int IsValidAnchorsRect(const CRect& rc);
