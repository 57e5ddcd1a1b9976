#include "MCUIImageList.h"
#include <afxcmn.h>
#include <shlwapi.h>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include "MCDC.h"
#include "MCPictureHolder.h"
#include "MCUIImageListData.h"
#include "MImageUtils.h"
#include "NMFileUtils.h"

namespace {

// The folder a description's relative file names start from, with its backslash.
CString FolderOf(const wchar_t* description)
{
    if (description == NULL || *description == L'\0')
        return CString();
    CString path(description);
    const DWORD attributes = ::GetFileAttributesW(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        NMFileUtils::ValidatePath(path);
        return path;
    }
    return NMFileUtils::ReturnFromFullPath(path, 12);
}

// Whether a file that starts as a bitmap file promises more rows than it holds.
// Wine's picture loader reads such rows past the end of the file's bytes, so a
// bitmap cut short is turned away before it gets there. Other formats are left
// to the loader.
bool IsBitmapCutShort(const CString& path)
{
    BYTE head[sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)] = {};
    UINT size = 0;
    ULONGLONG length = 0;
    try {
        CFile file;
        if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite))
            return false;
        size = file.Read(head, sizeof(head));
        length = file.GetLength();
    } catch (CFileException* e) {
        e->Delete();
        return false;
    }
    if (size < 2 || head[0] != 'B' || head[1] != 'M')
        return false;
    BITMAPFILEHEADER fileHeader;
    BITMAPINFOHEADER info;
    if (size < sizeof(fileHeader) + sizeof(BITMAPCOREHEADER))
        return true;
    std::memcpy(&fileHeader, head, sizeof(fileHeader));
    std::memcpy(&info, head + sizeof(fileHeader), sizeof(info));
    if (info.biSize == sizeof(BITMAPCOREHEADER)) {
        BITMAPCOREHEADER core;
        std::memcpy(&core, head + sizeof(fileHeader), sizeof(core));
        info.biWidth = core.bcWidth;
        info.biHeight = core.bcHeight;
        info.biBitCount = core.bcBitCount;
        info.biCompression = BI_RGB;
    } else if (size < sizeof(head)) {
        return true;
    }
    const ULONGLONG stride = (static_cast<ULONGLONG>(std::llabs(info.biWidth)) * info.biBitCount + 31) / 32 * 4;
    const ULONGLONG bits = info.biCompression == BI_RGB || info.biCompression == BI_BITFIELDS
                               ? stride * static_cast<ULONGLONG>(std::llabs(info.biHeight))
                               : info.biSizeImage;
    return fileHeader.bfOffBits + bits > length;
}

// The strip drawn into a new surface from a picture file.
HRESULT LoadStripFromFile(const CString& path, std::unique_ptr<MCDC>& strip)
{
    if (::GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES)
        return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    if (IsBitmapCutShort(path))
        return HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
    MCPictureHolder picture;
    if (!picture.CreatePicture(path))
        return HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
    MCDC* surface = NULL;
    const bool drawn = picture.CreateDCW(surface, true, 0, 0, 0, 0);
    strip.reset(surface);
    return drawn && strip->GetBitmap() != NULL ? S_OK : E_FAIL;
}

// The strip copied into a new surface from a bitmap resource of the resource chain.
HRESULT LoadStripFromResource(DWORD resourceID, std::unique_ptr<MCDC>& strip)
{
    if (resourceID > 0xFFFF)
        return HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND);
    const wchar_t* name = MAKEINTRESOURCEW(resourceID);
    CBitmap bitmap;
    BITMAP info;
    if (!bitmap.Attach(::LoadBitmapW(AfxFindResourceHandle(name, RT_BITMAP), name)) ||
        bitmap.GetBitmap(&info) == 0)
        return HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND);
    strip.reset(new (std::nothrow) MCDC(info.bmWidth, info.bmHeight, static_cast<CWnd*>(NULL)));
    CDC source;
    if (!strip || strip->GetBitmap() == NULL || !source.CreateCompatibleDC(strip.get()))
        return E_FAIL;
    CBitmap* previous = source.SelectObject(&bitmap);
    const BOOL copied = strip->BitBlt(0, 0, info.bmWidth, info.bmHeight, &source, 0, 0, SRCCOPY);
    source.SelectObject(previous);
    return copied ? S_OK : E_FAIL;
}

// Mirrors every image of the strip on its own, so that each keeps its place;
// mirroring the whole strip would turn the order of the images round.
void MirrorEachImage(MCDC& strip, int width, int count)
{
    const int height = strip.GetHeight();
    for (int i = 0; i < count; ++i) {
        MCDC image(width, height, static_cast<CWnd*>(NULL));
        image.BitBlt(0, 0, width, height, &strip, i * width, 0, SRCCOPY);
        image.Mirror();
        strip.BitBlt(i * width, 0, width, height, &image, 0, 0, SRCCOPY);
    }
}

}  // namespace

MCUIImageList::MCUIImageList() : m_hImageList(NULL), m_eKind(MEUIImageKindIcon) {}

MCUIImageList::~MCUIImageList() { Destroy(); }

void MCUIImageList::Destroy()
{
    for (POSITION position = m_images.GetStartPosition(); position != NULL;) {
        CString id;
        HICON image = NULL;
        m_images.GetNextAssoc(position, id, image);
        // Cursors made by CreateIconIndirect are icons to the system.
        ::DestroyIcon(image);
    }
    m_images.RemoveAll();
    if (m_hImageList != NULL) {
        ::ImageList_Destroy(m_hImageList);
        m_hImageList = NULL;
    }
}

HRESULT MCUIImageList::Create(const MCUIImageListData& data, const wchar_t* description)
{
    Destroy();
    if (data.nWidth < 0 || data.nInitial < 0)
        return E_INVALIDARG;
    std::unique_ptr<MCDC> strip;
    HRESULT hr = E_INVALIDARG;
    if (!data.strFile.IsEmpty()) {
        const CString path = ::PathIsRelativeW(data.strFile) ? FolderOf(description) + data.strFile : data.strFile;
        hr = LoadStripFromFile(path, strip);
    } else if (data.dwResID != 0) {
        hr = LoadStripFromResource(data.dwResID, strip);
    }
    if (FAILED(hr))
        return hr;

    const int height = strip->GetHeight();
    const int width = data.nWidth != 0 ? data.nWidth : height;
    const int count = width > 0 ? strip->GetWidth() / width : 0;
    if (count == 0)
        return E_INVALIDARG;
    if (data.eEffect == ImageEffectMirror)
        MirrorEachImage(*strip, width, count);

    // Columns left over after the last whole image are dropped by the list.
    CImageList list;
    CBitmap copy;
    if (!list.Create(width, height, ILC_COLOR32 | ILC_MASK, data.nInitial, 1) ||
        !copy.Attach(strip->CreateNewBitmap()) || list.Add(&copy, data.crMask) == -1)
        return E_FAIL;
    m_hImageList = list.Detach();
    m_eKind = data.eKind;

    for (INT_PTR i = 0; i < data.images.GetKeyCount(); ++i) {
        const CString& id = data.images.GetKeyAt(i);
        MCUIImageData image;
        data.images.Lookup(id, image);
        if (image.nIndex < 0 || image.nIndex >= count) {
            Destroy();
            return HRESULT_FROM_WIN32(ERROR_INVALID_INDEX);
        }
        HICON icon = ::ImageList_GetIcon(m_hImageList, image.nIndex, ILD_NORMAL);
        if (icon != NULL && m_eKind == MEUIImageKindCursor) {
            HICON cursor = MImageUtils::CreateCursorFromIcon(icon, image.nHotX, image.nHotY);
            ::DestroyIcon(icon);
            icon = cursor;
        }
        if (icon == NULL) {
            Destroy();
            return E_FAIL;
        }
        m_images.SetAt(id, icon);
    }
    return S_OK;
}

HICON MCUIImageList::Find(const wchar_t* id, MEUIImageKind kind) const
{
    HICON image = NULL;
    if (id == NULL || kind != m_eKind || !m_images.Lookup(id, image))
        return NULL;
    return image;
}

HICON MCUIImageList::GetIcon(const wchar_t* id) const { return Find(id, MEUIImageKindIcon); }

HCURSOR MCUIImageList::GetCursor(const wchar_t* id) const { return Find(id, MEUIImageKindCursor); }
