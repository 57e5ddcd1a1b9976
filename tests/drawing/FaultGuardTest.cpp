// The library's fault guard: machine faults end the guarded call, nothing else does.
#include <gtest/gtest.h>
#include <stdexcept>
#include "frame/FaultGuard.h"

namespace {

int* volatile g_nowhere = nullptr;
volatile int g_zero = 0;

DWORD WINAPI FaultOnOtherThread(LPVOID)
{
    return RunWithFaultGuard([] { *g_nowhere = 3; }) ? 1 : 0;
}

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

    // Nested, repeated, and on another thread.
    bool innerResult = true, afterInner = false;
    EXPECT_TRUE(RunWithFaultGuard([&] {
        innerResult = RunWithFaultGuard([] { *g_nowhere = 1; });
        afterInner = true;
    }));
    EXPECT_FALSE(innerResult);
    EXPECT_TRUE(afterInner);
    for (int i = 0; i < 100; ++i)
        ASSERT_FALSE(RunWithFaultGuard([] { *g_nowhere = 2; }));

    HANDLE hThread = ::CreateThread(NULL, 0, FaultOnOtherThread, NULL, 0, NULL);
    ASSERT_NE(hThread, nullptr);
    ::WaitForSingleObject(hThread, INFINITE);
    DWORD exitCode = 2;
    ::GetExitCodeThread(hThread, &exitCode);
    ::CloseHandle(hThread);
    EXPECT_EQ(exitCode, 0u);
}

}  // namespace
