// Icons, cursors, overlays, files loaded as icons, cursors and bitmaps, and gradient
// rectangles: drawn by GradientFill, and in bands when it fails.
#include <gtest/gtest.h>
#include <vector>
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MImageUtils.h"
#include "ScopedImportHook.h"
#include "TestSupport.h"

namespace {

// One colour but for the top left 8-by-8 corner, which is in the mask colour: transparent.
HICON SolidIcon(int size, COLORREF colour, int height = 0)
{
    MCDC surface(size, height != 0 ? height : size);
    surface.Fill(colour);
    const RECT corner = {0, 0, 8, 8};
    CBrush mask(kMask);
    surface.FillRect(&corner, &mask);
    return surface.CreateNewIcon(kMask);
}

// An icon with a mask bitmap only (black and white, double height).
HICON MonochromeIcon()
{
    BYTE andBits[32 * 4] = {}, xorBits[32 * 4] = {};
    return ::CreateIcon(::GetModuleHandleW(NULL), 32, 32, 1, 1, andBits, xorBits);
}

// The size GetIconSize reads, or (-1, -1) when it fails.
CSize IconSize(HICON hIcon)
{
    CSize size;
    return MImageUtils::GetIconSize(hIcon, size) ? size : CSize(-1, -1);
}

TEST(ImageUtils, IconSizesCursorsAndFiles)
{
    UniqueIcon icon(SolidIcon(24, kRed, 12)), mono(MonochromeIcon());
    ASSERT_NE(mono.get(), nullptr);
    EXPECT_EQ(CSize(24, 12), IconSize(icon.get()));
    EXPECT_EQ(CSize(-1, -1), IconSize(mono.get())) << "no colour bitmap";
    EXPECT_EQ(CSize(-1, -1), IconSize(NULL));
    EXPECT_EQ(MImageUtils::CreateCursorFromIcon(mono.get(), 0, 0), nullptr);
    EXPECT_EQ(MImageUtils::CreateCursorFromIcon(NULL, 0, 0), nullptr);
    // A cursor made from an icon, with its hot spot, and a cursor file loaded through either entry point.
    const CString ico = TestDataPath(L"drawing\\picture.ico"), cur = TestDataPath(L"drawing\\picture.cur");
    const HCURSOR cursors[] = {
        MImageUtils::CreateCursorFromIcon(icon.get(), 3, 4),
        static_cast<HCURSOR>(MImageUtils::LoadResourceFromFile(cur, IMAGE_CURSOR, 5, 5, NULL)),
        MImageUtils::LoadCursorFromFileW(cur, reinterpret_cast<HINSTANCE>(static_cast<ULONG_PTR>(1)))};
    for (HCURSOR hCursor : cursors) {
        ICONINFO info = {};
        ASSERT_TRUE(hCursor != NULL && ::GetIconInfo(hCursor, &info));
        EXPECT_FALSE(info.fIcon);
        if (hCursor == cursors[0]) {
            EXPECT_EQ(CPoint(3, 4), CPoint(info.xHotspot, info.yHotspot));
        }
        MImageUtils::DestroyIconInfoData(info);
        EXPECT_TRUE(info.hbmColor == nullptr && info.hbmMask == nullptr);
        MImageUtils::DestroyIconInfoData(info);  // a second time finds nothing to delete
        ::DestroyCursor(hCursor);
    }

    const CSize systemSize(::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON));
    UniqueIcon byDefault(static_cast<HICON>(MImageUtils::LoadResourceFromFile(ico, IMAGE_ICON, 0, 0, NULL)));
    UniqueIcon sized(static_cast<HICON>(MImageUtils::LoadResourceFromFile(ico, IMAGE_ICON, 16, 16, NULL)));
    UniqueIcon loaded(MImageUtils::LoadIconFromFile(ico, NULL));
    EXPECT_EQ(systemSize, IconSize(byDefault.get()));
    EXPECT_EQ(CSize(16, 16), IconSize(sized.get()));
    EXPECT_EQ(systemSize, IconSize(loaded.get()));
    UniqueBitmap bitmap(static_cast<HBITMAP>(
        MImageUtils::LoadResourceFromFile(TestDataPath(L"drawing\\picture.bmp"), IMAGE_BITMAP, 0, 0, NULL)));
    Pixels pixels = ReadPixels(bitmap.get());
    EXPECT_EQ(CSize(8, 6), CSize(pixels.width, pixels.height));
    EXPECT_EQ(MImageUtils::LoadIconFromFile(TestDataPath(L"drawing\\missing.ico"), NULL), nullptr);
    EXPECT_EQ(MImageUtils::LoadResourceFromFile(nullptr, IMAGE_ICON, 0, 0, NULL), nullptr);
    HBITMAP hBitmap = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(1));
    EXPECT_FALSE(MImageUtils::GetBitmapByIndex(NULL, 0, kGreen, hBitmap));
    EXPECT_EQ(hBitmap, nullptr);
}

TEST(ImageUtils, OverlayGoesToTheBottomRightCornerOrNowhere)
{
    HICON hIcon = SolidIcon(32, kRed);
    UniqueIcon keep(hIcon), small(SolidIcon(16, kBlue)), wide(SolidIcon(48, kBlue, 16)), tall(SolidIcon(16, kBlue, 48)),
        mono(MonochromeIcon());
    // An overlay larger than the icon in either direction, or of unknown size, is refused.
    for (HICON overlay : {wide.get(), tall.get(), mono.get()})
        EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hIcon, overlay, IconPlaceBottomRight, kMask));
    for (int place = 0; place <= 10; ++place) {
        if (place != IconPlaceBottomRight) {
            EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hIcon, small.get(), static_cast<MEIconOnIconPlace>(place), kMask));
        }
    }
    HICON hNone = NULL;
    EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hNone, small.get(), IconPlaceBottomRight, kMask));
    EXPECT_EQ(hIcon, keep.get());
    EXPECT_EQ(CSize(32, 32), IconSize(hIcon)) << "a failed overlay leaves the icon";

    ASSERT_TRUE(MImageUtils::DrawIconOnIcon(hIcon, small.get(), IconPlaceBottomRight, kMask));
    keep.release();
    UniqueIcon result(hIcon);
    MCDC target(32, 32);
    target.Fill(kGreen);
    ASSERT_TRUE(::DrawIconEx(target.m_hDC, 0, 0, hIcon, 32, 32, 0, NULL, DI_NORMAL));
    // Transparent corners let through the background, and the icon under the overlay.
    ExpectPixels(target.GetBitmap(), 32, 32, [](int x, int y) {
        return x < 8 && y < 8 ? kGreen : x >= 16 && y >= 16 && (x >= 24 || y >= 24) ? kBlue : kRed;
    });

    // Repeated overlays leave no GDI objects behind.
    ExpectNoGdiGrowth(10, 300, [&](int) {
        HICON hBase = SolidIcon(16, kRed);
        const bool drawn = MImageUtils::DrawIconOnIcon(hBase, small.get(), IconPlaceBottomRight, kMask);
        ::DestroyIcon(hBase);
        return drawn;
    });
}

struct Band {
    CRect rect;
    COLORREF colour;
};
std::vector<Band> g_bands;

BOOL WINAPI FailingGradientFill(HDC, PTRIVERTEX, ULONG, PVOID, ULONG, ULONG) { return FALSE; }

int WINAPI RecordingFillRect(HDC hDC, const RECT* rc, HBRUSH hBrush)
{
    LOGBRUSH lb = {};
    ::GetObjectW(hBrush, sizeof(lb), &lb);
    g_bands.push_back(Band{*rc, lb.lbColor});
    return ::FillRect(hDC, rc, hBrush);
}

// The library's gradient with GradientFill failing, recording every band it fills.
std::vector<Band> DrawInBands(MCDC& surface, const CRect& rc, COLORREF from, COLORREF to, bool horizontal)
{
    ScopedImportHook gradient(TesvorUtilModule(), "msimg32.dll", "GradientFill", &FailingGradientFill);
    ScopedImportHook fill(TesvorUtilModule(), "user32.dll", "FillRect", &RecordingFillRect);
    EXPECT_TRUE(gradient.Hooked() && fill.Hooked());
    g_bands.clear();
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(&surface, rc, from, to, horizontal), 1);
    return g_bands;
}

TEST(Gradient, FillsFromOneColourToTheOtherOrInBands)
{
    MCDC surface(256, 55);
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(&surface, CRect(0, 0, 256, 4), RGB(0, 0, 0), RGB(0, 0, 255), true), 1);
    EXPECT_LE(GetBValue(surface.GetPixel(0, 1)), 2);
    EXPECT_GE(GetBValue(surface.GetPixel(255, 1)), 253);
    for (int x = 1; x < 256; ++x)
        ASSERT_GE(GetBValue(surface.GetPixel(x, 1)), GetBValue(surface.GetPixel(x - 1, 1)));
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(nullptr, CRect(0, 0, 4, 4), 0, 0, true), 0);

    // Without GradientFill: one band per colour step.
    surface.Fill(kWhite);
    std::vector<Band> bands = DrawInBands(surface, CRect(0, 0, 110, 4), RGB(0, 0, 0), RGB(0, 0, 10), true);
    ASSERT_EQ(bands.size(), 11u);
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(CRect(i * 10, 0, (i + 1) * 10, 4), bands[i].rect);
        EXPECT_EQ(RGB(0, 0, i * 10 / 11), bands[i].colour) << "band " << i;
        EXPECT_EQ(RGB(0, 0, i * 10 / 11), surface.GetPixel(i * 10 + 5, 2));
    }
    // Downwards, towards a darker red: red falls by 4 and green rises by 2 over 5 steps of 10 rows.
    bands = DrawInBands(surface, CRect(0, 5, 3, 55), RGB(20, 0, 7), RGB(16, 2, 7), false);
    const COLORREF expected[] = {RGB(20, 0, 7), RGB(20, 0, 7), RGB(19, 0, 7), RGB(18, 1, 7), RGB(17, 1, 7)};
    ASSERT_EQ(bands.size(), 5u);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(CRect(0, 5 + i * 10, 3, 5 + (i + 1) * 10), bands[i].rect);
        EXPECT_EQ(expected[i], bands[i].colour) << "band " << i;
    }
    // Equal colours: a single band over the whole rectangle.
    bands = DrawInBands(surface, CRect(0, 0, 3, 50), RGB(9, 9, 9), RGB(9, 9, 9), false);
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(CRect(0, 0, 3, 50), bands[0].rect);
}

}  // namespace
