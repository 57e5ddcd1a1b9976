// MCPictureHolder: loads a picture through the system's OLE picture loader and
// draws it into device contexts, off-screen surfaces and image lists.
#pragma once
#include <afxwin.h>
#include <ocidl.h>
#include <commctrl.h>
#include "TesvorUtilExport.h"
#include "MEImageEffect.h"

class MCDC;

// A value class: copies share one picture object.
class TESVORUTIL_API MCPictureHolder {
public:
    MCPictureHolder();
    MCPictureHolder(const MCPictureHolder& other);
    MCPictureHolder& operator=(const MCPictureHolder& other);
    ~MCPictureHolder();

    // Loads any picture the system reads (BMP, JPEG, GIF, icon, metafile). A null
    // buffer or zero size fails and keeps the current picture; any other failure
    // leaves the holder empty.
    bool CreatePicture(BYTE* pData, DWORD nSize);
    bool CreatePicture(const wchar_t* pszPath);
    // A custom resource of the framework's current resource module; hInst is not used.
    bool CreatePicture(const wchar_t* pszType, UINT nID, HINSTANCE hInst);

    // The bytes of a resource, copied into a new[] buffer that the caller deletes.
    // Returns 0 and touches nothing unless pszType is a readable string, ppData is
    // non-null and *ppData is null. The size is returned even when the bytes could
    // not be loaded (then *ppData is null): test both.
    static DWORD LoadBinaryResource(const wchar_t* pszType, UINT nID, BYTE** ppData, HINSTANCE hInst);

    // Draws the picture at (x, y); a cx or cy of 0 means the picture's own size.
    bool Draw(const CDC& dc, int x, int y, int cx, int cy);
    // A new surface of the picture's size (the caller deletes it), drawn into when bDraw is set.
    bool CreateDCW(MCDC*& pDC, bool bDraw, int x, int y, int cx, int cy);
    // An image list of one image of the picture (with the effect applied); the
    // caller owns the list, which is handed out even when adding the image failed.
    bool CreateImageList(HIMAGELIST& hImageList, int nInitial, COLORREF crMask);
    bool CreateImageList(const wchar_t* pszPath, HIMAGELIST& hImageList, int nInitial, COLORREF crMask);

    bool SetEffect(MEImageEffect eEffect);
    bool GetSize(CSize& size);
    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }

protected:
    // The place for effects applied to a bitmap; none is, so the bitmap stays as it is.
    bool ApplyEffectOnBitmap(HBITMAP& hBitmap, MEImageEffect eEffect);

private:
    void ReleasePicture();

    IPicture* m_pPicture;
    int m_nWidth;           // pixels, on the screen at load time
    int m_nHeight;
    int m_nHimetricWidth;   // 0.01 mm, as the picture reports
    int m_nHimetricHeight;
    MEImageEffect m_eEffect;
};

// Non-zero when each of the four anchors lies in 0..100, left does not exceed
// right and top does not exceed bottom. Anchors are percentages of the parent's size.
TESVORUTIL_API int IsValidAnchorsRect(const CRect& rc);
