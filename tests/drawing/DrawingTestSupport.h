// Helpers of the drawing tests: owning test handles, reading pixels back, and
// watching the GDI handle table.
#pragma once
#include <afxcmn.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <vector>
#include "TestSupport.h"
#include "frame/Owners.h"

using UniqueBitmap = UniqueGdiObject<HBITMAP>;
using UniqueIcon = UniqueAny<HICON, ::DestroyIcon>;
using UniqueImageList = UniqueAny<HIMAGELIST, ::ImageList_Destroy>;

const COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);
const COLORREF kMask = RGB(255, 0, 255);  // the colour the tests make transparent

// The column colours of the 8-by-6 test pictures (see make_pictures.py).
inline COLORREF ColumnColour(int x) { return RGB(30 * x + 10, 200 - 20 * x, 40 + 25 * x); }

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
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), bm.bmWidth, -bm.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    std::vector<RGBQUAD> quads(static_cast<size_t>(bm.bmWidth) * bm.bmHeight);
    const UniqueWindowDC screen(NULL);
    if (::GetDIBits(screen.get(), hBitmap, 0, bm.bmHeight, quads.data(), &info, DIB_RGB_COLORS) != bm.bmHeight)
        return result;
    result.width = bm.bmWidth;
    result.height = bm.bmHeight;
    for (const RGBQUAD& q : quads)
        result.data.push_back(RGB(q.rgbRed, q.rgbGreen, q.rgbBlue));
    return result;
}

// Checks every pixel of a bitmap against `expected(x, y)`.
template <class Expected>
void ExpectPixels(HBITMAP hBitmap, int width, int height, Expected expected)
{
    Pixels pixels = ReadPixels(hBitmap);
    ASSERT_EQ(CSize(width, height), CSize(pixels.width, pixels.height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(expected(x, y), pixels.At(x, y)) << x << "," << y;
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
        highest = std::max(highest, static_cast<unsigned>(LOWORD(reinterpret_cast<ULONG_PTR>(b))));
    }
    for (HBRUSH b : brushes)
        ::DeleteObject(b);
    return highest;
}

// Runs `cycle(i)` (true when it did its work) `warmUps` times, for the caches that
// first uses allocate for the life of the process, then `cycles` times: every run
// succeeds and the GDI objects do not grow (Windows counts them; Wine reports 0).
template <class Cycle>
void ExpectNoGdiGrowth(int warmUps, int cycles, Cycle cycle)
{
    int failures = 0;
    for (int i = 0; i < warmUps; ++i)
        failures += cycle(i) ? 0 : 1;
    const unsigned slotBefore = HighestFreshGdiSlot();
    const DWORD countBefore = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = warmUps; i < warmUps + cycles; ++i)
        failures += cycle(i) ? 0 : 1;
    EXPECT_EQ(failures, 0);
    EXPECT_LE(HighestFreshGdiSlot(), slotBefore + 64);
    EXPECT_TRUE(countBefore == 0 || ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS) <= countBefore + 4);
}

// Where the tests leave the BMP files for the decoder on the build host: the
// directory named by TESVOR_DRAWING_OUT, else the temporary directory.
inline CString DrawingOutputPath(const wchar_t* fileName)
{
    wchar_t dir[MAX_PATH] = {};
    if (::GetEnvironmentVariableW(L"TESVOR_DRAWING_OUT", dir, MAX_PATH) == 0)
        ::GetTempPathW(MAX_PATH, dir);
    ::CreateDirectoryW(dir, NULL);
    return CString(dir) + L"\\" + fileName;
}
