// Batched moves of real child windows.
#include <gtest/gtest.h>
#include "MCDeferPos.h"
#include "TestWindows.h"

namespace {
CRect ChildRect(HWND hWnd)
{
    RECT rc;
    ::GetWindowRect(hWnd, &rc);
    ::MapWindowPoints(NULL, ::GetParent(hWnd), reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}
}  // namespace

TEST(DeferPos, BatchIsAppliedOnceAtScopeEndOrAtItsEnd)
{
    TestWindow top(MakeTopWindow(0, 0, 400, 300));
    HWND a = MakeChildWindow(top, 0, 0, 10, 10), b = MakeChildWindow(top, 0, 0, 10, 10);
    {
        MCDeferPos batch(2);
        EXPECT_TRUE(batch.MoveWindow(a, 10, 20, 100, 50, TRUE));
        EXPECT_TRUE(batch.SetWindowPos(b, NULL, 30, 40, 60, 70, SWP_NOZORDER));
        EXPECT_EQ(CRect(0, 0, 10, 10), ChildRect(a)) << "nothing moves before the end";
    }
    EXPECT_EQ(CRect(10, 20, 110, 70), ChildRect(a));
    EXPECT_EQ(CRect(30, 40, 90, 110), ChildRect(b));

    MCDeferPos batch;
    EXPECT_TRUE(batch.MoveWindow(a, 5, 6, 7, 8, FALSE));
    batch.EndDeferWindowPos();
    EXPECT_EQ(CRect(5, 6, 12, 14), ChildRect(a));
    EXPECT_FALSE(batch.MoveWindow(a, 50, 60, 70, 80, TRUE));
    batch.EndDeferWindowPos();
    EXPECT_EQ(CRect(5, 6, 12, 14), ChildRect(a));

    MCDeferPos first;  // copies share the batch
    ASSERT_TRUE(first.MoveWindow(a, 3, 4, 5, 6, TRUE));
    {
        MCDeferPos second(first);
        second.EndDeferWindowPos();
    }
    EXPECT_EQ(CRect(3, 4, 8, 10), ChildRect(a));
}

TEST(DeferPos, AfterAFailedDeferEveryCallReturnsZero)
{
    TestWindow top(MakeTopWindow(0, 0, 400, 300));
    HWND a = MakeChildWindow(top, 0, 0, 10, 10), gone = MakeChildWindow(top, 0, 0, 10, 10);
    ::DestroyWindow(gone);
    {
        MCDeferPos batch(2);
        EXPECT_FALSE(batch.MoveWindow(gone, 1, 1, 1, 1, TRUE));
        EXPECT_FALSE(batch.MoveWindow(a, 10, 20, 30, 40, TRUE));
        EXPECT_FALSE(batch.SetWindowPos(a, NULL, 10, 20, 30, 40, SWP_NOZORDER));
        EXPECT_FALSE(batch.MoveWindow(static_cast<CWnd*>(NULL), CRect(1, 2, 3, 4), TRUE));
    }
    EXPECT_EQ(CRect(0, 0, 10, 10), ChildRect(a));
}
