// CImageList over the common controls' image lists.
#include <afxcmn.h>

IMPLEMENT_DYNAMIC(CImageList, CObject)

CImageList::~CImageList() { DeleteImageList(); }

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return Attach(::ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Attach(HIMAGELIST hImageList)
{
    if (hImageList == NULL)
        return FALSE;
    m_hImageList = hImageList;
    return TRUE;
}

HIMAGELIST CImageList::Detach()
{
    HIMAGELIST hImageList = m_hImageList;
    m_hImageList = NULL;
    return hImageList;
}

BOOL CImageList::DeleteImageList()
{
    if (m_hImageList == NULL)
        return FALSE;
    return ::ImageList_Destroy(Detach());
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    return ::ImageList_Add(m_hImageList, static_cast<HBITMAP>(pbmImage->GetSafeHandle()),
                           static_cast<HBITMAP>(pbmMask->GetSafeHandle()));
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    return ::ImageList_AddMasked(m_hImageList, static_cast<HBITMAP>(pbmImage->GetSafeHandle()), crMask);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    return ::ImageList_Draw(m_hImageList, nImage, pDC->GetSafeHdc(), pt.x, pt.y, nStyle);
}
