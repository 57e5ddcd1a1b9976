// Class tests by window handle, ShowWindow that never hides, and rectangles moved
// into a parent's coordinates, on real windows.
#include <gtest/gtest.h>
#include "MUIUtils.h"
#include "TestSupport.h"
#include "TestWindows.h"

TEST(UIClasses, ButtonsDialogsAndPushButtons)
{
    TestWindow top(MakeWindow(NULL, 10, 10, 200, 150));
    auto child = [&](const wchar_t* cls, DWORD style) {
        return ::CreateWindowExW(0, cls, L"b", WS_CHILD | WS_VISIBLE | style, 0, 0, 50, 20, top.get(), 0, 0, 0);
    };
    HWND push = child(L"Button", BS_PUSHBUTTON), def = child(L"Button", BS_DEFPUSHBUTTON);
    HWND owner = child(L"Button", BS_OWNERDRAW), check = child(L"Button", BS_AUTOCHECKBOX), edit = child(L"Edit", 0);
    TestWindow dialog(::CreateWindowExW(0, L"#32770", L"d", WS_POPUP, 0, 0, 50, 50, NULL, NULL, NULL, NULL));
    // Twice, so that both the name test and the cached atom are used.
    for (int pass = 0; pass < 2; ++pass) {
        const Values results = {
            MUIUtils::IsButton(push),      MUIUtils::IsButton(check),    MUIUtils::IsButton(edit),
            MUIUtils::IsButton(top.get()), MUIUtils::IsDialog(dialog.get()), MUIUtils::IsDialog(top.get()),
            MUIUtils::IsPushButton(push),  MUIUtils::IsPushButton(def),  MUIUtils::IsPushButton(owner),
            MUIUtils::IsPushButton(check), MUIUtils::IsPushButton(edit), MUIUtils::IsButton(NULL)};
        EXPECT_EQ((Values{1, 1, 0, 0, 1, 0, 1, 1, 1, 0, 0, 0}), results) << "pass " << pass;
    }

    TestWindow visible(MakeWindow(NULL, 10, 10, 50, 50, 0, WS_POPUP | WS_VISIBLE)), hidden(MakeWindow(NULL, 10, 10, 50, 50));
    ASSERT_TRUE(::IsWindowVisible(visible.get()));
    EXPECT_EQ(1, MUIUtils::ShowWindow(visible.get(), SW_HIDE));
    EXPECT_TRUE(::IsWindowVisible(visible.get())) << "a visible window is never hidden";
    EXPECT_EQ(0, MUIUtils::ShowWindow(hidden.get(), SW_SHOWNA));  // was hidden
    EXPECT_TRUE(::IsWindowVisible(hidden.get()));
    EXPECT_EQ(0, MUIUtils::ShowWindow(static_cast<HWND>(NULL), SW_SHOW));
    HWND gone = visible.release();
    ::DestroyWindow(gone);
    EXPECT_EQ(0, MUIUtils::ShowWindow(gone, SW_SHOW));
}

TEST(UIRectangles, ConversionsBetweenNestedWindows)
{
    // Frameless windows: each window's client area starts at its window corner.
    TestWindow top(MakeWindow(NULL, 100, 80, 400, 300)), bordered(MakeWindow(NULL, 50, 50, 300, 200, 0, WS_POPUP | WS_BORDER));
    HWND middle = MakeWindow(top.get(), 30, 20, 300, 200), inner = MakeWindow(middle, 5, 7, 100, 50);
    HWND framed = MakeWindow(bordered.get(), 10, 10, 50, 50);
    const int border = ::GetSystemMetrics(SM_CXBORDER);  // between the parent's window and client corners
    struct Case {
        BOOL (*convert)(HWND, RECT*);
        HWND hWnd;
        CRect in, out;
    } const cases[] = {
        {MUIUtils::WindowToParentClient, inner, CRect(1, 2, 11, 12), CRect(6, 9, 16, 19)},
        {MUIUtils::WindowToParentWindow, inner, CRect(1, 2, 11, 12), CRect(6, 9, 16, 19)},
        // A top-level window's parent is the desktop, whose client area is the screen.
        {MUIUtils::WindowToParentClient, top.get(), CRect(0, 0, 10, 10), CRect(100, 80, 110, 90)},
        {MUIUtils::WindowToParentClient, framed, CRect(0, 0, 5, 5), CRect(10, 10, 15, 15)},
        {MUIUtils::WindowToParentWindow, framed, CRect(0, 0, 5, 5), CRect(10 + border, 10 + border, 15 + border, 15 + border)},
    };
    for (const Case& c : cases) {
        CRect rc = c.in;
        ASSERT_TRUE(c.convert(c.hWnd, &rc)) << &c - cases;
        EXPECT_EQ(c.out, rc) << &c - cases;
    }
    for (BOOL (*convert)(HWND, RECT*) : {MUIUtils::WindowToParentClient, MUIUtils::WindowToParentWindow}) {
        CRect rc(1, 2, 3, 4);
        EXPECT_FALSE(convert(inner, NULL));
        EXPECT_FALSE(convert(NULL, &rc));
        EXPECT_EQ(CRect(1, 2, 3, 4), rc);
    }
}
