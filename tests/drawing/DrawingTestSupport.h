// Helpers of the drawing tests: reading pixels back, owning test handles, and
// watching the GDI handle table.
#pragma once
#include <afxcmn.h>
#include <memory>
#include <vector>

struct GdiObjectDeleter {
    void operator()(void* h) const { if (h != NULL) ::DeleteObject(static_cast<HGDIOBJ>(h)); }
};
using UniqueBitmap = std::unique_ptr<std::remove_pointer<HBITMAP>::type, GdiObjectDeleter>;

struct IconDeleter {
    void operator()(HICON h) const { if (h != NULL) ::DestroyIcon(h); }
};
using UniqueIcon = std::unique_ptr<std::remove_pointer<HICON>::type, IconDeleter>;

struct ImageListDeleter {
    void operator()(HIMAGELIST h) const { if (h != NULL) ::ImageList_Destroy(h); }
};
using UniqueImageList = std::unique_ptr<std::remove_pointer<HIMAGELIST>::type, ImageListDeleter>;

// A bitmap's pixels as COLORREFs, top row first (GetDIBits into a 32-bit block).
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> data;
    COLORREF At(int x, int y) const { return data[static_cast<size_t>(y) * width + x]; }
};

inline Pixels ReadPixels(HBITMAP hBitmap)
{
    Pixels result;
    BITMAP bm;
    if (hBitmap == NULL || ::GetObjectW(hBitmap, sizeof(bm), &bm) == 0)
        return result;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = bm.bmWidth;
    info.bmiHeader.biHeight = -bm.bmHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    std::vector<RGBQUAD> quads(static_cast<size_t>(bm.bmWidth) * bm.bmHeight);
    HDC hScreen = ::GetDC(NULL);
    int lines = ::GetDIBits(hScreen, hBitmap, 0, bm.bmHeight, quads.data(), &info, DIB_RGB_COLORS);
    ::ReleaseDC(NULL, hScreen);
    if (lines != bm.bmHeight)
        return result;
    result.width = bm.bmWidth;
    result.height = bm.bmHeight;
    for (const RGBQUAD& q : quads)
        result.data.push_back(RGB(q.rgbRed, q.rgbGreen, q.rgbBlue));
    return result;
}

// The highest GDI handle-table slot among a few fresh objects. GetGuiResources
// reports 0 under Wine, so growth is seen through the table instead: slots are
// the low 16 bits of a handle on Windows and Wine alike, freed slots are reused
// before new ones, so a leak pushes fresh objects into ever higher slots.
inline unsigned HighestFreshGdiSlot()
{
    HBRUSH brushes[32];
    unsigned highest = 0;
    for (HBRUSH& b : brushes) {
        b = ::CreateSolidBrush(RGB(1, 2, 3));
        unsigned slot = LOWORD(reinterpret_cast<ULONG_PTR>(b));
        if (slot > highest)
            highest = slot;
    }
    for (HBRUSH b : brushes)
        ::DeleteObject(b);
    return highest;
}

// Where the tests leave the BMP files for the decoder on the build host: the
// directory named by TESVOR_DRAWING_OUT, else the temporary directory.
inline CString DrawingOutputPath(const wchar_t* fileName)
{
    wchar_t dir[MAX_PATH] = {};
    DWORD n = ::GetEnvironmentVariableW(L"TESVOR_DRAWING_OUT", dir, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) {
        ::GetTempPathW(MAX_PATH, dir);
    } else {
        ::CreateDirectoryW(dir, NULL);
        ::lstrcatW(dir, L"\\");
    }
    CString path(dir);
    path += fileName;
    return path;
}
