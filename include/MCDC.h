// MCDC: an off-screen drawing surface. A memory device context that owns a bitmap
// of a fixed size, compatible with a given context, window or the screen. Draw into
// it with the CDC operations, then blit it, save it as a BMP file, or turn it into
// an independent bitmap, an icon or an image list.
#pragma once
#include <afxwin.h>
#include <commctrl.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCDC : public CDC {
public:
    // Each builds the surface compatible with a reference context:
    MCDC(HDC hDC, int cx, int cy);             // the given context (not released)
    MCDC(CDC* pDC, int cx, int cy);            // the given context
    MCDC(CWnd* pWnd, int cx, int cy);          // the window's client area
    MCDC(int cx, int cy, CWnd* pWnd = NULL);   // the window's client area; the screen for none
    MCDC(HWND hWnd, int cx, int cy);           // the window's client area
    ~MCDC() override;

    // Releases the surface and frees the object (which must come from new).
    void Delete();
    // Releases the surface and leaves it empty: no context, no bitmap, size 0 by 0.
    // The new size is not applied; make a new MCDC for a surface of another size.
    void Resize(int cx, int cy);

    void Fill(COLORREF crColor);
    void Fill(CBrush* pBrush);
    // nWidth nested one-pixel frames from the edge inwards.
    void DrawFrame(COLORREF crColor, int nWidth);

    // The surface's own bitmap: do not delete it.
    HBITMAP GetBitmap();
    // A temporary wrapper of the surface's own bitmap.
    CBitmap* GetCBitmap();
    // New bitmaps, icons and image lists with the surface's picture; the caller owns them.
    HBITMAP CreateNewBitmap();
    static HBITMAP CreateNewBitmapFromDC(HDC hDC);
    HICON CreateNewIcon(COLORREF crMask);
    // The surface as a strip of nCount images of (width / nCount) by height pixels.
    // nFlags is not used.
    HIMAGELIST CreateImageList(int nCount, COLORREF crMask, UINT nFlags);

    // Mirrors left to right about column width / 2, pixel by pixel; column 0 stays
    // where it is (and so does the last column of an odd width). Always true.
    bool Mirror();
    // Writes the picture as a BMP file (16 and 32 bits per pixel are saved as 24).
    bool Save(const wchar_t* pszPath);

    CSize GetSize() { return CSize(m_nWidth, m_nHeight); }
    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }

protected:
    void Init(CDC* pDC, int cx, int cy);
    // Selects the old bitmap back, deletes the surface's bitmap and context.
    void ResetData();

    int m_nWidth;
    int m_nHeight;
    HBITMAP m_hBitmap;
    HBITMAP m_hOldBitmap;

private:
    MCDC(const MCDC&) = delete;
    MCDC& operator=(const MCDC&) = delete;
};
