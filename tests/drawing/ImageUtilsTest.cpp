#include <gtest/gtest.h>
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MImageUtils.h"
#include "TestSupport.h"

namespace {

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kGreen = RGB(0, 255, 0);
const COLORREF kMask = RGB(255, 0, 255);

HICON SolidIcon(int size, COLORREF colour)
{
    MCDC surface(size, size);
    surface.Fill(colour);
    return surface.CreateNewIcon(kMask);
}

// An icon with a mask bitmap only (black and white, double height).
HICON MonochromeIcon()
{
    BYTE andBits[32 * 4] = {};
    BYTE xorBits[32 * 4] = {};
    return ::CreateIcon(::GetModuleHandleW(NULL), 32, 32, 1, 1, andBits, xorBits);
}

TEST(ImageUtils, IconSizesComeFromTheColourBitmap)
{
    UniqueIcon icon(SolidIcon(24, kRed));
    CSize size;
    ASSERT_TRUE(MImageUtils::GetIconSize(icon.get(), size));
    EXPECT_EQ(size, CSize(24, 24));
    UniqueIcon mono(MonochromeIcon());
    ASSERT_NE(mono, nullptr);
    EXPECT_FALSE(MImageUtils::GetIconSize(mono.get(), size));
    EXPECT_FALSE(MImageUtils::GetIconSize(NULL, size));

    ICONINFO info = {};
    ASSERT_TRUE(::GetIconInfo(icon.get(), &info));
    MImageUtils::DestroyIconInfoData(info);
    EXPECT_EQ(info.hbmColor, nullptr);
    EXPECT_EQ(info.hbmMask, nullptr);
    MImageUtils::DestroyIconInfoData(info);  // a second time finds nothing to delete
}

TEST(ImageUtils, OverlayGoesToTheBottomRightCorner)
{
    HICON hIcon = SolidIcon(32, kRed);
    UniqueIcon overlay(SolidIcon(16, kBlue));
    ASSERT_TRUE(MImageUtils::DrawIconOnIcon(hIcon, overlay.get(), IconPlaceBottomRight, kMask));
    UniqueIcon result(hIcon);
    MCDC target(32, 32);
    target.Fill(kGreen);
    ASSERT_TRUE(::DrawIconEx(target.m_hDC, 0, 0, hIcon, 32, 32, 0, NULL, DI_NORMAL));
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            ASSERT_EQ(target.GetPixel(x, y), (x >= 16 && y >= 16) ? kBlue : kRed) << x << "," << y;
}

TEST(ImageUtils, OverlayFailsAndKeepsTheIconForBadPlacesAndSizes)
{
    HICON hIcon = SolidIcon(32, kRed);
    UniqueIcon keep(hIcon);
    UniqueIcon small(SolidIcon(16, kBlue));
    UniqueIcon large(SolidIcon(48, kBlue));
    UniqueIcon mono(MonochromeIcon());
    EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hIcon, large.get(), IconPlaceBottomRight, kMask));
    EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hIcon, mono.get(), IconPlaceBottomRight, kMask));
    for (int place = 0; place <= 10; ++place) {
        if (place != IconPlaceBottomRight) {
            EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hIcon, small.get(), static_cast<MEIconOnIconPlace>(place), kMask));
        }
    }
    HICON hNone = NULL;
    EXPECT_FALSE(MImageUtils::DrawIconOnIcon(hNone, small.get(), IconPlaceBottomRight, kMask));
    EXPECT_EQ(hIcon, keep.get());
    CSize size;
    EXPECT_TRUE(MImageUtils::GetIconSize(hIcon, size));
}

TEST(ImageUtils, CursorsTakeTheIconsPictureAndAHotSpot)
{
    UniqueIcon icon(SolidIcon(16, kRed));
    HICON hCursor = MImageUtils::CreateCursorFromIcon(icon.get(), 3, 4);
    ASSERT_NE(hCursor, nullptr);
    ICONINFO info = {};
    ASSERT_TRUE(::GetIconInfo(hCursor, &info));
    EXPECT_FALSE(info.fIcon);
    EXPECT_EQ(info.xHotspot, 3u);
    EXPECT_EQ(info.yHotspot, 4u);
    MImageUtils::DestroyIconInfoData(info);
    ::DestroyCursor(hCursor);

    UniqueIcon mono(MonochromeIcon());
    EXPECT_EQ(MImageUtils::CreateCursorFromIcon(mono.get(), 0, 0), nullptr);
    EXPECT_EQ(MImageUtils::CreateCursorFromIcon(NULL, 0, 0), nullptr);
}

TEST(ImageUtils, LoadsIconsCursorsAndBitmapsFromFiles)
{
    CString ico = TestDataPath(L"drawing\\picture.ico");
    CSize size;
    UniqueIcon byDefault(static_cast<HICON>(MImageUtils::LoadResourceFromFile(ico, IMAGE_ICON, 0, 0, NULL)));
    ASSERT_TRUE(MImageUtils::GetIconSize(byDefault.get(), size));
    EXPECT_EQ(size, CSize(::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON)));
    UniqueIcon sized(static_cast<HICON>(MImageUtils::LoadResourceFromFile(ico, IMAGE_ICON, 16, 16, NULL)));
    ASSERT_TRUE(MImageUtils::GetIconSize(sized.get(), size));
    EXPECT_EQ(size, CSize(16, 16));
    UniqueIcon loaded(MImageUtils::LoadIconFromFile(ico, NULL));
    ASSERT_TRUE(MImageUtils::GetIconSize(loaded.get(), size));
    EXPECT_EQ(size.cx, ::GetSystemMetrics(SM_CXICON));

    UniqueBitmap bitmap(static_cast<HBITMAP>(
        MImageUtils::LoadResourceFromFile(TestDataPath(L"drawing\\picture.bmp"), IMAGE_BITMAP, 0, 0, NULL)));
    Pixels pixels = ReadPixels(bitmap.get());
    EXPECT_EQ(pixels.width, 8);
    EXPECT_EQ(pixels.height, 6);

    CString cur = TestDataPath(L"drawing\\picture.cur");
    HCURSOR hCursor = static_cast<HCURSOR>(MImageUtils::LoadResourceFromFile(cur, IMAGE_CURSOR, 5, 5, NULL));
    ASSERT_NE(hCursor, nullptr);
    ICONINFO info = {};
    ASSERT_TRUE(::GetIconInfo(hCursor, &info));
    EXPECT_FALSE(info.fIcon);
    MImageUtils::DestroyIconInfoData(info);
    ::DestroyCursor(hCursor);
    HCURSOR hDirect = MImageUtils::LoadCursorFromFileW(cur, reinterpret_cast<HINSTANCE>(static_cast<ULONG_PTR>(1)));
    EXPECT_NE(hDirect, nullptr);
    ::DestroyCursor(hDirect);

    EXPECT_EQ(MImageUtils::LoadIconFromFile(TestDataPath(L"drawing\\missing.ico"), NULL), nullptr);
    EXPECT_EQ(MImageUtils::LoadResourceFromFile(nullptr, IMAGE_ICON, 0, 0, NULL), nullptr);
}

TEST(ImageUtils, BitmapByIndexDrawsOneImageOverTheBackground)
{
    MCDC strip(12, 4);
    strip.Fill(kMask);
    RECT second = {4, 0, 8, 2};  // image 1: top half blue, bottom half masked
    CBrush blue(kBlue);
    strip.FillRect(&second, &blue);
    UniqueImageList list(strip.CreateImageList(3, kMask, 0));
    ASSERT_NE(list, nullptr);

    HBITMAP hBitmap = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(1));
    ASSERT_TRUE(MImageUtils::GetBitmapByIndex(list.get(), 1, kGreen, hBitmap));
    UniqueBitmap bitmap(hBitmap);
    Pixels pixels = ReadPixels(hBitmap);
    ASSERT_EQ(pixels.width, 4);
    EXPECT_EQ(pixels.At(2, 0), kBlue);
    EXPECT_EQ(pixels.At(2, 3), kGreen);

    hBitmap = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(1));
    EXPECT_FALSE(MImageUtils::GetBitmapByIndex(NULL, 0, kGreen, hBitmap));
    EXPECT_EQ(hBitmap, nullptr);
}

TEST(ImageUtils, RepeatedIconOverlaysLeaveNoGdiObjectsBehind)
{
    UniqueIcon overlay(SolidIcon(8, kBlue));
    for (int i = 0; i < 10; ++i) {
        HICON hIcon = SolidIcon(16, kRed);
        MImageUtils::DrawIconOnIcon(hIcon, overlay.get(), IconPlaceBottomRight, kMask);
        ::DestroyIcon(hIcon);
    }
    const unsigned slotBefore = HighestFreshGdiSlot();
    int failures = 0;
    for (int i = 0; i < 300; ++i) {
        HICON hIcon = SolidIcon(16, kRed);
        if (!MImageUtils::DrawIconOnIcon(hIcon, overlay.get(), IconPlaceBottomRight, kMask))
            ++failures;
        ::DestroyIcon(hIcon);
    }
    EXPECT_EQ(failures, 0);
    EXPECT_LE(HighestFreshGdiSlot(), slotBefore + 64);
}

}  // namespace
