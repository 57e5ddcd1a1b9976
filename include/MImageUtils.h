// MImageUtils: icons, cursors and bitmaps for the skinned user interface.
#pragma once
#include <afxwin.h>
#include <commctrl.h>
#include "TesvorUtilExport.h"

// Where DrawIconOnIcon puts the overlay, in reading order of a 3-by-3 grid. Only
// the bottom-right corner is drawn; every other place makes it fail.
enum MEIconOnIconPlace {
    IconPlaceTopLeft = 1,
    IconPlaceTopCenter = 2,
    IconPlaceTopRight = 3,
    IconPlaceMiddleLeft = 4,
    IconPlaceCenter = 5,
    IconPlaceMiddleRight = 6,
    IconPlaceBottomLeft = 7,
    IconPlaceBottomCenter = 8,
    IconPlaceBottomRight = 9,
};

namespace MImageUtils {

// Deletes the colour and mask bitmaps that GetIconInfo hands out, and clears them.
TESVORUTIL_API void DestroyIconInfoData(ICONINFO& info);
// The size of the icon's colour bitmap; false for an icon without one (monochrome).
TESVORUTIL_API bool GetIconSize(HICON hIcon, CSize& size);
// An image from a file: a cursor for IMAGE_CURSOR, else LoadImage from the file at
// (cx, cy), or at the system's default size when both are 0.
TESVORUTIL_API HANDLE LoadResourceFromFile(const wchar_t* pszPath, UINT nType, int cx, int cy, HINSTANCE hInst);
// The system's cursor loader; hInst is not used.
TESVORUTIL_API HCURSOR LoadCursorFromFileW(const wchar_t* pszPath, HINSTANCE hInst);
TESVORUTIL_API HICON LoadIconFromFile(const wchar_t* pszPath, HINSTANCE hInst);
// A new cursor with the icon's picture and the given hot spot, or null.
TESVORUTIL_API HICON CreateCursorFromIcon(HICON hIcon, int xHotspot, int yHotspot);
// Stamps hOverlay onto a corner of hIcon, replacing hIcon (the old one is destroyed)
// with a new icon masked by crMask. On failure hIcon is left as it was.
TESVORUTIL_API bool DrawIconOnIcon(HICON& hIcon, HICON const& hOverlay, MEIconOnIconPlace ePlace, COLORREF crMask);
// Image nIndex of the list drawn over crBack, as a new bitmap in hBitmap.
TESVORUTIL_API BOOL GetBitmapByIndex(HIMAGELIST hImageList, long nIndex, COLORREF crBack, HBITMAP& hBitmap);
// Fills rc with a two-colour gradient, left to right or top to bottom. Where the
// system cannot draw gradients, bands of solid colour are drawn instead, one per
// step of the largest channel difference. 0 for a null context, else 1.
TESVORUTIL_API int UVLRDrawGradientRect(CDC* pDC, const CRect& rc, COLORREF crFrom, COLORREF crTo, bool bHorizontal);

}  // namespace MImageUtils
