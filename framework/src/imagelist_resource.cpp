// Image lists made from bitmap resources found through the module chain.
#include <afxcmn.h>

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    LPCTSTR lpszName = MAKEINTRESOURCE(nBitmapID);
    HINSTANCE hInst = AfxFindResourceHandle(lpszName, RT_BITMAP);
    return Attach(::ImageList_LoadImageW(hInst, lpszName, cx, nGrow, crMask, IMAGE_BITMAP, 0));
}
