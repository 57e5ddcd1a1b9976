#include <gtest/gtest.h>
#include <afxwin.h>
#include <stdexcept>
#include "resource.h"

namespace {

const DWORD kContinuable = 0xE0001234;
// MUIUtils::IsWindowEnabled(CWnd*, UINT), looked up by its exported (GCC) name.
typedef BOOL (*IsWindowEnabledProc)(CWnd*, UINT);
const char kIsWindowEnabled[] = "_ZN8MUIUtils15IsWindowEnabledEP4CWndj";

LONG CALLBACK ContinueOurs(EXCEPTION_POINTERS* info)
{
    return info->ExceptionRecord->ExceptionCode == kContinuable ? EXCEPTION_CONTINUE_EXECUTION
                                                                 : EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

// The library joins the framework's chain of extension modules once per load (a second
// load adds no record), leaves it on the last unload, and joins it again when loaded again;
// while on the chain, its resources are found. Unloaded, it leaves nothing of its fault
// guard behind: neither its thread slot nor its handler in the exception dispatch.
TEST(DynamicLoadTest, LibraryJoinsTheChainOnLoadAndLeavesNothingOnUnload)
{
    ASSERT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll")) << "the test program must not link the library";
    CDynLinkLibrary* const before = AfxGetFirstDynLinkLibrary();
    LPCWSTR nameBlock = MAKEINTRESOURCEW((IDS_TESVORUTIL_LIBRARY_NAME >> 4) + 1);
    auto expectOnTheChain = [&](HMODULE library) {
        CString name;
        name.LoadString(IDS_TESVORUTIL_LIBRARY_NAME);
        // Not loaded, the search falls back to the program's own resources.
        EXPECT_EQ(library ? library : AfxGetResourceHandle(), AfxFindResourceHandle(nameBlock, RT_STRING));
        EXPECT_STREQ(library ? L"TesvorUtil" : L"", name);
        CDynLinkLibrary* head = AfxGetFirstDynLinkLibrary();
        if (library == NULL) {
            EXPECT_EQ(before, head);
            return;
        }
        ASSERT_NE(nullptr, head);
        EXPECT_TRUE(head->m_hModule == library && head->m_hResource == library && !head->m_bSystem);
        EXPECT_EQ(before, head->m_pNextDLL) << "exactly one record per loaded library";
    };
    expectOnTheChain(NULL);
    DWORD nextSlot[2] = {};  // the thread slot the process would get next, with the library loaded
    for (int round = 0; round < 2; round++) {
        SCOPED_TRACE(round);
        HMODULE first = ::LoadLibraryW(L"TesvorUtil.dll");
        ASSERT_NE(nullptr, first) << ::GetLastError();
        expectOnTheChain(first);
        HMODULE second = ::LoadLibraryW(L"TesvorUtil.dll");
        expectOnTheChain(first);
        ASSERT_TRUE(::FreeLibrary(second));
        expectOnTheChain(first);  // still loaded once
        auto isWindowEnabled = reinterpret_cast<IsWindowEnabledProc>(
            reinterpret_cast<void*>(::GetProcAddress(first, kIsWindowEnabled)));
        ASSERT_NE(nullptr, isWindowEnabled);
        // A parent that is no longer there: the guard turns the fault into FALSE.
        EXPECT_FALSE(isWindowEnabled(reinterpret_cast<CWnd*>(static_cast<ULONG_PTR>(0x10)), 1));
        nextSlot[round] = ::TlsAlloc();
        ::TlsFree(nextSlot[round]);
        ASSERT_TRUE(::FreeLibrary(first));
        EXPECT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll"));
        expectOnTheChain(NULL);
    }
    EXPECT_EQ(nextSlot[0], nextSlot[1]) << "the guard's thread slot is not given back on unload";
    // A handler left behind would run, in unloaded code, on any exception.
    EXPECT_THROW(throw std::runtime_error("after unload"), std::runtime_error);
    PVOID handler = ::AddVectoredExceptionHandler(0, ContinueOurs);
    ::RaiseException(kContinuable, 0, 0, NULL);
    ::RemoveVectoredExceptionHandler(handler);
}
