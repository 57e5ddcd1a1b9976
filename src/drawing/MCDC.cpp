// The off-screen surface, and the round trip through a device-independent block
// by which every copy of its picture is made.
#include "MCDC.h"
#include <afxcmn.h>
#include <memory>
#include <new>
#include "frame/Owners.h"

namespace {

constexpr DWORD kInfoHeaderSize = sizeof(BITMAPINFOHEADER);  // 40
constexpr WORD kBmpFileType = 0x4D42;                          // "BM"

// Bytes of one row of a device-independent bitmap: rows are padded to 32 bits.
DWORD DibStride(WORD bitCount, LONG width)
{
    return static_cast<DWORD>(((static_cast<DWORD>(bitCount) * static_cast<DWORD>(width) + 31) / 32) * 4);
}

// Device-independent blocks carry 1, 4, 8 or 24 bits a pixel; 16 and 32 become 24.
WORD NormalisedBitCount(int bits)
{
    if (bits < 2)
        return 1;
    if (bits <= 4)
        return 4;
    if (bits <= 8)
        return 8;
    return 24;
}

// Colour-table entries of a block that starts with the given header.
UINT DibColorCount(const BITMAPINFOHEADER* header)
{
    WORD bitCount;
    if (header->biSize == kInfoHeaderSize) {
        if (header->biClrUsed != 0)
            return header->biClrUsed;
        bitCount = header->biBitCount;
    } else {
        bitCount = reinterpret_cast<const BITMAPCOREHEADER*>(header)->bcBitCount;
    }
    switch (bitCount) {
    case 1: return 2;
    case 4: return 16;
    case 8: return 256;
    default: return 0;
    }
}

UINT DibColorTableSize(const BITMAPINFOHEADER* header)
{
    UINT entrySize = header->biSize == kInfoHeaderSize ? sizeof(RGBQUAD) : sizeof(RGBTRIPLE);
    return DibColorCount(header) * entrySize;
}

// A bitmap as a movable global block: header, colour table, bits. Null on failure;
// the caller frees the block with GlobalFree.
HGLOBAL ExportBitmapToDib(HBITMAP hBitmap, HPALETTE hPalette)
{
    BITMAP bm;
    if (hBitmap == NULL || ::GetObjectW(hBitmap, sizeof(bm), &bm) == 0)
        return NULL;
    if (hPalette == NULL)
        hPalette = static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));

    BITMAPINFOHEADER header = {};
    header.biSize = kInfoHeaderSize;
    header.biWidth = bm.bmWidth;
    header.biHeight = bm.bmHeight;
    header.biPlanes = 1;
    header.biBitCount = NormalisedBitCount(bm.bmPlanes * bm.bmBitsPixel);
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(bm.bmHeight) * DibStride(header.biBitCount, bm.bmWidth);
    header.biClrUsed = header.biBitCount <= 8 ? 1u << header.biBitCount : 0;
    const SIZE_T colorTableSize = header.biClrUsed * sizeof(RGBQUAD);

    UniqueWindowDC screen(NULL);
    if (screen.get() == NULL)
        return NULL;
    UniqueSelectPalette palette(screen.get(), hPalette);

    UniqueHGlobal dib(::GlobalAlloc(GHND, kInfoHeaderSize + colorTableSize));
    if (!dib)
        return NULL;
    SIZE_T totalSize = 0;
    {
        UniqueGlobalLock lock(dib.get());
        auto* info = lock.Data<BITMAPINFOHEADER>();
        if (info == NULL)
            return NULL;
        *info = header;
        // A first call without bits lets the system complete the header.
        if (::GetDIBits(screen.get(), hBitmap, 0, static_cast<UINT>(bm.bmHeight), NULL,
                        reinterpret_cast<BITMAPINFO*>(info), DIB_RGB_COLORS) == 0)
            return NULL;
        if (info->biSizeImage == 0)
            info->biSizeImage = static_cast<DWORD>(bm.bmHeight) * DibStride(info->biBitCount, bm.bmWidth);
        totalSize = kInfoHeaderSize + colorTableSize + info->biSizeImage;
    }

    HGLOBAL hGrown = ::GlobalReAlloc(dib.get(), totalSize, GMEM_MOVEABLE);
    if (hGrown == NULL)
        return NULL;
    dib.release();  // the grown block replaces it
    dib.reset(hGrown);
    UniqueGlobalLock lock(dib.get());
    auto* info = lock.Data<BITMAPINFOHEADER>();
    if (info == NULL)
        return NULL;
    BYTE* bits = reinterpret_cast<BYTE*>(info) + kInfoHeaderSize + colorTableSize;
    if (::GetDIBits(screen.get(), hBitmap, 0, static_cast<UINT>(bm.bmHeight), bits,
                    reinterpret_cast<BITMAPINFO*>(info), DIB_RGB_COLORS) == 0)
        return NULL;
    return dib.release();
}

// The palette a block's colours are realised with when none is given: its own
// colour table, or the halftone palette on a palette screen.
HPALETTE BuildPaletteForDib(const BITMAPINFOHEADER* header, HDC hScreen)
{
    UINT count = DibColorCount(header);
    if (count == 0) {
        if (::GetDeviceCaps(hScreen, RASTERCAPS) & RC_PALETTE)
            return ::CreateHalftonePalette(hScreen);
        return NULL;
    }
    const size_t size = sizeof(LOGPALETTE) + (count - 1) * sizeof(PALETTEENTRY);
    std::unique_ptr<BYTE[]> block(new (std::nothrow) BYTE[size]);
    if (!block)
        return NULL;
    auto* palette = reinterpret_cast<LOGPALETTE*>(block.get());
    palette->palVersion = 0x300;
    palette->palNumEntries = static_cast<WORD>(count);
    const BYTE* table = reinterpret_cast<const BYTE*>(header) + header->biSize;
    const bool quads = header->biSize == kInfoHeaderSize;
    for (UINT i = 0; i < count; ++i) {
        // RGBQUAD and RGBTRIPLE both store blue, green, red.
        const BYTE* entry = table + i * (quads ? sizeof(RGBQUAD) : sizeof(RGBTRIPLE));
        palette->palPalEntry[i].peRed = entry[2];
        palette->palPalEntry[i].peGreen = entry[1];
        palette->palPalEntry[i].peBlue = entry[0];
        palette->palPalEntry[i].peFlags = 0;
    }
    return ::CreatePalette(palette);
}

// A device-dependent bitmap made from a block, or null.
HBITMAP ImportBitmapFromDib(HGLOBAL hDib, HPALETTE hPalette)
{
    UniqueGlobalLock lock(hDib);
    auto* header = lock.Data<BITMAPINFOHEADER>();
    if (header == NULL)
        return NULL;
    const BYTE* bits = reinterpret_cast<const BYTE*>(header) + header->biSize + DibColorTableSize(header);

    UniqueWindowDC screen(NULL);
    if (screen.get() == NULL)
        return NULL;
    UniqueGdiObject<HPALETTE> built(hPalette == NULL ? BuildPaletteForDib(header, screen.get()) : NULL);
    UniqueSelectPalette palette(screen.get(), hPalette != NULL ? hPalette : built.get());
    return ::CreateDIBitmap(screen.get(), header, CBM_INIT, bits, reinterpret_cast<BITMAPINFO*>(header),
                            DIB_RGB_COLORS);
}

HBITMAP CopyBitmapThroughDib(HBITMAP hBitmap)
{
    UniqueHGlobal dib(ExportBitmapToDib(hBitmap, NULL));
    return dib ? ImportBitmapFromDib(dib.get(), NULL) : NULL;
}

// Writes a block as a BMP file; false when the block is not a 40-byte-header DIB
// or a write fails.
bool WriteDibFile(CFile& file, HGLOBAL hDib)
{
    UniqueGlobalLock lock(hDib);
    auto* header = lock.Data<BITMAPINFOHEADER>();
    if (header == NULL)
        return false;
    bool written = false;
    if (header->biSize == kInfoHeaderSize) {
        if (header->biCompression != BI_RLE8 && header->biCompression != BI_RLE4)
            header->biSizeImage = ((static_cast<DWORD>(header->biBitCount) * header->biWidth + 31) >> 5) *
                                  header->biHeight * 4;
        const DWORD dibSize = header->biSize + DibColorTableSize(header) + header->biSizeImage;
        BITMAPFILEHEADER fileHeader = {};
        fileHeader.bfType = kBmpFileType;
        fileHeader.bfSize = sizeof(BITMAPFILEHEADER) + dibSize;
        fileHeader.bfOffBits = sizeof(BITMAPFILEHEADER) + header->biSize + DibColorTableSize(header);
        try {
            file.Write(&fileHeader, sizeof(fileHeader));
            file.Write(header, dibSize);
            written = true;
        } catch (CFileException* e) {
            e->Delete();
        }
    }
    return written;
}

}  // namespace

// ---- construction and release ---------------------------------------------------

MCDC::MCDC(HDC hDC, int cx, int cy) : m_nWidth(0), m_nHeight(0), m_hBitmap(NULL), m_hOldBitmap(NULL)
{
    CDC reference;
    reference.Attach(hDC);
    Init(&reference, cx, cy);
    reference.Detach();
}

MCDC::MCDC(CDC* pDC, int cx, int cy) : m_nWidth(0), m_nHeight(0), m_hBitmap(NULL), m_hOldBitmap(NULL)
{
    Init(pDC, cx, cy);
}

MCDC::MCDC(CWnd* pWnd, int cx, int cy) : m_nWidth(0), m_nHeight(0), m_hBitmap(NULL), m_hOldBitmap(NULL)
{
    try {
        CClientDC reference(pWnd);
        Init(&reference, cx, cy);
    } catch (CException* e) {
        e->Delete();  // no context for the window: the surface stays empty
    }
}

MCDC::MCDC(int cx, int cy, CWnd* pWnd) : m_nWidth(0), m_nHeight(0), m_hBitmap(NULL), m_hOldBitmap(NULL)
{
    try {
        CClientDC reference(pWnd);
        Init(&reference, cx, cy);
    } catch (CException* e) {
        e->Delete();
    }
}

MCDC::MCDC(HWND hWnd, int cx, int cy) : m_nWidth(0), m_nHeight(0), m_hBitmap(NULL), m_hOldBitmap(NULL)
{
    UniqueWindowDC window(hWnd);
    CDC reference;
    reference.Attach(window.get());
    Init(&reference, cx, cy);
    reference.Detach();
}

MCDC::~MCDC() { ResetData(); }

void MCDC::Init(CDC* pDC, int cx, int cy)
{
    m_hBitmap = NULL;
    m_hOldBitmap = NULL;
    HDC hReference = pDC->GetSafeHdc();
    if (!Attach(::CreateCompatibleDC(hReference)))
        return;
    // A surface of no area gets no bitmap. The system would hand out its shared
    // 1-by-1 placeholder for a zero size, and some versions a bitmap of the absolute
    // size for a negative one; neither is a picture of the size asked for.
    if (cx > 0 && cy > 0)
        m_hBitmap = ::CreateCompatibleBitmap(hReference, cx, cy);
    if (m_hBitmap != NULL)
        m_hOldBitmap = static_cast<HBITMAP>(::SelectObject(m_hDC, m_hBitmap));
    m_nWidth = cx;
    m_nHeight = cy;
}

void MCDC::ResetData()
{
    m_nWidth = 0;
    m_nHeight = 0;
    if (m_hOldBitmap != NULL) {
        ::SelectObject(m_hDC, m_hOldBitmap);
        m_hOldBitmap = NULL;
    }
    if (m_hBitmap != NULL) {
        ::DeleteObject(m_hBitmap);
        m_hBitmap = NULL;
    }
    if (m_hDC != NULL)
        CDC::DeleteDC();
}

void MCDC::Delete()
{
    ResetData();
    delete this;
}

void MCDC::Resize(int cx, int cy)
{
    ResetData();
    MCDC resized(cx, cy, static_cast<CWnd*>(NULL));
}

// ---- drawing -----------------------------------------------------------------------

void MCDC::Fill(COLORREF crColor)
{
    UniqueGdiObject<HBRUSH> brush(::CreateSolidBrush(crColor));
    RECT rc = {0, 0, m_nWidth, m_nHeight};
    ::FillRect(m_hDC, &rc, brush.get());
}

void MCDC::Fill(CBrush* pBrush)
{
    RECT rc = {0, 0, m_nWidth, m_nHeight};
    ::FillRect(m_hDC, &rc, pBrush != NULL ? static_cast<HBRUSH>(pBrush->m_hObject) : NULL);
}

void MCDC::DrawFrame(COLORREF crColor, int nWidth)
{
    UniqueGdiObject<HBRUSH> brush(::CreateSolidBrush(crColor));
    for (int i = 0; i < nWidth; ++i) {
        RECT rc = {i, i, m_nWidth - i, m_nHeight - i};
        ::FrameRect(m_hDC, &rc, brush.get());
    }
}

bool MCDC::Mirror()
{
    // Without a bitmap the stored size can be anything the caller asked for
    // (a failed huge surface): there are no pixels to visit.
    const int half = m_nWidth / 2;
    if (half < 1 || m_hBitmap == NULL)
        return true;
    for (int x = half; x >= 1; --x) {
        const int partner = 2 * half - x;
        for (int y = 0; y < m_nHeight; ++y) {
            COLORREF crPartner = ::GetPixel(m_hDC, partner, y);
            COLORREF crHere = ::GetPixel(m_hDC, x, y);
            ::SetPixel(m_hDC, x, y, crPartner);
            ::SetPixel(m_hDC, partner, y, crHere);
        }
    }
    return true;
}

// ---- copies ------------------------------------------------------------------------

HBITMAP MCDC::GetBitmap() { return m_hBitmap; }

CBitmap* MCDC::GetCBitmap() { return CBitmap::FromHandle(m_hBitmap); }

HBITMAP MCDC::CreateNewBitmap()
{
    if (m_hBitmap == NULL)
        return NULL;
    return CopyBitmapThroughDib(m_hBitmap);
}

HBITMAP MCDC::CreateNewBitmapFromDC(HDC hDC)
{
    if (hDC == NULL)
        return NULL;
    HGDIOBJ hSelected = ::GetCurrentObject(hDC, OBJ_BITMAP);
    BITMAP bm;
    if (hSelected == NULL || ::GetObjectW(hSelected, sizeof(bm), &bm) == 0)
        return NULL;
    MCDC* pCopy = new MCDC(bm.bmWidth, bm.bmHeight, static_cast<CWnd*>(NULL));
    if (!::BitBlt(pCopy->m_hDC, 0, 0, bm.bmWidth, bm.bmHeight, hDC, 0, 0, SRCCOPY))
        return NULL;  // the surface is left behind on this path, as callers have always seen
    HBITMAP hBitmap = pCopy->CreateNewBitmap();
    pCopy->Delete();
    return hBitmap;
}

HICON MCDC::CreateNewIcon(COLORREF crMask)
{
    CBitmap copy;
    if (!copy.Attach(CreateNewBitmap()))
        return NULL;
    CImageList list;
    if (!list.Create(m_nWidth, m_nHeight, ILC_COLOR32 | ILC_MASK, 1, 1))
        return NULL;
    if (list.Add(&copy, crMask) == -1)
        return NULL;
    return ::ImageList_GetIcon(list, 0, ILD_NORMAL);
}

HIMAGELIST MCDC::CreateImageList(int nCount, COLORREF crMask, UINT /*nFlags*/)
{
    if (nCount == 0)
        return NULL;
    CImageList list;
    if (!list.Create(m_nWidth / nCount, m_nHeight, ILC_COLOR32 | ILC_MASK, nCount, 1))
        return NULL;
    CBitmap copy;
    copy.Attach(CreateNewBitmap());
    if (list.Add(&copy, crMask) == -1)
        return NULL;
    return list.Detach();
}

bool MCDC::Save(const wchar_t* pszPath)
{
    UniqueHGlobal dib(ExportBitmapToDib(m_hBitmap, NULL));
    if (!dib)
        return false;
    bool saved = false;
    CFile file;
    if (file.Open(pszPath, CFile::modeCreate | CFile::modeWrite)) {
        saved = WriteDibFile(file, dib.get());
        file.Abort();  // closes; a write error has already decided the result
    }
    return saved;
}
