// Transparency and animation on real windows.
#include <gtest/gtest.h>
#include "MCWndEffects.h"
#include "TestWindows.h"

namespace {
bool Layered(HWND hWnd) { return (::GetWindowLongPtrW(hWnd, GWL_EXSTYLE) & WS_EX_LAYERED) != 0; }
}

TEST(WndEffects, EffectsNeedAPreviousExtendedStyle)
{
    MCWndEffects effects;
    TestWindow plain(MakeWindow(NULL, 0, 0, 50, 50)), tool(MakeWindow(NULL, 0, 0, 50, 50, WS_EX_TOOLWINDOW));
    ASSERT_EQ(0, ::GetWindowLongPtrW(plain.get(), GWL_EXSTYLE));
    // The style is set, but a previous style of 0 counts as failure: no alpha.
    EXPECT_FALSE(effects.SetEffects_TransparentWnd(plain.get(), 128));
    EXPECT_TRUE(Layered(plain.get()));
    // Now layered (or with another extended style), the alpha is applied.
    for (HWND hWnd : {plain.get(), tool.get()}) {
        EXPECT_TRUE(effects.SetEffects_TransparentWnd(hWnd, 200));
        EXPECT_TRUE(Layered(hWnd));
        BYTE alpha = 0;
        DWORD flags = 0;
        if (::GetLayeredWindowAttributes(hWnd, NULL, &alpha, &flags)) {
            EXPECT_EQ(200, alpha);
            EXPECT_EQ(static_cast<DWORD>(LWA_ALPHA), flags & LWA_ALPHA);
        }
    }
    EXPECT_TRUE(::GetWindowLongPtrW(tool.get(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW);

    TestWindow animated(MakeWindow(NULL, 0, 0, 50, 50)), toolAnimated(MakeWindow(NULL, 0, 0, 50, 50, WS_EX_TOOLWINDOW));
    EXPECT_FALSE(effects.SetEffects_AnimateWindow(animated.get(), 10, AW_BLEND));
    EXPECT_TRUE(Layered(animated.get()));
    MCWndEffects copy(effects);
    // The result is the system's own; what must hold is that the call reaches it.
    copy.SetEffects_AnimateWindow(toolAnimated.get(), 10, AW_BLEND | AW_ACTIVATE);
    EXPECT_TRUE(Layered(toolAnimated.get()));
    EXPECT_TRUE(effects.IsDesktopActive()) << "a test session has the input desktop";
}
