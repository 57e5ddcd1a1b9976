// The off-screen surface: pixels drawn, mirrored, copied, cut into image lists and
// icons, and saved as BMP files that Pillow decodes on the build host.
#include <gtest/gtest.h>
#include <climits>
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "ScopedTempFolder.h"

namespace {

// A distinct colour for every pixel of a small surface.
COLORREF PixelColour(int x, int y) { return RGB(10 + 20 * x, 5 + 30 * y, 77); }

void PaintDistinct(MCDC& surface)
{
    for (int y = 0; y < surface.GetHeight(); ++y)
        for (int x = 0; x < surface.GetWidth(); ++x)
            surface.SetPixel(x, y, PixelColour(x, y));
}

TEST(Surface, FillFrameAndMirror)
{
    MCDC surface(7, 5);
    CBrush blue(kBlue);
    surface.Fill(&blue);
    ExpectPixels(surface.GetBitmap(), 7, 5, [](int, int) { return kBlue; });
    surface.Fill(static_cast<CBrush*>(nullptr));  // a null brush handle goes to GDI as it is

    for (int frames : {-1, 0, 1, 3}) {
        MCDC framed(10, 8);
        framed.Fill(kWhite);
        framed.DrawFrame(kRed, frames);
        SCOPED_TRACE(frames);
        ExpectPixels(framed.GetBitmap(), 10, 8, [frames](int x, int y) {
            return std::min(std::min(x, y), std::min(9 - x, 7 - y)) < frames ? kRed : kWhite;
        });
    }
    // The axis is column width / 2; column 0 (and the last of an odd width) never moves.
    for (int width : {1, 2, 4, 5, 8}) {
        MCDC mirrored(width, 3);
        PaintDistinct(mirrored);
        EXPECT_TRUE(mirrored.Mirror());
        const int half = width / 2;
        SCOPED_TRACE(width);
        ExpectPixels(mirrored.GetBitmap(), width, 3, [half](int x, int y) {
            return PixelColour(x >= 1 && x <= 2 * half - 1 ? 2 * half - x : x, y);
        });
    }
}

TEST(Surface, CopiesImageListsAndIconsKeepThePicture)
{
    MCDC surface(10, 4);
    PaintDistinct(surface);
    UniqueBitmap copy(surface.CreateNewBitmap());

    // A strip of three images 3 pixels wide (each drawn at its own place): the remainder column is dropped.
    EXPECT_EQ(surface.CreateImageList(0, kWhite, 0), nullptr);
    UniqueImageList list(surface.CreateImageList(3, kMask, 0));
    ASSERT_EQ(3, ::ImageList_GetImageCount(list.get()));
    for (int image = 0; image < 3; ++image) {
        MCDC target(3, 4);
        ASSERT_TRUE(::ImageList_Draw(list.get(), image, target.m_hDC, 0, 0, ILD_NORMAL));
        ExpectPixels(target.GetBitmap(), 3, 4, [image](int x, int y) { return PixelColour(image * 3 + x, y); });
    }

    surface.Fill(kGreen);
    ExpectPixels(copy.get(), 10, 4, PixelColour);  // the copy does not follow the surface
    EXPECT_EQ(MCDC::CreateNewBitmapFromDC(NULL), nullptr);
    UniqueBitmap fromDC(MCDC::CreateNewBitmapFromDC(surface.m_hDC));
    ExpectPixels(fromDC.get(), 10, 4, [](int, int) { return kGreen; });

    CBitmap* wrapper = surface.GetCBitmap();  // a temporary, never the owner of the surface's bitmap
    ASSERT_EQ(wrapper, CGdiObject::FromHandle(surface.GetBitmap()));
    EXPECT_TRUE(wrapper->IsKindOf(RUNTIME_CLASS(CBitmap)));
}

TEST(Surface, EveryConstructorMakesACompatibleSurface)
{
    UniqueWindowDC screenDC(NULL);
    CClientDC screen(nullptr);
    MCDC fromHandle(screenDC.get(), 3, 2), fromCDC(static_cast<CDC*>(&screen), 3, 2);
    MCDC noWindow(static_cast<CWnd*>(nullptr), 3, 2), ofScreen(3, 2), ofDesktop(::GetDesktopWindow(), 3, 2);
    for (MCDC* s : {&fromHandle, &fromCDC, &noWindow, &ofScreen, &ofDesktop}) {
        ASSERT_NE(s->GetBitmap(), nullptr);
        EXPECT_EQ(s->GetSize(), CSize(3, 2));
        s->Fill(kBlue);
        EXPECT_EQ(s->GetPixel(2, 1), kBlue);
    }
    EXPECT_NE(::GetDeviceCaps(screenDC.get(), BITSPIXEL), 0) << "the caller's context outlives its surface";

    // Text and clipping go to the surface's own context.
    MCDC text(60, 20);
    text.Fill(kWhite);
    RECT inside = {0, 0, 10, 10}, all = {0, 0, 60, 20};
    EXPECT_TRUE(text.PtVisible(0, 0) && text.RectVisible(&inside));
    EXPECT_TRUE(text.TextOut(1, 1, CString(L"WWW")));
    Pixels pixels = ReadPixels(text.GetBitmap());
    EXPECT_TRUE(std::any_of(pixels.data.begin(), pixels.data.end(), [](COLORREF c) { return c != kWhite; }));
    CSize extent = text.TabbedTextOut(0, 0, CString(L"a\tb"), 0, nullptr, 0);
    EXPECT_TRUE(extent.cx > 0 && extent.cy > 0);
    EXPECT_GT(text.DrawText(CString(L"x"), &all, DT_CALCRECT), 0);
}

TEST(Surface, EmptySurfacesGiveEmptyResults)
{
    ScopedTempFolder folder;
    MCDC resized(20, 20);
    resized.Resize(100, 100);  // releases the surface; the new size is not applied
    EXPECT_EQ(resized.m_hDC, nullptr);
    MCDC noContext(static_cast<HDC>(NULL), 5, 5);  // a screen-compatible context without a bitmap
    EXPECT_NE(noContext.m_hDC, nullptr);
    EXPECT_EQ(noContext.GetWidth(), 5);
    MCDC noCDC(static_cast<CDC*>(nullptr), 5, 5), goneWindow(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(0xDEAD0)), 5, 5);
    MCDC negativeWidth(-5, 10), negativeHeight(10, -5), none(0, 0), noWidth(0, 7), huge(INT_MAX, INT_MAX), large(1 << 20, 1 << 20);
    for (MCDC* s : {&resized, &noContext, &noCDC, &goneWindow, &negativeWidth, &negativeHeight, &none, &noWidth, &huge, &large}) {
        EXPECT_EQ(s->GetBitmap(), nullptr) << s->GetWidth() << "x" << s->GetHeight();
        s->Fill(kRed);
        s->DrawFrame(kRed, 2);
        EXPECT_TRUE(s->Mirror());
        EXPECT_EQ(s->CreateNewBitmap(), nullptr);
        EXPECT_EQ(s->CreateNewIcon(kRed), nullptr);
        EXPECT_EQ(s->CreateImageList(1, kRed, 0), nullptr);
        EXPECT_FALSE(s->Save(folder.Path(L"bad.bmp")));
    }
    EXPECT_EQ(resized.GetSize(), CSize(0, 0));
    MCDC fine(4, 4);
    const CString noFolder = folder.Path(L"no-such-dir\\x.bmp");
    for (const wchar_t* path : {static_cast<const wchar_t*>(nullptr), L"", static_cast<const wchar_t*>(noFolder)})
        EXPECT_FALSE(fine.Save(path));
}

// Saves the pattern both files carry: row 0 green, below it red on the left three
// columns and blue on the rest. The decoder on the build host checks the files'
// headers, colour tables and pixels; here, the image size the info header records.
DWORD SavePattern(MCDC& surface, const wchar_t* name)
{
    CBrush red(kRed), green(kGreen), blue(kBlue);
    RECT left = {0, 1, 3, surface.GetHeight()}, right = {3, 1, surface.GetWidth(), surface.GetHeight()};
    RECT top = {0, 0, surface.GetWidth(), 1};
    surface.FillRect(&left, &red);
    surface.FillRect(&right, &blue);
    surface.FillRect(&top, &green);
    const CString path = DrawingOutputPath(name);
    const std::vector<BYTE> bytes = surface.Save(path) ? FileBytes(path) : std::vector<BYTE>();
    return bytes.size() < 54 ? 0 : reinterpret_cast<const BITMAPINFOHEADER*>(bytes.data() + 14)->biSizeImage;
}

TEST(Surface, SaveWritesA24BitFileFromA32BitSurfaceAndAPaletteFileFromAn8BitOne)
{
    MCDC surface(7, 5);
    ASSERT_EQ(::GetDeviceCaps(surface.m_hDC, BITSPIXEL), 32);
    EXPECT_EQ(5u * 24, SavePattern(surface, L"surface32.bmp"));  // rows of 7 pixels of 3 bytes, padded to 4

    // A context holding an 8-bit section: surfaces made from it are 8-bit too.
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } info = {{sizeof(BITMAPINFOHEADER), 1, 1, 1, 8, BI_RGB, 0, 0, 0, 256, 0},
              {{0, 0, 0, 0}, {0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}}};  // black, red, green, blue
    void* bits = nullptr;
    UniqueBitmap section(::CreateDIBSection(NULL, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, NULL, 0));
    ASSERT_NE(section.get(), nullptr);
    UniqueAny<HDC, ::DeleteDC> hMem(::CreateCompatibleDC(NULL));
    UniqueSelectObject selected(hMem.get(), section.get());
    MCDC palette(hMem.get(), 7, 5);
    BITMAP bm;
    ASSERT_TRUE(::GetObjectW(palette.GetBitmap(), sizeof(bm), &bm));
    ASSERT_EQ(bm.bmBitsPixel, 8);
    EXPECT_EQ(5u * 8, SavePattern(palette, L"surface8.bmp"));
}

TEST(Surface, TenThousandCyclesLeaveNoGdiObjectsBehind)
{
    ScopedTempFolder folder;
    const CString path = folder.Make(L"cycle.bmp");
    ExpectNoGdiGrowth(20, 10000, [&](int i) {
        MCDC* surface = new MCDC(8, 8);
        surface->Fill(RGB(i & 0xFF, 0, 0));
        surface->DrawFrame(kBlue, 1);
        const UniqueBitmap copy(surface->CreateNewBitmap());
        const bool saved = surface->Save(path);
        surface->Delete();
        return saved && copy.get() != NULL;
    });
}

}  // namespace
