// afxlite: graphics objects and device contexts.
//
// Handle wrappers follow the framework's rules: an object made with Create* or
// Attach owns its handle and deletes it in its destructor; FromHandle returns a
// temporary wrapper for a handle owned elsewhere. Temporaries belong to the
// calling thread and live until that thread calls AfxLockTempMaps() followed by
// AfxUnlockTempMaps() (the framework's idle clean-up, which afxlite leaves to the
// caller because it runs no message loop) or until the thread ends. Deleting a
// temporary never deletes the handle it wraps.
#pragma once
#include "afx.h"
#include "afxlite_types.h"

class CWnd;

// Framework code calls GetSafeHandle and its kin through pointers that may be null
// and expects null back. The empty asm hides the pointer's origin from the
// optimiser, which would otherwise drop the test as "this is never null".
inline bool AfxLiteIsNullObject(const void* p)
{
    __asm__("" : "+r"(p));
    return p == NULL;
}

// Thrown when a system resource (a device context, a GDI object) cannot be had.
class AFXLITE_API CResourceException : public CSimpleException {
    DECLARE_DYNAMIC(CResourceException)
public:
    explicit CResourceException(BOOL bAutoDelete = TRUE) : CSimpleException(bAutoDelete) {}
    ~CResourceException() override;
protected:
    const wchar_t* GetDefaultText() const override;
};
[[noreturn]] AFXLITE_API void AFXAPI AfxThrowResourceException();

// Temporary-object clean-up: the lock counts nest; the unlock that brings the count
// back to zero deletes this thread's temporaries (when bDeleteTemps is set).
// Returns TRUE while the maps stay locked.
AFXLITE_API void AFXAPI AfxLockTempMaps();
AFXLITE_API BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps = TRUE);

class AFXLITE_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() : m_hObject(NULL) {}
    ~CGdiObject() override;

    HGDIOBJ m_hObject;
    operator HGDIOBJ() const { return GetSafeHandle(); }
    HGDIOBJ GetSafeHandle() const { return AfxLiteIsNullObject(this) ? NULL : m_hObject; }

    // The permanent wrapper of the handle if there is one, else a temporary of the
    // class that matches the object's type (CBitmap for a bitmap, and so on).
    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);
    static void PASCAL DeleteTempMap();

    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();

    int GetObject(int nCount, LPVOID lpObject) const;
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject();

private:
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;
};

class AFXLITE_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() {}
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    ~CPen() override;
    static CPen* PASCAL FromHandle(HPEN hPen) { return static_cast<CPen*>(CGdiObject::FromHandle(hPen)); }
    operator HPEN() const { return static_cast<HPEN>(GetSafeHandle()); }
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
};

class AFXLITE_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() {}
    explicit CBrush(COLORREF crColor);  // throws CResourceException on failure
    ~CBrush() override;
    static CBrush* PASCAL FromHandle(HBRUSH hBrush) { return static_cast<CBrush*>(CGdiObject::FromHandle(hBrush)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(GetSafeHandle()); }
    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor);
    BOOL CreateSysColorBrush(int nIndex);
    int GetLogBrush(LOGBRUSH* pLogBrush) const;
};

class AFXLITE_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() {}
    ~CFont() override;
    static CFont* PASCAL FromHandle(HFONT hFont) { return static_cast<CFont*>(CGdiObject::FromHandle(hFont)); }
    operator HFONT() const { return static_cast<HFONT>(GetSafeHandle()); }
    BOOL CreateFontIndirect(const LOGFONTW* lpLogFont);
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, class CDC* pDC = NULL);
    int GetLogFont(LOGFONTW* pLogFont) const;
};

class AFXLITE_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() {}
    ~CBitmap() override;
    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap) { return static_cast<CBitmap*>(CGdiObject::FromHandle(hBitmap)); }
    operator HBITMAP() const { return static_cast<HBITMAP>(GetSafeHandle()); }
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateCompatibleBitmap(class CDC* pDC, int nWidth, int nHeight);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    int GetBitmap(BITMAP* pBitMap) const;
    CSize GetBitmapDimension() const;
};

class AFXLITE_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() {}
    ~CPalette() override;
    static CPalette* PASCAL FromHandle(HPALETTE hPalette) { return static_cast<CPalette*>(CGdiObject::FromHandle(hPalette)); }
    operator HPALETTE() const { return static_cast<HPALETTE>(GetSafeHandle()); }
    BOOL CreatePalette(const LOGPALETTE* lpLogPalette);
    BOOL CreateHalftonePalette(class CDC* pDC);
    int GetEntryCount() const;
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const;
};

// A device context: output operations go to m_hDC, queries to m_hAttribDC (the
// two are the same handle unless a derived class splits them).
class AFXLITE_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() : m_hDC(NULL), m_hAttribDC(NULL), m_bPrinting(FALSE) {}
    ~CDC() override;  // deletes an owned m_hDC

    HDC m_hDC;
    HDC m_hAttribDC;
    BOOL m_bPrinting;

    operator HDC() const { return GetSafeHdc(); }
    HDC GetSafeHdc() const { return AfxLiteIsNullObject(this) ? NULL : m_hDC; }
    CWnd* GetWindow() const;

    static CDC* PASCAL FromHandle(HDC hDC);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HDC hDC);
    HDC Detach();

    virtual void SetAttribDC(HDC hDC) { m_hAttribDC = hDC; }
    virtual void SetOutputDC(HDC hDC) { m_hDC = hDC; }
    virtual void ReleaseAttribDC() { m_hAttribDC = NULL; }
    virtual void ReleaseOutputDC() { m_hDC = NULL; }

    BOOL CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateCompatibleDC(CDC* pDC);
    BOOL DeleteDC();
    int SaveDC();
    BOOL RestoreDC(int nSavedDC);
    int GetDeviceCaps(int nIndex) const;

    // Objects are selected into both handles; the old object is the attribute handle's.
    CGdiObject* SelectStockObject(int nIndex);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);
    HGDIOBJ SelectObject(HGDIOBJ hObject);
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette();
    CBitmap* GetCurrentBitmap() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CPalette* GetCurrentPalette() const;

    COLORREF GetBkColor() const { return ::GetBkColor(m_hAttribDC); }
    virtual COLORREF SetBkColor(COLORREF crColor);
    int GetBkMode() const { return ::GetBkMode(m_hAttribDC); }
    int SetBkMode(int nBkMode);
    COLORREF GetTextColor() const { return ::GetTextColor(m_hAttribDC); }
    virtual COLORREF SetTextColor(COLORREF crColor);
    int SetStretchBltMode(int nStretchMode);

    void FillRect(LPCRECT lpRect, CBrush* pBrush);
    void FrameRect(LPCRECT lpRect, CBrush* pBrush);
    void InvertRect(LPCRECT lpRect) { ::InvertRect(m_hDC, lpRect); }
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Rectangle(LPCRECT lpRect) { return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    CPoint MoveTo(int x, int y);
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }

    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                    int nSrcWidth, int nSrcHeight, DWORD dwRop);
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) { return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return ::GetPixel(m_hDC, point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF crColor) { return ::SetPixel(m_hDC, x, y, crColor); }
    COLORREF SetPixel(POINT point, COLORREF crColor) { return ::SetPixel(m_hDC, point.x, point.y, crColor); }
    BOOL DrawIcon(int x, int y, HICON hIcon) { return ::DrawIcon(m_hDC, x, y, hIcon); }
    BOOL DrawIcon(POINT point, HICON hIcon) { return ::DrawIcon(m_hDC, point.x, point.y, hIcon); }

    // Drawing operations a derived context may redirect (metafile, print preview).
    virtual BOOL PtVisible(int x, int y) const;
    BOOL PtVisible(POINT point) const { return PtVisible(point.x, point.y); }
    virtual BOOL RectVisible(LPCRECT lpRect) const;
    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str) { return TextOut(x, y, (LPCTSTR)str, str.GetLength()); }
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString,
                            UINT nCount, LPINT lpDxWidths);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths)
    {
        return ExtTextOut(x, y, nOptions, lpRect, (LPCTSTR)str, str.GetLength(), lpDxWidths);
    }
    virtual CSize TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                                LPINT lpnTabStopPositions, int nTabOrigin);
    CSize TabbedTextOut(int x, int y, const CString& str, int nTabPositions, LPINT lpnTabStopPositions,
                        int nTabOrigin)
    {
        return TabbedTextOut(x, y, (LPCTSTR)str, str.GetLength(), nTabPositions, lpnTabStopPositions, nTabOrigin);
    }
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
    {
        return DrawText((LPCTSTR)str, str.GetLength(), lpRect, nFormat);
    }
    virtual int DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat,
                           LPDRAWTEXTPARAMS lpDTParams);
    virtual BOOL GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData,
                            int nCount, int x, int y, int nWidth, int nHeight);
    virtual int Escape(int nEscape, int nCount, LPCSTR lpszInData, LPVOID lpOutData);
    int Escape(int nEscape, int nInputSize, LPCSTR lpszInputData, int nOutputSize, LPSTR lpszOutputData)
    {
        return ::ExtEscape(m_hDC, nEscape, nInputSize, lpszInputData, nOutputSize, lpszOutputData);
    }

    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const { return GetTextExtent((LPCTSTR)str, str.GetLength()); }
    BOOL GetTextMetrics(LPTEXTMETRICW lpMetrics) const { return ::GetTextMetricsW(m_hAttribDC, lpMetrics); }

private:
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
};

// The client area of a window (the whole screen for a null window), released on destruction.
class AFXLITE_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);  // throws CResourceException when no context is given
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

// The whole window, title and borders included.
class AFXLITE_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};
