#include <gtest/gtest.h>
#include "MUIUtils.h"

// The first window tested decides the cached atom. The name test reads six
// characters, so a first "ButtonX" window passes for a button, and from then on
// the real buttons do not.
TEST(ButtonAtomCache, FirstClassStartingWithButtonIsTakenForButtons)
{
    const WNDCLASSEXW wc = {sizeof(wc), 0, ::DefWindowProcW, 0, 0, ::GetModuleHandleW(NULL), NULL, NULL, NULL, NULL,
                            L"ButtonX", NULL};
    ASSERT_NE(0, ::RegisterClassExW(&wc));
    HWND top = ::CreateWindowExW(0, L"ButtonX", L"x", WS_POPUP, 0, 0, 50, 50, NULL, NULL, wc.hInstance, NULL);
    ASSERT_NE(nullptr, top);
    HWND button = ::CreateWindowExW(0, L"Button", L"b", WS_CHILD | BS_PUSHBUTTON, 0, 0, 50, 20, top, NULL,
                                    wc.hInstance, NULL);
    ASSERT_NE(nullptr, button);

    EXPECT_TRUE(MUIUtils::IsButton(top));
    EXPECT_TRUE(MUIUtils::IsPushButton(top));  // its style's low bits are 0
    EXPECT_FALSE(MUIUtils::IsButton(button));
    EXPECT_FALSE(MUIUtils::IsPushButton(button));

    ::DestroyWindow(top);
}
