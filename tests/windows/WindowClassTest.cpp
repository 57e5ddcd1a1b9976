#include <gtest/gtest.h>
#include "MUIUtils.h"
#include "TestWindows.h"

namespace {
HWND MakeButton(HWND hParent, DWORD type)
{
    return ::CreateWindowExW(0, L"Button", L"b", WS_CHILD | WS_VISIBLE | type, 0, 0, 50, 20, hParent, NULL,
                             ::GetModuleHandleW(NULL), NULL);
}
}  // namespace

TEST(UIClasses, ButtonsDialogsAndPushButtons)
{
    TestWindow top(MakeTopWindow(10, 10, 200, 150));
    HWND push = MakeButton(top, BS_PUSHBUTTON);
    HWND def = MakeButton(top, BS_DEFPUSHBUTTON);
    HWND owner = MakeButton(top, BS_OWNERDRAW);
    HWND check = MakeButton(top, BS_AUTOCHECKBOX);
    HWND edit = ::CreateWindowExW(0, L"Edit", L"", WS_CHILD, 0, 0, 50, 20, top, NULL, NULL, NULL);
    TestWindow dialog(::CreateWindowExW(0, L"#32770", L"d", WS_POPUP, 0, 0, 50, 50, NULL, NULL, NULL, NULL));

    // Twice each, so that both the name test and the cached atom are used.
    for (int pass = 0; pass < 2; ++pass) {
        SCOPED_TRACE(pass);
        EXPECT_TRUE(MUIUtils::IsButton(push));
        EXPECT_TRUE(MUIUtils::IsButton(check));
        EXPECT_FALSE(MUIUtils::IsButton(edit));
        EXPECT_FALSE(MUIUtils::IsButton(top));
        EXPECT_TRUE(MUIUtils::IsDialog(dialog));
        EXPECT_FALSE(MUIUtils::IsDialog(top));
        EXPECT_TRUE(MUIUtils::IsPushButton(push));
        EXPECT_TRUE(MUIUtils::IsPushButton(def));
        EXPECT_TRUE(MUIUtils::IsPushButton(owner));
        EXPECT_FALSE(MUIUtils::IsPushButton(check));
        EXPECT_FALSE(MUIUtils::IsPushButton(edit));
    }
    EXPECT_FALSE(MUIUtils::IsButton(NULL));
}

TEST(UIClasses, ShowWindowNeverHidesAVisibleWindow)
{
    TestWindow visible(MakeTopWindow(10, 10, 50, 50, 0, WS_POPUP | WS_VISIBLE));
    TestWindow hidden(MakeTopWindow(10, 10, 50, 50, 0, WS_POPUP));
    ASSERT_TRUE(::IsWindowVisible(visible));

    EXPECT_EQ(1, MUIUtils::ShowWindow(visible.Get(), SW_HIDE));
    EXPECT_TRUE(::IsWindowVisible(visible));

    EXPECT_EQ(0, MUIUtils::ShowWindow(hidden.Get(), SW_SHOWNA));  // was hidden
    EXPECT_TRUE(::IsWindowVisible(hidden));

    EXPECT_EQ(0, MUIUtils::ShowWindow(static_cast<HWND>(NULL), SW_SHOW));
    HWND gone = MakeTopWindow(0, 0, 10, 10);
    ::DestroyWindow(gone);
    EXPECT_EQ(0, MUIUtils::ShowWindow(gone, SW_SHOW));
}

TEST(UIRectangles, ConversionsBetweenNestedWindows)
{
    // Frameless windows: each window's client area starts at its window corner.
    TestWindow top(MakeTopWindow(100, 80, 400, 300));
    HWND middle = MakeChildWindow(top, 30, 20, 300, 200);
    HWND inner = MakeChildWindow(middle, 5, 7, 100, 50);

    RECT rc = {1, 2, 11, 12};
    ASSERT_TRUE(MUIUtils::WindowToParentClient(inner, &rc));
    EXPECT_EQ(CRect(6, 9, 16, 19), CRect(rc));

    rc = {1, 2, 11, 12};
    ASSERT_TRUE(MUIUtils::WindowToParentWindow(inner, &rc));
    EXPECT_EQ(CRect(6, 9, 16, 19), CRect(rc));

    // A top-level window's parent is the desktop, whose client area is the screen.
    rc = {0, 0, 10, 10};
    ASSERT_TRUE(MUIUtils::WindowToParentClient(top, &rc));
    EXPECT_EQ(CRect(100, 80, 110, 90), CRect(rc));

    EXPECT_FALSE(MUIUtils::WindowToParentClient(inner, NULL));
    EXPECT_FALSE(MUIUtils::WindowToParentWindow(inner, NULL));
    rc = {1, 2, 3, 4};
    EXPECT_FALSE(MUIUtils::WindowToParentClient(NULL, &rc));
    EXPECT_FALSE(MUIUtils::WindowToParentWindow(NULL, &rc));
    EXPECT_EQ(CRect(1, 2, 3, 4), CRect(rc));
}

TEST(UIRectangles, BorderedParentDiffersBetweenClientAndWindow)
{
    TestWindow top(MakeTopWindow(50, 50, 300, 200, 0, WS_POPUP | WS_BORDER));
    HWND child = MakeChildWindow(top, 10, 10, 50, 50);
    RECT client = {0, 0, 5, 5}, window = {0, 0, 5, 5};
    ASSERT_TRUE(MUIUtils::WindowToParentClient(child, &client));
    ASSERT_TRUE(MUIUtils::WindowToParentWindow(child, &window));
    EXPECT_EQ(CRect(10, 10, 15, 15), CRect(client));
    // The border (one pixel) lies between the parent's window and client corners.
    int border = ::GetSystemMetrics(SM_CXBORDER);
    EXPECT_EQ(CRect(10 + border, 10 + border, 15 + border, 15 + border), CRect(window));
}
