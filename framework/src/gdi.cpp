// Graphics objects and device contexts: thin wrappers that forward to GDI.
#include "handlemap.h"

IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)
IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)

CResourceException::~CResourceException() {}
const wchar_t* CResourceException::GetDefaultText() const { return L"A required resource was unavailable."; }

void AFXAPI AfxThrowResourceException() { throw new CResourceException; }

// ---- CGdiObject ------------------------------------------------------------

CGdiObject::~CGdiObject() { DeleteObject(); }

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject) { return AfxLiteGdiMap().FromHandle(hObject); }

void PASCAL CGdiObject::DeleteTempMap() { AfxLiteGdiMap().DeleteTemp(); }

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    if (hObject == NULL)
        return FALSE;
    m_hObject = hObject;
    AfxLiteGdiMap().SetPermanent(hObject, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    HGDIOBJ hObject = m_hObject;
    if (hObject != NULL)
        AfxLiteGdiMap().RemoveHandle(hObject);
    m_hObject = NULL;
    return hObject;
}

BOOL CGdiObject::DeleteObject()
{
    if (m_hObject == NULL)
        return FALSE;
    return ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const { return ::GetObjectW(m_hObject, nCount, lpObject); }
UINT CGdiObject::GetObjectType() const { return static_cast<UINT>(::GetObjectType(m_hObject)); }
BOOL CGdiObject::CreateStockObject(int nIndex) { return Attach(::GetStockObject(nIndex)); }
BOOL CGdiObject::UnrealizeObject() { return ::UnrealizeObject(m_hObject); }

// ---- pens, brushes, fonts, bitmaps, palettes --------------------------------

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    if (!CreatePen(nPenStyle, nWidth, crColor))
        AfxThrowResourceException();
}
CPen::~CPen() {}
BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor) { return Attach(::CreatePen(nPenStyle, nWidth, crColor)); }

CBrush::CBrush(COLORREF crColor)
{
    if (!CreateSolidBrush(crColor))
        AfxThrowResourceException();
}
CBrush::~CBrush() {}
BOOL CBrush::CreateSolidBrush(COLORREF crColor) { return Attach(::CreateSolidBrush(crColor)); }
BOOL CBrush::CreateHatchBrush(int nIndex, COLORREF crColor) { return Attach(::CreateHatchBrush(nIndex, crColor)); }
BOOL CBrush::CreateSysColorBrush(int nIndex) { return Attach(::GetSysColorBrush(nIndex)); }
int CBrush::GetLogBrush(LOGBRUSH* pLogBrush) const { return GetObject(sizeof(LOGBRUSH), pLogBrush); }

CFont::~CFont() {}
BOOL CFont::CreateFontIndirect(const LOGFONTW* lpLogFont) { return Attach(::CreateFontIndirectW(lpLogFont)); }

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC)
{
    LOGFONTW logFont = {};
    logFont.lfCharSet = DEFAULT_CHARSET;
    logFont.lfHeight = nPointSize;  // tenths of a point until converted below
    ::lstrcpynW(logFont.lfFaceName, lpszFaceName, LF_FACESIZE);
    HDC hDC = pDC != NULL && pDC->m_hAttribDC != NULL ? pDC->m_hAttribDC : ::GetDC(NULL);
    POINT pt = {0, ::MulDiv(::GetDeviceCaps(hDC, LOGPIXELSY), nPointSize, 720)};
    ::DPtoLP(hDC, &pt, 1);
    POINT ptOrg = {0, 0};
    ::DPtoLP(hDC, &ptOrg, 1);
    logFont.lfHeight = -abs(pt.y - ptOrg.y);
    if (pDC == NULL || pDC->m_hAttribDC == NULL)
        ::ReleaseDC(NULL, hDC);
    return CreateFontIndirect(&logFont);
}

int CFont::GetLogFont(LOGFONTW* pLogFont) const { return GetObject(sizeof(LOGFONTW), pLogFont); }

CBitmap::~CBitmap() {}
BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
{
    return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}
BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}
BOOL CBitmap::LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCEW(nIDResource)); }
BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName)
{
    HINSTANCE hInst = AfxFindResourceHandle(lpszResourceName, RT_BITMAP);
    return Attach(::LoadBitmapW(hInst, lpszResourceName));
}
int CBitmap::GetBitmap(BITMAP* pBitMap) const { return GetObject(sizeof(BITMAP), pBitMap); }
CSize CBitmap::GetBitmapDimension() const
{
    SIZE size = {0, 0};
    ::GetBitmapDimensionEx(static_cast<HBITMAP>(m_hObject), &size);
    return size;
}

CPalette::~CPalette() {}
BOOL CPalette::CreatePalette(const LOGPALETTE* lpLogPalette) { return Attach(::CreatePalette(lpLogPalette)); }
BOOL CPalette::CreateHalftonePalette(CDC* pDC) { return Attach(::CreateHalftonePalette(pDC->GetSafeHdc())); }
int CPalette::GetEntryCount() const
{
    WORD nEntries = 0;
    ::GetObjectW(m_hObject, sizeof(WORD), &nEntries);
    return nEntries;
}
UINT CPalette::GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const
{
    return ::GetPaletteEntries(static_cast<HPALETTE>(m_hObject), nStartIndex, nNumEntries, lpPaletteColors);
}

// ---- CDC ---------------------------------------------------------------------

CDC::~CDC()
{
    if (m_hDC != NULL)
        ::DeleteDC(Detach());
}

CWnd* CDC::GetWindow() const { return CWnd::FromHandle(::WindowFromDC(m_hDC)); }

CDC* PASCAL CDC::FromHandle(HDC hDC) { return AfxLiteDCMap().FromHandle(hDC); }
void PASCAL CDC::DeleteTempMap() { AfxLiteDCMap().DeleteTemp(); }

BOOL CDC::Attach(HDC hDC)
{
    if (hDC == NULL)
        return FALSE;
    m_hDC = hDC;
    AfxLiteDCMap().SetPermanent(hDC, this);
    SetAttribDC(m_hDC);
    return TRUE;
}

HDC CDC::Detach()
{
    HDC hDC = m_hDC;
    if (hDC != NULL)
        AfxLiteDCMap().RemoveHandle(hDC);
    ReleaseAttribDC();
    ReleaseOutputDC();
    return hDC;
}

BOOL CDC::CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    return Attach(::CreateDCW(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODEW*>(lpInitData)));
}
BOOL CDC::CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    return Attach(::CreateICW(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODEW*>(lpInitData)));
}
BOOL CDC::CreateCompatibleDC(CDC* pDC) { return Attach(::CreateCompatibleDC(pDC->GetSafeHdc())); }

BOOL CDC::DeleteDC()
{
    if (m_hDC == NULL)
        return FALSE;
    return ::DeleteDC(Detach());
}

int CDC::SaveDC()
{
    int nRetVal = 0;
    if (m_hAttribDC != NULL)
        nRetVal = ::SaveDC(m_hAttribDC);
    if (m_hDC != m_hAttribDC && ::SaveDC(m_hDC) != 0)
        nRetVal = -1;  // the two states can only be restored together, by -1
    return nRetVal;
}

BOOL CDC::RestoreDC(int nSavedDC)
{
    BOOL bRetVal = TRUE;
    if (m_hDC != m_hAttribDC)
        bRetVal = ::RestoreDC(m_hDC, nSavedDC);
    if (m_hAttribDC != NULL)
        bRetVal = bRetVal && ::RestoreDC(m_hAttribDC, nSavedDC);
    return bRetVal;
}

int CDC::GetDeviceCaps(int nIndex) const { return ::GetDeviceCaps(m_hAttribDC, nIndex); }

HGDIOBJ CDC::SelectObject(HGDIOBJ hObject)
{
    HGDIOBJ hOldObj = NULL;
    if (m_hDC != m_hAttribDC)
        hOldObj = ::SelectObject(m_hDC, hObject);
    if (m_hAttribDC != NULL)
        hOldObj = ::SelectObject(m_hAttribDC, hObject);
    return hOldObj;
}

CGdiObject* CDC::SelectStockObject(int nIndex) { return CGdiObject::FromHandle(SelectObject(::GetStockObject(nIndex))); }
CPen* CDC::SelectObject(CPen* pPen) { return static_cast<CPen*>(CGdiObject::FromHandle(SelectObject(pPen->GetSafeHandle()))); }
CBrush* CDC::SelectObject(CBrush* pBrush) { return static_cast<CBrush*>(CGdiObject::FromHandle(SelectObject(pBrush->GetSafeHandle()))); }
CFont* CDC::SelectObject(CFont* pFont) { return static_cast<CFont*>(CGdiObject::FromHandle(SelectObject(pFont->GetSafeHandle()))); }
CBitmap* CDC::SelectObject(CBitmap* pBitmap) { return static_cast<CBitmap*>(CGdiObject::FromHandle(SelectObject(pBitmap->GetSafeHandle()))); }

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground)
{
    HPALETTE hPalette = static_cast<HPALETTE>(pPalette->GetSafeHandle());
    return static_cast<CPalette*>(CGdiObject::FromHandle(::SelectPalette(m_hDC, hPalette, bForceBackground)));
}
UINT CDC::RealizePalette() { return ::RealizePalette(m_hDC); }

CBitmap* CDC::GetCurrentBitmap() const { return static_cast<CBitmap*>(CGdiObject::FromHandle(::GetCurrentObject(m_hDC, OBJ_BITMAP))); }
CBrush* CDC::GetCurrentBrush() const { return static_cast<CBrush*>(CGdiObject::FromHandle(::GetCurrentObject(m_hDC, OBJ_BRUSH))); }
CFont* CDC::GetCurrentFont() const { return static_cast<CFont*>(CGdiObject::FromHandle(::GetCurrentObject(m_hDC, OBJ_FONT))); }
CPalette* CDC::GetCurrentPalette() const { return static_cast<CPalette*>(CGdiObject::FromHandle(::GetCurrentObject(m_hDC, OBJ_PAL))); }

COLORREF CDC::SetBkColor(COLORREF crColor)
{
    COLORREF crOld = CLR_INVALID;
    if (m_hDC != m_hAttribDC)
        crOld = ::SetBkColor(m_hDC, crColor);
    if (m_hAttribDC != NULL)
        crOld = ::SetBkColor(m_hAttribDC, crColor);
    return crOld;
}

int CDC::SetBkMode(int nBkMode)
{
    int nOld = 0;
    if (m_hDC != m_hAttribDC)
        nOld = ::SetBkMode(m_hDC, nBkMode);
    if (m_hAttribDC != NULL)
        nOld = ::SetBkMode(m_hAttribDC, nBkMode);
    return nOld;
}

COLORREF CDC::SetTextColor(COLORREF crColor)
{
    COLORREF crOld = CLR_INVALID;
    if (m_hDC != m_hAttribDC)
        crOld = ::SetTextColor(m_hDC, crColor);
    if (m_hAttribDC != NULL)
        crOld = ::SetTextColor(m_hAttribDC, crColor);
    return crOld;
}

int CDC::SetStretchBltMode(int nStretchMode)
{
    int nOld = 0;
    if (m_hDC != m_hAttribDC)
        nOld = ::SetStretchBltMode(m_hDC, nStretchMode);
    if (m_hAttribDC != NULL)
        nOld = ::SetStretchBltMode(m_hAttribDC, nStretchMode);
    return nOld;
}

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush) { ::FillRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->GetSafeHandle())); }
void CDC::FrameRect(LPCRECT lpRect, CBrush* pBrush) { ::FrameRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->GetSafeHandle())); }

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, lpRect, NULL, 0, NULL);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    RECT rect = {x, y, x + cx, y + cy};
    FillSolidRect(&rect, clr);
}

CPoint CDC::MoveTo(int x, int y)
{
    POINT point = {0, 0};
    if (m_hDC != m_hAttribDC)
        ::MoveToEx(m_hDC, x, y, &point);
    if (m_hAttribDC != NULL)
        ::MoveToEx(m_hAttribDC, x, y, &point);
    return point;
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
{
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC->GetSafeHdc(), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop)
{
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC->GetSafeHdc(), xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

BOOL CDC::PtVisible(int x, int y) const { return ::PtVisible(m_hDC, x, y); }
BOOL CDC::RectVisible(LPCRECT lpRect) const { return ::RectVisible(m_hDC, lpRect); }
BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount) { return ::TextOutW(m_hDC, x, y, lpszString, nCount); }

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount, LPINT lpDxWidths)
{
    return ::ExtTextOutW(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

CSize CDC::TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions, LPINT lpnTabStopPositions,
                         int nTabOrigin)
{
    LONG extent = ::TabbedTextOutW(m_hDC, x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin);
    return CSize(LOWORD(extent), HIWORD(extent));
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    return ::DrawTextW(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat, LPDRAWTEXTPARAMS lpDTParams)
{
    return ::DrawTextExW(m_hDC, lpszString, nCount, lpRect, nFormat, lpDTParams);
}

BOOL CDC::GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData, int nCount, int x,
                     int y, int nWidth, int nHeight)
{
    return ::GrayStringW(m_hDC, static_cast<HBRUSH>(pBrush->GetSafeHandle()), reinterpret_cast<GRAYSTRINGPROC>(lpfnOutput),
                         lpData, nCount, x, y, nWidth, nHeight);
}

int CDC::Escape(int nEscape, int nCount, LPCSTR lpszInData, LPVOID lpOutData)
{
    return ::Escape(m_hDC, nEscape, nCount, lpszInData, lpOutData);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const
{
    SIZE size = {0, 0};
    ::GetTextExtentPoint32W(m_hAttribDC, lpszString, nCount, &size);
    return size;
}

// ---- window contexts -------------------------------------------------------------

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC() { ::ReleaseDC(m_hWnd, Detach()); }

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC() { ::ReleaseDC(m_hWnd, Detach()); }
