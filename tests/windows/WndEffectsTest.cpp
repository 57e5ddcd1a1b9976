#include <gtest/gtest.h>
#include "MCWndEffects.h"
#include "TestWindows.h"

namespace {
LONG ExStyle(HWND hWnd) { return static_cast<LONG>(::GetWindowLongPtrW(hWnd, GWL_EXSTYLE)); }
}

TEST(WndEffects, TransparencyNeedsAPreviousExtendedStyle)
{
    MCWndEffects effects;
    TestWindow plain(MakeTopWindow(0, 0, 50, 50));
    ASSERT_EQ(0, ExStyle(plain));
    // The style is set, but a previous style of 0 counts as failure: no alpha.
    EXPECT_FALSE(effects.SetEffects_TransparentWnd(plain, 128));
    EXPECT_TRUE(ExStyle(plain) & WS_EX_LAYERED);

    // Now layered, a second call applies the alpha directly.
    EXPECT_TRUE(effects.SetEffects_TransparentWnd(plain, 128));
    BYTE alpha = 0;
    DWORD flags = 0;
    if (::GetLayeredWindowAttributes(plain, NULL, &alpha, &flags)) {
        EXPECT_EQ(128, alpha);
        EXPECT_EQ(static_cast<DWORD>(LWA_ALPHA), flags & LWA_ALPHA);
    }

    TestWindow tool(MakeTopWindow(0, 0, 50, 50, WS_EX_TOOLWINDOW));
    EXPECT_TRUE(effects.SetEffects_TransparentWnd(tool, 200));
    EXPECT_TRUE(ExStyle(tool) & WS_EX_LAYERED);
    EXPECT_TRUE(ExStyle(tool) & WS_EX_TOOLWINDOW);
    if (::GetLayeredWindowAttributes(tool, NULL, &alpha, &flags)) {
        EXPECT_EQ(200, alpha);
    }
}

TEST(WndEffects, AnimationAndCopies)
{
    MCWndEffects effects;
    TestWindow plain(MakeTopWindow(0, 0, 50, 50, 0, WS_POPUP));
    EXPECT_FALSE(effects.SetEffects_AnimateWindow(plain, 10, AW_BLEND));
    EXPECT_TRUE(ExStyle(plain) & WS_EX_LAYERED);

    MCWndEffects copy(effects);
    TestWindow tool(MakeTopWindow(0, 0, 50, 50, WS_EX_TOOLWINDOW, WS_POPUP));
    // The result is the system's own; what must hold is that the call reaches it.
    copy.SetEffects_AnimateWindow(tool, 10, AW_BLEND | AW_ACTIVATE);
    EXPECT_TRUE(ExStyle(tool) & WS_EX_LAYERED);
}

TEST(WndEffects, DesktopIsActiveInATestSession)
{
    MCWndEffects effects;
    EXPECT_TRUE(effects.IsDesktopActive());
}
