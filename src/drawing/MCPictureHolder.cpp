#include "MCPictureHolder.h"
#include <afxcmn.h>
#include <atlbase.h>
#include <olectl.h>
#include <cstring>
#include <memory>
#include <new>
#include "MCDC.h"
#include "frame/FaultGuard.h"
#include "frame/Owners.h"

namespace {

bool IsPercent(LONG value) { return value >= 0 && value <= 100; }

constexpr int kHimetricPerInch = 2540;

}  // namespace

int IsValidAnchorsRect(const CRect& rc)
{
    return IsPercent(rc.left) && IsPercent(rc.top) && IsPercent(rc.right) && IsPercent(rc.bottom) &&
           rc.left <= rc.right && rc.top <= rc.bottom;
}

MCPictureHolder::MCPictureHolder()
    : m_pPicture(NULL), m_nWidth(0), m_nHeight(0), m_nHimetricWidth(0), m_nHimetricHeight(0),
      m_eEffect(ImageEffectNone)
{
}

MCPictureHolder::MCPictureHolder(const MCPictureHolder& other)
    : m_pPicture(other.m_pPicture), m_nWidth(other.m_nWidth), m_nHeight(other.m_nHeight),
      m_nHimetricWidth(other.m_nHimetricWidth), m_nHimetricHeight(other.m_nHimetricHeight),
      m_eEffect(other.m_eEffect)
{
    if (m_pPicture != NULL)
        m_pPicture->AddRef();
}

MCPictureHolder& MCPictureHolder::operator=(const MCPictureHolder& other)
{
    // Reference first, release second: safe when both share the picture, or are one.
    IPicture* pPicture = other.m_pPicture;
    if (pPicture != NULL)
        pPicture->AddRef();
    ReleasePicture();
    m_pPicture = pPicture;
    m_nWidth = other.m_nWidth;
    m_nHeight = other.m_nHeight;
    m_nHimetricWidth = other.m_nHimetricWidth;
    m_nHimetricHeight = other.m_nHimetricHeight;
    m_eEffect = other.m_eEffect;
    return *this;
}

MCPictureHolder::~MCPictureHolder() { ReleasePicture(); }

void MCPictureHolder::ReleasePicture()
{
    if (m_pPicture != NULL) {
        m_pPicture->Release();
        m_pPicture = NULL;
    }
}

bool MCPictureHolder::CreatePicture(BYTE* pData, DWORD nSize)
{
    if (pData == NULL || nSize == 0)
        return false;
    ReleasePicture();

    UniqueHGlobal block(::GlobalAlloc(GMEM_MOVEABLE, nSize));
    if (!block)
        return false;
    {
        UniqueGlobalLock lock(block.get());
        // The caller's buffer may be shorter than it claims, or not memory at all.
        void* pBlock = lock.Data();
        if (pBlock == NULL || !RunWithFaultGuard([&] { std::memcpy(pBlock, pData, nSize); }))
            return false;
    }

    // The stream frees the block when it goes.
    CComPtr<IStream> stream;
    if (FAILED(::CreateStreamOnHGlobal(block.get(), TRUE, &stream)) || stream == NULL)
        return false;
    block.release();

    CComPtr<IPicture> picture;
    if (FAILED(::OleLoadPicture(stream, static_cast<LONG>(nSize), FALSE, IID_IPicture,
                                reinterpret_cast<void**>(&picture))) ||
        picture == NULL)
        return false;

    OLE_XSIZE_HIMETRIC himetricWidth = 0;
    OLE_YSIZE_HIMETRIC himetricHeight = 0;
    picture->get_Width(&himetricWidth);
    picture->get_Height(&himetricHeight);
    try {
        CClientDC screen(NULL);
        m_nWidth = ::MulDiv(himetricWidth, screen.GetDeviceCaps(LOGPIXELSX), kHimetricPerInch);
        m_nHeight = ::MulDiv(himetricHeight, screen.GetDeviceCaps(LOGPIXELSY), kHimetricPerInch);
    } catch (CException* e) {
        e->Delete();
        return false;
    }
    m_nHimetricWidth = himetricWidth;
    m_nHimetricHeight = himetricHeight;
    m_pPicture = picture.Detach();
    return true;
}

bool MCPictureHolder::CreatePicture(const wchar_t* pszPath)
{
    if (pszPath == NULL || *pszPath == L'\0')
        return false;
    bool created = false;
    try {
        CFile file;
        if (!file.Open(pszPath, CFile::modeRead))
            return false;
        ULONGLONG length = file.GetLength();
        if (length != 0 && length <= MAXDWORD) {
            std::unique_ptr<BYTE[]> buffer(new (std::nothrow) BYTE[static_cast<size_t>(length)]);
            if (buffer) {
                file.SeekToBegin();
                if (file.Read(buffer.get(), static_cast<UINT>(length)) == length)
                    created = CreatePicture(buffer.get(), static_cast<DWORD>(length));
            }
        }
        file.Close();
    } catch (CFileException* e) {
        e->Delete();
        return false;
    }
    return created;
}

bool MCPictureHolder::CreatePicture(const wchar_t* pszType, UINT nID, HINSTANCE /*hInst*/)
{
    // Always the current resource module: callers pass handles that are not theirs.
    BYTE* pData = NULL;
    DWORD nSize = LoadBinaryResource(pszType, nID, &pData, NULL);
    std::unique_ptr<BYTE[]> owned(pData);
    return nSize != 0 && pData != NULL && CreatePicture(pData, nSize);
}

DWORD MCPictureHolder::LoadBinaryResource(const wchar_t* pszType, UINT nID, BYTE** ppData, HINSTANCE hInst)
{
    if (!AfxIsValidString(pszType, -1) || ppData == NULL || *ppData != NULL)
        return 0;
    if (hInst == NULL)
        hInst = AfxGetResourceHandle();
    *ppData = NULL;
    HRSRC hResource = ::FindResourceW(hInst, MAKEINTRESOURCEW(LOWORD(nID)), pszType);
    if (hResource == NULL)
        return 0;
    DWORD nSize = ::SizeofResource(hInst, hResource);
    if (nSize == 0)
        return 0;
    std::unique_ptr<BYTE[]> data(new (std::nothrow) BYTE[nSize]);
    if (!data)
        return 0;
    HGLOBAL hLoaded = ::LoadResource(hInst, hResource);
    const void* pBytes = hLoaded != NULL ? ::LockResource(hLoaded) : NULL;
    if (pBytes == NULL)
        return nSize;  // the size without the bytes: callers test both
    std::memcpy(data.get(), pBytes, nSize);
    ::FreeResource(hLoaded);  // a no-op on Win32, kept as the resource's release
    *ppData = data.release();
    return nSize;
}

bool MCPictureHolder::Draw(const CDC& dc, int x, int y, int cx, int cy)
{
    if (m_pPicture == NULL)
        return false;
    if (cx == 0)
        cx = m_nWidth;
    if (cy == 0)
        cy = m_nHeight;
    // HIMETRIC space runs bottom-up; the negative source height flips it to the device's top-down rows.
    return SUCCEEDED(m_pPicture->Render(dc.m_hDC, x, y, cx, cy, 0, m_nHimetricHeight, m_nHimetricWidth,
                                        -m_nHimetricHeight, NULL));
}

bool MCPictureHolder::CreateDCW(MCDC*& pDC, bool bDraw, int x, int y, int cx, int cy)
{
    if (m_pPicture == NULL)
        return false;
    pDC = new (std::nothrow) MCDC(m_nWidth, m_nHeight, static_cast<CWnd*>(NULL));
    if (pDC == NULL)
        return false;
    if (!bDraw)
        return true;
    return Draw(*pDC, x, y, cx, cy);
}

bool MCPictureHolder::CreateImageList(HIMAGELIST& hImageList, int nInitial, COLORREF crMask)
{
    if (m_pPicture == NULL || m_nWidth == 0 || m_nHeight == 0)
        return false;
    hImageList = NULL;
    MCDC surface(m_nWidth, m_nHeight, static_cast<CWnd*>(NULL));
    if (!Draw(surface, 0, 0, m_nWidth, m_nHeight))
        return false;
    CImageList list;
    if (!list.Create(m_nWidth, m_nHeight, ILC_COLOR32 | ILC_MASK, nInitial, 1))
        return false;
    if (m_eEffect == ImageEffectMirror)
        surface.Mirror();
    CBitmap copy;
    if (!copy.Attach(surface.CreateNewBitmap()))
        return false;
    bool added = list.Add(&copy, crMask) != -1;
    hImageList = list.Detach();
    return added;
}

bool MCPictureHolder::CreateImageList(const wchar_t* pszPath, HIMAGELIST& hImageList, int nInitial, COLORREF crMask)
{
    return CreatePicture(pszPath) && CreateImageList(hImageList, nInitial, crMask);
}

bool MCPictureHolder::SetEffect(MEImageEffect eEffect)
{
    m_eEffect = eEffect;
    return true;
}

bool MCPictureHolder::ApplyEffectOnBitmap(HBITMAP& /*hBitmap*/, MEImageEffect /*eEffect*/) { return true; }

bool MCPictureHolder::GetSize(CSize& size)
{
    if (m_pPicture == NULL)
        return false;
    size.cx = m_nWidth;
    size.cy = m_nHeight;
    return true;
}
