// afxlite: common controls. CImageList owns an HIMAGELIST.
#pragma once
#include "afxwin.h"
#include <commctrl.h>

class AFXLITE_API CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)
public:
    CImageList() : m_hImageList(NULL) {}
    ~CImageList() override;  // destroys an owned list

    HIMAGELIST m_hImageList;
    operator HIMAGELIST() const { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const { return AfxLiteIsNullObject(this) ? NULL : m_hImageList; }

    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    // From a bitmap strip in the resource chain; crMask is the transparent colour.
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    int GetImageCount() const { return ::ImageList_GetImageCount(m_hImageList); }
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
    {
        return ::ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo);
    }
    COLORREF SetBkColor(COLORREF cr) { return ::ImageList_SetBkColor(m_hImageList, cr); }
    COLORREF GetBkColor() const { return ::ImageList_GetBkColor(m_hImageList); }

    // The index of the first new image, or -1.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask);
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon) { return ::ImageList_ReplaceIcon(m_hImageList, -1, hIcon); }
    BOOL Remove(int nImage) { return ::ImageList_Remove(m_hImageList, nImage); }
    HICON ExtractIcon(int nImage) { return ::ImageList_ExtractIcon(NULL, m_hImageList, nImage); }
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);

private:
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;
};
