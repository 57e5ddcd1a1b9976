#include "MImageUtils.h"
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include "MCDC.h"
#include "frame/Owners.h"

namespace {

COLOR16 Channel16(BYTE value) { return static_cast<COLOR16>(value << 8); }

TRIVERTEX Vertex(LONG x, LONG y, COLORREF cr)
{
    TRIVERTEX v;
    v.x = x;
    v.y = y;
    v.Red = Channel16(GetRValue(cr));
    v.Green = Channel16(GetGValue(cr));
    v.Blue = Channel16(GetBValue(cr));
    v.Alpha = 0;
    return v;
}

void FillBand(HDC hDC, const RECT& band, COLORREF cr)
{
    UniqueGdiObject<HBRUSH> brush(::CreateSolidBrush(cr));
    ::FillRect(hDC, &band, brush.get());
}

// The gradient as solid bands, one per step of the largest channel difference.
void DrawGradientBands(HDC hDC, const CRect& rc, COLORREF crFrom, COLORREF crTo, bool bHorizontal)
{
    const int span = bHorizontal ? rc.right - rc.left : rc.bottom - rc.top;
    const short dR = static_cast<short>(GetRValue(crTo) - GetRValue(crFrom));
    const short dG = static_cast<short>(GetGValue(crTo) - GetGValue(crFrom));
    const short dB = static_cast<short>(GetBValue(crTo) - GetBValue(crFrom));
    const int steps = std::max(std::max(std::abs(dR), std::abs(dG)), std::abs(dB)) + 1;
    const double bandWidth = static_cast<double>(span) / steps;
    const double incR = static_cast<double>(dR) / steps;
    const double incG = static_cast<double>(dG) / steps;
    const double incB = static_cast<double>(dB) / steps;
    for (int i = 0; i < steps; ++i) {
        const int from = static_cast<int>(i * bandWidth);
        const int to = static_cast<int>((i + 1) * bandWidth);
        RECT band = bHorizontal ? RECT{rc.left + from, rc.top, rc.left + to, rc.bottom}
                                : RECT{rc.left, rc.top + from, rc.right, rc.top + to};
        COLORREF cr = RGB(GetRValue(crFrom) + static_cast<int>(i * incR), GetGValue(crFrom) + static_cast<int>(i * incG),
                          GetBValue(crFrom) + static_cast<int>(i * incB));
        FillBand(hDC, band, cr);
    }
}

}  // namespace

void MImageUtils::DestroyIconInfoData(ICONINFO& info)
{
    if (info.hbmColor != NULL) {
        ::DeleteObject(info.hbmColor);
        info.hbmColor = NULL;
    }
    if (info.hbmMask != NULL) {
        ::DeleteObject(info.hbmMask);
        info.hbmMask = NULL;
    }
}

bool MImageUtils::GetIconSize(HICON hIcon, CSize& size)
{
    ICONINFO info = {};
    if (!::GetIconInfo(hIcon, &info))
        return false;
    BITMAP bm;
    bool known = info.hbmColor != NULL && ::GetObjectW(info.hbmColor, sizeof(bm), &bm) != 0;
    if (known) {
        size.cx = bm.bmWidth;
        size.cy = bm.bmHeight;
    }
    DestroyIconInfoData(info);
    return known;
}

HANDLE MImageUtils::LoadResourceFromFile(const wchar_t* pszPath, UINT nType, int cx, int cy, HINSTANCE hInst)
{
    if (nType == IMAGE_CURSOR)
        return ::LoadCursorFromFileW(pszPath);
    UINT flags = (cx != 0 || cy != 0) ? LR_LOADFROMFILE : LR_LOADFROMFILE | LR_DEFAULTSIZE;
    return ::LoadImageW(hInst, pszPath, nType, cx, cy, flags);
}

HCURSOR MImageUtils::LoadCursorFromFileW(const wchar_t* pszPath, HINSTANCE /*hInst*/)
{
    return ::LoadCursorFromFileW(pszPath);
}

HICON MImageUtils::LoadIconFromFile(const wchar_t* pszPath, HINSTANCE hInst)
{
    return static_cast<HICON>(::LoadImageW(hInst, pszPath, IMAGE_ICON, 0, 0, LR_LOADFROMFILE | LR_DEFAULTSIZE));
}

HICON MImageUtils::CreateCursorFromIcon(HICON hIcon, int xHotspot, int yHotspot)
{
    ICONINFO info = {};
    if (!::GetIconInfo(hIcon, &info))
        return NULL;
    HICON hCursor = NULL;
    BITMAP bm;
    if (info.hbmColor != NULL && ::GetObjectW(info.hbmColor, sizeof(bm), &bm) != 0) {
        info.fIcon = FALSE;
        info.xHotspot = static_cast<DWORD>(xHotspot);
        info.yHotspot = static_cast<DWORD>(yHotspot);
        hCursor = ::CreateIconIndirect(&info);
    }
    DestroyIconInfoData(info);
    return hCursor;
}

bool MImageUtils::DrawIconOnIcon(HICON& hIcon, HICON const& hOverlay, MEIconOnIconPlace ePlace, COLORREF crMask)
{
    if (ePlace != IconPlaceBottomRight)
        return false;
    CSize base, overlay;
    if (!GetIconSize(hIcon, base) || (base.cx == 0 && base.cy == 0))
        return false;
    if (!GetIconSize(hOverlay, overlay) || (overlay.cx == 0 && overlay.cy == 0) || overlay.cx > base.cx ||
        overlay.cy > base.cy)
        return false;

    MCDC surface(base.cx, base.cy, static_cast<CWnd*>(NULL));
    surface.Fill(crMask);
    bool drawn = ::DrawIconEx(surface.m_hDC, 0, 0, hIcon, base.cx, base.cy, 0, NULL, DI_NORMAL) &&
                 ::DrawIconEx(surface.m_hDC, base.cx - overlay.cx, base.cy - overlay.cy, hOverlay, overlay.cx,
                              overlay.cy, 0, NULL, DI_NORMAL);
    if (!drawn)
        return false;
    ::DestroyIcon(hIcon);  // the caller's icon is replaced by the stamped one
    hIcon = surface.CreateNewIcon(crMask);
    return hIcon != NULL;
}

BOOL MImageUtils::GetBitmapByIndex(HIMAGELIST hImageList, long nIndex, COLORREF crBack, HBITMAP& hBitmap)
{
    hBitmap = NULL;
    int cx = 0, cy = 0;
    BOOL known = ::ImageList_GetIconSize(hImageList, &cx, &cy);
    if (!known)
        return known;
    MCDC surface(cx, cy, static_cast<CWnd*>(NULL));
    surface.Fill(crBack);
    ::ImageList_Draw(hImageList, static_cast<int>(nIndex), surface.m_hDC, 0, 0, ILD_TRANSPARENT);
    hBitmap = surface.CreateNewBitmap();
    return hBitmap != NULL;
}

int MImageUtils::UVLRDrawGradientRect(CDC* pDC, const CRect& rc, COLORREF crFrom, COLORREF crTo, bool bHorizontal)
{
    if (pDC == NULL)
        return 0;
    TRIVERTEX vertices[2] = {Vertex(rc.left, rc.top, crFrom), Vertex(rc.right, rc.bottom, crTo)};
    GRADIENT_RECT joint = {0, 1};
    if (::GradientFill(pDC->m_hDC, vertices, 2, &joint, 1, bHorizontal ? GRADIENT_FILL_RECT_H : GRADIENT_FILL_RECT_V))
        return 1;
    DrawGradientBands(pDC->m_hDC, rc, crFrom, crTo, bHorizontal);
    return 1;
}
