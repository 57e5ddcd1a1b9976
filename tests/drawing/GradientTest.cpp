// Gradient rectangles: drawn by GradientFill, and in bands when it fails.
#include <gtest/gtest.h>
#include <vector>
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MImageUtils.h"
#include "ScopedImportHook.h"

namespace {

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
