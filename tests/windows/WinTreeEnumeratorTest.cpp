// Walks over real window trees.
#include <gtest/gtest.h>
#include <vector>
#include "MCWinTreeEnumerator.h"
#include "TestWindows.h"

namespace {

// Records every window; answers with `action` at the window numbered `actAt`
// (1-based), or aborts through the enumerator at window `abortAt`.
struct RecordingCtx : MCWinTreeEnumCtx {
    RecordingCtx(HWND hRoot, MCWinTreeEnumerator* pEnumerator) : MCWinTreeEnumCtx(hRoot, 7), enumerator(pEnumerator) {}
    MEEnumeratingAction OnWindowFound(HWND hWnd, int nLevel) override
    {
        seen.push_back(hWnd);
        levels.push_back(nLevel);
        if (enumerator != NULL) {
            busyInside = enumerator->IsEnumerating();
            setCtxInside = enumerator->SetEnumCtx(NULL);
            if (static_cast<int>(seen.size()) == abortAt)
                enumerator->AbortEnumerating();
        }
        return static_cast<int>(seen.size()) == actAt ? action : EnumActionContinue;
    }
    void OnEnumeratingFinished() override { ++finished; }

    MCWinTreeEnumerator* enumerator;
    std::vector<HWND> seen;
    std::vector<int> levels;
    int actAt = 0, abortAt = 0, finished = 0;
    MEEnumeratingAction action = EnumActionContinue;
    BOOL busyInside = FALSE, setCtxInside = TRUE;
};

// root: a (a1, a2), b (b1)
struct Tree {
    TestWindow root{MakeTopWindow(0, 0, 300, 300)};
    HWND a = MakeChildWindow(root, 0, 0, 100, 100);
    HWND a1 = MakeChildWindow(a, 0, 0, 10, 10);
    HWND a2 = MakeChildWindow(a, 10, 0, 10, 10);
    HWND b = MakeChildWindow(root, 100, 0, 100, 100);
    HWND b1 = MakeChildWindow(b, 0, 0, 10, 10);
};

}  // namespace

TEST(WinTreeEnumerator, VisitsEveryDescendantDepthFirstUntilStopped)
{
    Tree tree;
    MCWinTreeEnumerator enumerator;
    RecordingCtx ctx(tree.root, &enumerator);
    EXPECT_FALSE(enumerator.StartEnumerating()) << "no context yet";
    ASSERT_TRUE(enumerator.SetEnumCtx(&ctx));
    EXPECT_EQ(&ctx, enumerator.GetEnumCtx());
    EXPECT_TRUE(enumerator.StartEnumerating());
    EXPECT_EQ((std::vector<HWND>{tree.a, tree.a1, tree.a2, tree.b, tree.b1}), ctx.seen);
    EXPECT_EQ(std::vector<int>(5, 0), ctx.levels);
    EXPECT_EQ(1, ctx.finished);
    EXPECT_TRUE(ctx.busyInside);
    EXPECT_FALSE(ctx.setCtxInside) << "refused while walking";
    EXPECT_FALSE(enumerator.IsEnumerating());
    EXPECT_EQ(&ctx, enumerator.GetEnumCtx());

    // An abort, or any answer other than "continue", stops the walk unfinished.
    RecordingCtx aborting(tree.root, nullptr), other(tree.root, nullptr), fromInside(tree.root, &enumerator);
    aborting.actAt = 3;
    aborting.action = EnumActionAbort;
    other.actAt = 2;
    other.action = static_cast<MEEnumeratingAction>(1);
    fromInside.abortAt = 2;
    EXPECT_TRUE(enumerator.AbortEnumerating()) << "idle: no effect";
    for (RecordingCtx* ctx : {&aborting, &other, &fromInside}) {
        ASSERT_TRUE(enumerator.SetEnumCtx(ctx));
        EXPECT_FALSE(enumerator.StartEnumerating());
        EXPECT_FALSE(enumerator.IsEnumerating());
        EXPECT_EQ(0, ctx->finished);
    }
    EXPECT_EQ(3u, aborting.seen.size());
    EXPECT_EQ(2u, other.seen.size());
    EXPECT_EQ(2u, fromInside.seen.size());
}

TEST(WinTreeEnumerator, RootWithoutChildrenAndInvalidRoots)
{
    TestWindow lonely(MakeTopWindow(0, 0, 10, 10));
    RecordingCtx ctx(lonely, NULL);
    MCWinTreeEnumerator enumerator(&ctx);
    const BOOL result = enumerator.StartEnumerating();
    EXPECT_TRUE(ctx.seen.empty());
    EXPECT_EQ(result ? 1 : 0, ctx.finished) << "whether an empty walk counts as success is the system's call";
    ctx.SetEnumParams(NULL, 0);
    EXPECT_FALSE(enumerator.StartEnumerating());
    HWND gone = MakeTopWindow(0, 0, 10, 10);
    ::DestroyWindow(gone);
    ctx.SetEnumParams(gone, 0);
    EXPECT_FALSE(enumerator.StartEnumerating());

    RecordingCtx a(reinterpret_cast<HWND>(0x1234), NULL), b(NULL, NULL);
    b = a;
    EXPECT_EQ(reinterpret_cast<HWND>(0x1234), b.m_hWndRoot);
    EXPECT_EQ(7, b.m_nParam);
    EXPECT_EQ(EnumActionContinue, b.OnSubTreeEnumBegin(NULL, 0));
    EXPECT_EQ(EnumActionContinue, b.OnSubTreeEnumFinish(NULL, 0));
}
