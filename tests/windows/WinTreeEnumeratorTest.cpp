#include <gtest/gtest.h>
#include <vector>
#include "MCWinTreeEnumerator.h"
#include "TestWindows.h"

namespace {

// Records every window; answers with `action` at the window numbered `actAt` (1-based).
struct RecordingCtx : MCWinTreeEnumCtx {
    RecordingCtx(HWND hRoot, MCWinTreeEnumerator* pEnumerator) : MCWinTreeEnumCtx(hRoot, 7), enumerator(pEnumerator) {}
    MEEnumeratingAction OnWindowFound(HWND hWnd, int nLevel) override
    {
        seen.push_back(hWnd);
        levels.push_back(nLevel);
        if (enumerator != NULL) {
            busyInside = enumerator->IsEnumerating();
            setCtxInside = enumerator->SetEnumCtx(NULL);
        }
        return static_cast<int>(seen.size()) == actAt ? action : EnumActionContinue;
    }
    void OnEnumeratingFinished() override { ++finished; }

    MCWinTreeEnumerator* enumerator;
    std::vector<HWND> seen;
    std::vector<int> levels;
    int actAt = 0;
    MEEnumeratingAction action = EnumActionContinue;
    int finished = 0;
    BOOL busyInside = FALSE;
    BOOL setCtxInside = TRUE;
};

// root
//   a
//     a1
//     a2
//   b
//     b1
struct Tree {
    TestWindow root{MakeTopWindow(0, 0, 300, 300)};
    HWND a = MakeChildWindow(root, 0, 0, 100, 100);
    HWND a1 = MakeChildWindow(a, 0, 0, 10, 10);
    HWND a2 = MakeChildWindow(a, 10, 0, 10, 10);
    HWND b = MakeChildWindow(root, 100, 0, 100, 100);
    HWND b1 = MakeChildWindow(b, 0, 0, 10, 10);
};

}  // namespace

TEST(WinTreeEnumerator, VisitsEveryDescendantDepthFirst)
{
    Tree tree;
    MCWinTreeEnumerator enumerator;
    RecordingCtx ctx(tree.root, &enumerator);
    EXPECT_FALSE(enumerator.StartEnumerating());  // no context yet
    ASSERT_TRUE(enumerator.SetEnumCtx(&ctx));
    EXPECT_EQ(&ctx, enumerator.GetEnumCtx());

    EXPECT_TRUE(enumerator.StartEnumerating());
    std::vector<HWND> expected = {tree.a, tree.a1, tree.a2, tree.b, tree.b1};
    EXPECT_EQ(expected, ctx.seen);
    EXPECT_EQ(std::vector<int>(5, 0), ctx.levels);
    EXPECT_EQ(1, ctx.finished);
    EXPECT_TRUE(ctx.busyInside);
    EXPECT_FALSE(ctx.setCtxInside);  // refused while walking
    EXPECT_FALSE(enumerator.IsEnumerating());
    EXPECT_EQ(&ctx, enumerator.GetEnumCtx());
}

TEST(WinTreeEnumerator, AbortOnTheThirdWindow)
{
    Tree tree;
    RecordingCtx ctx(tree.root, NULL);
    ctx.actAt = 3;
    ctx.action = EnumActionAbort;
    MCWinTreeEnumerator enumerator(&ctx);
    EXPECT_FALSE(enumerator.StartEnumerating());
    EXPECT_EQ(3u, ctx.seen.size());
    EXPECT_EQ(0, ctx.finished);
    EXPECT_FALSE(enumerator.IsEnumerating());
    EXPECT_TRUE(enumerator.SetEnumCtx(&ctx));

    // Any other answer stops the walk as well.
    RecordingCtx other(tree.root, NULL);
    other.actAt = 2;
    other.action = static_cast<MEEnumeratingAction>(1);
    enumerator.SetEnumCtx(&other);
    EXPECT_FALSE(enumerator.StartEnumerating());
    EXPECT_EQ(2u, other.seen.size());
}

TEST(WinTreeEnumerator, AbortEnumeratingFromInsideACallback)
{
    struct AbortingCtx : MCWinTreeEnumCtx {
        MCWinTreeEnumerator* enumerator = NULL;
        int calls = 0;
        MEEnumeratingAction OnWindowFound(HWND, int) override
        {
            if (++calls == 2)
                enumerator->AbortEnumerating();
            return EnumActionContinue;
        }
    };
    Tree tree;
    AbortingCtx ctx;
    ctx.SetEnumParams(tree.root, 0);
    MCWinTreeEnumerator enumerator(&ctx);
    ctx.enumerator = &enumerator;
    EXPECT_TRUE(enumerator.AbortEnumerating());  // idle: no effect
    EXPECT_FALSE(enumerator.StartEnumerating());
    EXPECT_EQ(2, ctx.calls);
}

TEST(WinTreeEnumerator, RootWithoutChildrenAndInvalidRoots)
{
    TestWindow lonely(MakeTopWindow(0, 0, 10, 10));
    RecordingCtx ctx(lonely, NULL);
    MCWinTreeEnumerator enumerator(&ctx);
    BOOL result = enumerator.StartEnumerating();
    EXPECT_TRUE(ctx.seen.empty());
    // Whether an empty walk counts as success is the system's call.
    EXPECT_EQ(result ? 1 : 0, ctx.finished);

    ctx.SetEnumParams(NULL, 0);
    EXPECT_FALSE(enumerator.StartEnumerating());
    HWND gone = MakeTopWindow(0, 0, 10, 10);
    ::DestroyWindow(gone);
    ctx.SetEnumParams(gone, 0);
    EXPECT_FALSE(enumerator.StartEnumerating());
}

TEST(WinTreeEnumCtx, CopyKeepsRootAndParameter)
{
    RecordingCtx a(reinterpret_cast<HWND>(0x1234), NULL);
    RecordingCtx b(NULL, NULL);
    b = a;
    EXPECT_EQ(reinterpret_cast<HWND>(0x1234), b.m_hWndRoot);
    EXPECT_EQ(7, b.m_nParam);
    EXPECT_EQ(EnumActionContinue, b.OnSubTreeEnumBegin(NULL, 0));
    EXPECT_EQ(EnumActionContinue, b.OnSubTreeEnumFinish(NULL, 0));
}
