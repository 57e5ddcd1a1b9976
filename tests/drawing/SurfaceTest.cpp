#include <gtest/gtest.h>
#include <climits>
#include <cstdio>
#include "DrawingTestSupport.h"
#include "MCDC.h"

namespace {

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGreen = RGB(0, 255, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kWhite = RGB(255, 255, 255);

// A distinct colour for every pixel of a small surface.
COLORREF PixelColour(int x, int y) { return RGB(10 + 20 * x, 5 + 30 * y, 77); }

void PaintDistinct(MCDC& surface)
{
    for (int y = 0; y < surface.GetHeight(); ++y)
        for (int x = 0; x < surface.GetWidth(); ++x)
            surface.SetPixel(x, y, PixelColour(x, y));
}

TEST(Surface, FillCoversEveryPixel)
{
    MCDC surface(7, 5);
    ASSERT_NE(surface.GetBitmap(), nullptr);
    EXPECT_EQ(surface.GetSize(), CSize(7, 5));
    surface.Fill(RGB(10, 20, 30));
    Pixels pixels = ReadPixels(surface.GetBitmap());
    ASSERT_EQ(pixels.width, 7);
    for (COLORREF c : pixels.data)
        EXPECT_EQ(c, RGB(10, 20, 30));

    CBrush brush;
    ASSERT_TRUE(brush.CreateSolidBrush(kBlue));
    surface.Fill(&brush);
    EXPECT_EQ(surface.GetPixel(0, 0), kBlue);
    EXPECT_EQ(surface.GetPixel(6, 4), kBlue);
    surface.Fill(static_cast<CBrush*>(nullptr));  // a null brush handle goes to GDI as it is
}

TEST(Surface, DrawFrameDrawsNestedOnePixelFrames)
{
    for (int frames : {-1, 0, 1, 3}) {
        MCDC surface(10, 8);
        surface.Fill(kWhite);
        surface.DrawFrame(kRed, frames);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 10; ++x) {
                int depth = std::min(std::min(x, y), std::min(9 - x, 7 - y));
                COLORREF expected = depth < frames ? kRed : kWhite;
                ASSERT_EQ(surface.GetPixel(x, y), expected) << "frames " << frames << " at " << x << "," << y;
            }
        }
    }
}

TEST(Surface, MirrorSwapsAboutColumnHalfAndKeepsColumnZero)
{
    for (int width : {1, 2, 4, 5, 8}) {
        MCDC surface(width, 3);
        PaintDistinct(surface);
        EXPECT_TRUE(surface.Mirror());
        const int half = width / 2;
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) {
                int source = (x >= 1 && x <= 2 * half - 1) ? 2 * half - x : x;
                EXPECT_EQ(surface.GetPixel(x, y), PixelColour(source, y)) << "width " << width << " x " << x;
            }
        }
    }
}

TEST(Surface, ImageListStripDropsTheRemainderColumns)
{
    MCDC strip(10, 4);
    PaintDistinct(strip);
    EXPECT_EQ(strip.CreateImageList(0, kWhite, 0), nullptr);

    UniqueImageList list(strip.CreateImageList(3, RGB(255, 0, 255), 0));
    ASSERT_NE(list, nullptr);
    int cx = 0, cy = 0;
    ASSERT_TRUE(::ImageList_GetIconSize(list.get(), &cx, &cy));
    EXPECT_EQ(cx, 3);
    EXPECT_EQ(cy, 4);
    ASSERT_EQ(::ImageList_GetImageCount(list.get()), 3);
    for (int image = 0; image < 3; ++image) {
        MCDC target(3, 4);
        target.Fill(kWhite);
        ASSERT_TRUE(::ImageList_Draw(list.get(), image, target.m_hDC, 0, 0, ILD_NORMAL));
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 3; ++x)
                EXPECT_EQ(target.GetPixel(x, y), PixelColour(image * 3 + x, y)) << image << ":" << x << "," << y;
    }
}

TEST(Surface, CopiesAreIndependentOfTheSurface)
{
    MCDC surface(6, 3);
    PaintDistinct(surface);
    UniqueBitmap copy(surface.CreateNewBitmap());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), surface.GetBitmap());
    surface.Fill(kGreen);
    Pixels pixels = ReadPixels(copy.get());
    ASSERT_EQ(pixels.width, 6);
    ASSERT_EQ(pixels.height, 3);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(pixels.At(x, y), PixelColour(x, y));

    // The copy of whatever bitmap a context holds.
    EXPECT_EQ(MCDC::CreateNewBitmapFromDC(NULL), nullptr);
    UniqueBitmap fromDC(MCDC::CreateNewBitmapFromDC(surface.m_hDC));
    Pixels green = ReadPixels(fromDC.get());
    ASSERT_EQ(green.width, 6);
    EXPECT_EQ(green.At(5, 2), kGreen);

    CBitmap* wrapper = surface.GetCBitmap();
    ASSERT_NE(wrapper, nullptr);
    EXPECT_TRUE(wrapper->IsKindOf(RUNTIME_CLASS(CBitmap)));
    EXPECT_EQ(wrapper->m_hObject, surface.GetBitmap());
    // The idle clean-up deletes the wrapper, never the surface's bitmap.
    AfxLockTempMaps();
    AfxUnlockTempMaps();
    EXPECT_EQ(::GetObjectType(surface.GetBitmap()), static_cast<DWORD>(OBJ_BITMAP));
}

TEST(Surface, IconKeepsThePictureAndMasksTheMaskColour)
{
    const COLORREF mask = RGB(255, 0, 255);
    MCDC surface(16, 16);
    surface.Fill(mask);
    RECT inner = {4, 4, 12, 12};
    CBrush red(kRed);
    surface.FillRect(&inner, &red);
    UniqueIcon icon(surface.CreateNewIcon(mask));
    ASSERT_NE(icon, nullptr);

    MCDC target(16, 16);
    target.Fill(kGreen);
    ASSERT_TRUE(::DrawIconEx(target.m_hDC, 0, 0, icon.get(), 16, 16, 0, NULL, DI_NORMAL));
    EXPECT_EQ(target.GetPixel(8, 8), kRed);
    EXPECT_EQ(target.GetPixel(0, 0), kGreen);  // the mask colour lets the background through
    EXPECT_EQ(target.GetPixel(15, 15), kGreen);
}

TEST(Surface, ResizeLeavesAnEmptySurface)
{
    MCDC surface(20, 20);
    surface.Resize(100, 100);
    EXPECT_EQ(surface.GetWidth(), 0);
    EXPECT_EQ(surface.GetHeight(), 0);
    EXPECT_EQ(surface.GetBitmap(), nullptr);
    EXPECT_EQ(surface.m_hDC, nullptr);
    EXPECT_EQ(surface.CreateNewBitmap(), nullptr);
    EXPECT_FALSE(surface.Save(DrawingOutputPath(L"never.bmp")));
}

TEST(Surface, EveryConstructorMakesACompatibleSurface)
{
    HDC hScreen = ::GetDC(NULL);
    CClientDC screen(nullptr);
    HWND hDesktop = ::GetDesktopWindow();
    std::unique_ptr<MCDC> surfaces[] = {
        std::unique_ptr<MCDC>(new MCDC(hScreen, 3, 2)),
        std::unique_ptr<MCDC>(new MCDC(static_cast<CDC*>(&screen), 3, 2)),
        std::unique_ptr<MCDC>(new MCDC(static_cast<CWnd*>(nullptr), 3, 2)),
        std::unique_ptr<MCDC>(new MCDC(3, 2)),
        std::unique_ptr<MCDC>(new MCDC(hDesktop, 3, 2)),
    };
    for (auto& s : surfaces) {
        ASSERT_NE(s->GetBitmap(), nullptr);
        EXPECT_EQ(s->GetSize(), CSize(3, 2));
        s->Fill(kBlue);
        EXPECT_EQ(s->GetPixel(2, 1), kBlue);
    }
    // The caller's context survives the surface made from it.
    EXPECT_NE(::GetDeviceCaps(hScreen, BITSPIXEL), 0);
    ::ReleaseDC(NULL, hScreen);

    MCDC* owned = new MCDC(4, 4);
    owned->Delete();
}

TEST(Surface, TextAndClippingForwardToTheSurfaceContext)
{
    MCDC surface(60, 20);
    surface.Fill(kWhite);
    surface.SetTextColor(RGB(0, 0, 0));
    surface.SetBkMode(TRANSPARENT);
    EXPECT_TRUE(surface.PtVisible(0, 0));
    RECT inside = {0, 0, 10, 10};
    EXPECT_TRUE(surface.RectVisible(&inside));
    EXPECT_TRUE(surface.TextOut(1, 1, CString(L"WWW")));
    bool inked = false;
    for (int x = 0; x < 60 && !inked; ++x)
        for (int y = 0; y < 20 && !inked; ++y)
            inked = surface.GetPixel(x, y) != kWhite;
    EXPECT_TRUE(inked);
    CSize extent = surface.TabbedTextOut(0, 0, CString(L"a\tb"), 0, nullptr, 0);
    EXPECT_GT(extent.cx, 0);
    EXPECT_GT(extent.cy, 0);
    RECT rc = {0, 0, 60, 20};
    EXPECT_GT(surface.DrawText(CString(L"x"), &rc, DT_CALCRECT), 0);
}

// Reads a whole file into memory.
std::vector<BYTE> ReadFileBytes(const CString& path)
{
    std::vector<BYTE> bytes;
    CFile file;
    if (!file.Open(path, CFile::modeRead))
        return bytes;
    bytes.resize(static_cast<size_t>(file.GetLength()));
    if (!bytes.empty())
        bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    file.Close();
    return bytes;
}

// The pattern both saved files carry (and the decoder checks): row 0 green, below
// it red on the left three columns and blue on the rest.
void PaintSavePattern(MCDC& surface)
{
    CBrush red(kRed), green(kGreen), blue(kBlue);
    RECT left = {0, 1, 3, surface.GetHeight()};
    RECT right = {3, 1, surface.GetWidth(), surface.GetHeight()};
    RECT top = {0, 0, surface.GetWidth(), 1};
    surface.FillRect(&left, &red);
    surface.FillRect(&right, &blue);
    surface.FillRect(&top, &green);
}

TEST(Surface, SaveWritesA24BitFileFromA32BitSurface)
{
    MCDC surface(7, 5);
    ASSERT_EQ(::GetDeviceCaps(surface.m_hDC, BITSPIXEL), 32);
    PaintSavePattern(surface);
    CString path = DrawingOutputPath(L"surface32.bmp");
    ASSERT_TRUE(surface.Save(path));

    std::vector<BYTE> bytes = ReadFileBytes(path);
    ASSERT_GE(bytes.size(), 54u);
    auto* fileHeader = reinterpret_cast<const BITMAPFILEHEADER*>(bytes.data());
    auto* info = reinterpret_cast<const BITMAPINFOHEADER*>(bytes.data() + 14);
    const DWORD stride = 24;  // 7 pixels of 3 bytes, padded to 4
    EXPECT_EQ(fileHeader->bfType, 0x4D42);
    EXPECT_EQ(fileHeader->bfSize, bytes.size());
    EXPECT_EQ(fileHeader->bfOffBits, 54u);
    EXPECT_EQ(info->biBitCount, 24);
    EXPECT_EQ(info->biSizeImage, stride * 5);
    EXPECT_EQ(bytes.size(), 54 + stride * 5);
}

TEST(Surface, SaveWritesAPaletteFileFromAn8BitSurface)
{
    // A context holding an 8-bit section: surfaces made from it are 8-bit too.
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } info = {};
    info.header.biSize = sizeof(BITMAPINFOHEADER);
    info.header.biWidth = 1;
    info.header.biHeight = 1;
    info.header.biPlanes = 1;
    info.header.biBitCount = 8;
    info.header.biClrUsed = 256;
    for (int i = 0; i < 256; ++i)
        info.colours[i] = RGBQUAD{static_cast<BYTE>(i), static_cast<BYTE>(255 - i), static_cast<BYTE>(i / 2), 0};
    info.colours[1] = RGBQUAD{0, 0, 255, 0};  // red
    info.colours[2] = RGBQUAD{0, 255, 0, 0};  // green
    info.colours[3] = RGBQUAD{255, 0, 0, 0};  // blue
    void* bits = nullptr;
    UniqueBitmap section(::CreateDIBSection(NULL, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, NULL, 0));
    ASSERT_NE(section, nullptr);
    HDC hMem = ::CreateCompatibleDC(NULL);
    HGDIOBJ hOld = ::SelectObject(hMem, section.get());
    {
        MCDC surface(hMem, 7, 5);
        BITMAP bm;
        ASSERT_TRUE(::GetObjectW(surface.GetBitmap(), sizeof(bm), &bm));
        ASSERT_EQ(bm.bmBitsPixel, 8);
        PaintSavePattern(surface);
        CString path = DrawingOutputPath(L"surface8.bmp");
        ASSERT_TRUE(surface.Save(path));
        std::vector<BYTE> bytes = ReadFileBytes(path);
        ASSERT_GE(bytes.size(), 54u + 1024u);
        auto* fileHeader = reinterpret_cast<const BITMAPFILEHEADER*>(bytes.data());
        auto* header = reinterpret_cast<const BITMAPINFOHEADER*>(bytes.data() + 14);
        EXPECT_EQ(header->biBitCount, 8);
        EXPECT_EQ(fileHeader->bfOffBits, 14u + 40u + 1024u);
        EXPECT_EQ(header->biSizeImage, 8u * 5u);
        EXPECT_EQ(fileHeader->bfSize, bytes.size());
    }
    ::SelectObject(hMem, hOld);
    ::DeleteDC(hMem);
}

TEST(Surface, SaveFailsWhereNoFileCanBeWritten)
{
    MCDC surface(4, 4);
    EXPECT_FALSE(surface.Save(nullptr));
    EXPECT_FALSE(surface.Save(L""));
    EXPECT_FALSE(surface.Save(DrawingOutputPath(L"no-such-dir\\x.bmp")));
}

TEST(Surface, BadSizesAndContextsGiveEmptyResults)
{
    struct Case { int cx, cy; } cases[] = {{-5, 10}, {10, -5}, {0, 0}, {0, 7}, {INT_MAX, INT_MAX}, {1 << 20, 1 << 20}};
    for (const Case& c : cases) {
        MCDC surface(c.cx, c.cy);
        EXPECT_EQ(surface.GetBitmap(), nullptr) << c.cx << "x" << c.cy;
        surface.Fill(kRed);
        surface.DrawFrame(kRed, 2);
        EXPECT_TRUE(surface.Mirror());
        EXPECT_EQ(surface.CreateNewBitmap(), nullptr);
        EXPECT_EQ(surface.CreateNewIcon(kRed), nullptr);
        EXPECT_EQ(surface.CreateImageList(1, kRed, 0), nullptr);
        EXPECT_FALSE(surface.Save(DrawingOutputPath(L"bad.bmp")));
    }

    // No reference context: a screen-compatible context without a bitmap.
    MCDC noContext(static_cast<HDC>(NULL), 5, 5);
    EXPECT_NE(noContext.m_hDC, nullptr);
    EXPECT_EQ(noContext.GetBitmap(), nullptr);
    EXPECT_EQ(noContext.GetWidth(), 5);
    MCDC noCDC(static_cast<CDC*>(nullptr), 5, 5);
    EXPECT_EQ(noCDC.GetBitmap(), nullptr);
    EXPECT_FALSE(noCDC.Save(DrawingOutputPath(L"bad.bmp")));
    MCDC goneWindow(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(0xDEAD0)), 5, 5);
    EXPECT_EQ(goneWindow.GetBitmap(), nullptr);
}

TEST(Surface, TenThousandCyclesLeaveNoGdiObjectsBehind)
{
    CString path = DrawingOutputPath(L"cycle.bmp");
    // Warm up: first uses allocate caches that stay for the life of the process.
    for (int i = 0; i < 20; ++i) {
        MCDC surface(8, 8);
        surface.Save(path);
    }
    const unsigned slotBefore = HighestFreshGdiSlot();
    const DWORD countBefore = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    int failures = 0;
    for (int i = 0; i < 10000; ++i) {
        MCDC* surface = new MCDC(8, 8);
        surface->Fill(RGB(i & 0xFF, 0, 0));
        surface->DrawFrame(kBlue, 1);
        if (!surface->Save(path))
            ++failures;
        HBITMAP copy = surface->CreateNewBitmap();
        if (copy == NULL)
            ++failures;
        ::DeleteObject(copy);
        surface->Delete();
    }
    EXPECT_EQ(failures, 0);
    EXPECT_LE(HighestFreshGdiSlot(), slotBefore + 64);
    if (countBefore != 0) {  // Windows counts its objects; Wine reports 0
        EXPECT_LE(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS), countBefore + 4);
    }
    ::DeleteFileW(path);
}

}  // namespace
