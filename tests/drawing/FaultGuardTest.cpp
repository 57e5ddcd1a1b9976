// The library's fault guard: machine faults end the guarded call, nothing else does.
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include "frame/FaultGuard.h"

namespace {

int* volatile g_nowhere = nullptr;
volatile int g_zero = 0;

TEST(FaultGuard, CatchesMachineFaultsAnywhereAndReportsThem)
{
    DWORD code = 1;
    bool reached = false;
    EXPECT_FALSE(RunWithFaultGuard([&] { *g_nowhere = 42; reached = true; }, &code));
    EXPECT_FALSE(reached);
    EXPECT_EQ(code, static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION));
    EXPECT_FALSE(RunWithFaultGuard([&] { reached = (10 / g_zero) == 1; }, &code));
    EXPECT_EQ(code, static_cast<DWORD>(EXCEPTION_INT_DIVIDE_BY_ZERO));

    int sum = 0;
    EXPECT_TRUE(RunWithFaultGuard([&] { for (int i = 1; i <= 4; ++i) sum += i; }, &code));
    EXPECT_EQ(sum, 10);
    EXPECT_EQ(code, 0u);
    // C++ exceptions are not machine faults: they pass through to the caller.
    EXPECT_THROW(RunWithFaultGuard([] { throw std::runtime_error("x"); }), std::runtime_error);
    EXPECT_TRUE(::IsBadReadPtr(g_nowhere, 4)) << "outside a guard, system code still handles its own faults";

    // Nested (the outer guard still holds after the inner one), and on another thread.
    bool innerResult = true, afterInner = false;
    EXPECT_FALSE(RunWithFaultGuard([&] {
        innerResult = RunWithFaultGuard([] { *g_nowhere = 1; });
        afterInner = true;
        *g_nowhere = 4;
    }));
    EXPECT_FALSE(innerResult);
    EXPECT_TRUE(afterInner);

    bool otherThreadResult = true;
    std::thread([&] { otherThreadResult = RunWithFaultGuard([] { *g_nowhere = 3; }); }).join();
    EXPECT_FALSE(otherThreadResult);
}

}  // namespace
