// Walks over real window trees.
#include <gtest/gtest.h>
#include <vector>
#include "MCWinTreeEnumerator.h"
#include "TestWindows.h"

namespace {

// Records every window; answers with `action` at the window numbered `actAt`
// (1-based), or aborts through the enumerator at window `abortAt`.
struct RecordingCtx : MCWinTreeEnumCtx {
    RecordingCtx(HWND hRoot, MCWinTreeEnumerator* pEnumerator, int nActAt = 0,
                 MEEnumeratingAction eAction = EnumActionContinue, int nAbortAt = 0)
        : MCWinTreeEnumCtx(hRoot, 7), enumerator(pEnumerator), actAt(nActAt), abortAt(nAbortAt), action(eAction)
    {
    }
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
    int actAt, abortAt, finished = 0;
    MEEnumeratingAction action;
    BOOL busyInside = FALSE, setCtxInside = TRUE;
};

}  // namespace

TEST(WinTreeEnumerator, VisitsEveryDescendantDepthFirstUntilStopped)
{
    // root: a (a1, a2), b (b1)
    TestWindow root(MakeWindow(NULL, 0, 0, 300, 300));
    HWND a = MakeWindow(root.get(), 0, 0, 100, 100), b = MakeWindow(root.get(), 100, 0, 100, 100);
    HWND a1 = MakeWindow(a, 0, 0, 10, 10), a2 = MakeWindow(a, 10, 0, 10, 10), b1 = MakeWindow(b, 0, 0, 10, 10);
    MCWinTreeEnumerator enumerator;
    RecordingCtx ctx(root.get(), &enumerator);
    EXPECT_FALSE(enumerator.StartEnumerating()) << "no context yet";
    ASSERT_TRUE(enumerator.SetEnumCtx(&ctx));
    EXPECT_TRUE(enumerator.StartEnumerating());
    EXPECT_EQ((std::vector<HWND>{a, a1, a2, b, b1}), ctx.seen);
    EXPECT_EQ(std::vector<int>(5, 0), ctx.levels);
    EXPECT_EQ(1, ctx.finished);
    EXPECT_TRUE(ctx.busyInside);
    EXPECT_FALSE(ctx.setCtxInside) << "refused while walking";
    EXPECT_FALSE(enumerator.IsEnumerating());
    EXPECT_EQ(&ctx, enumerator.GetEnumCtx());

    // An abort, or any answer other than "continue", stops the walk unfinished.
    EXPECT_TRUE(enumerator.AbortEnumerating()) << "idle: no effect";
    const struct {
        int actAt;
        MEEnumeratingAction action;
        int abortAt;
        size_t seen;
    } stops[] = {
        {3, EnumActionAbort, 0, 3}, {2, static_cast<MEEnumeratingAction>(1), 0, 2}, {0, EnumActionContinue, 2, 2}};
    for (const auto& stop : stops) {
        RecordingCtx stopping(root.get(), &enumerator, stop.actAt, stop.action, stop.abortAt);
        ASSERT_TRUE(enumerator.SetEnumCtx(&stopping));
        EXPECT_FALSE(enumerator.StartEnumerating());
        EXPECT_FALSE(enumerator.IsEnumerating());
        EXPECT_EQ(0, stopping.finished);
        EXPECT_EQ(stop.seen, stopping.seen.size()) << "stopped at " << stop.actAt << "/" << stop.abortAt;
    }
}

TEST(WinTreeEnumerator, RootWithoutChildrenAndInvalidRoots)
{
    TestWindow lonely(MakeWindow(NULL, 0, 0, 10, 10));
    RecordingCtx ctx(lonely.get(), NULL);
    MCWinTreeEnumerator enumerator(&ctx);
    const BOOL result = enumerator.StartEnumerating();
    EXPECT_TRUE(ctx.seen.empty());
    EXPECT_EQ(result ? 1 : 0, ctx.finished) << "whether an empty walk counts as success is the system's call";
    ctx.SetEnumParams(NULL, 0);
    EXPECT_FALSE(enumerator.StartEnumerating());
    ctx.SetEnumParams(lonely.release(), 0);
    ::DestroyWindow(ctx.m_hWndRoot);
    EXPECT_FALSE(enumerator.StartEnumerating()) << "a root that is gone";

    RecordingCtx a(NULL, NULL), b(NULL, NULL);
    a.SetEnumParams(reinterpret_cast<HWND>(0x1234), 9);
    b = a;
    EXPECT_EQ(reinterpret_cast<HWND>(0x1234), b.m_hWndRoot);
    EXPECT_EQ(9, b.m_nParam);
}
