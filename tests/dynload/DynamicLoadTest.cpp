#include <gtest/gtest.h>
#include <afxwin.h>
#include "resource.h"

// The library joins the framework's chain of extension modules once per load (a second
// load adds no record), leaves it on the last unload, and joins it again when loaded again;
// while on the chain, its resources are found.
TEST(DynamicLoadTest, LibraryJoinsTheChainOnLoadAndLeavesOnUnload)
{
    ASSERT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll")) << "the test program must not link the library";
    CDynLinkLibrary* const before = AfxGetFirstDynLinkLibrary();
    LPCWSTR nameBlock = MAKEINTRESOURCEW((IDS_TESVORUTIL_LIBRARY_NAME >> 4) + 1);
    auto expectOnTheChain = [&](HMODULE library) {
        CString name;
        name.LoadString(IDS_TESVORUTIL_LIBRARY_NAME);
        CDynLinkLibrary* head = AfxGetFirstDynLinkLibrary();
        if (library == NULL) {
            EXPECT_EQ(before, head);
            // Not found: the search falls back to the program's own resources.
            EXPECT_EQ(AfxGetResourceHandle(), AfxFindResourceHandle(nameBlock, RT_STRING));
            EXPECT_STREQ(L"", name);
            return;
        }
        ASSERT_NE(nullptr, head);
        EXPECT_TRUE(head->m_hModule == library && head->m_hResource == library && !head->m_bSystem);
        EXPECT_EQ(before, head->m_pNextDLL) << "exactly one record per loaded library";
        EXPECT_EQ(library, AfxFindResourceHandle(nameBlock, RT_STRING));
        EXPECT_STREQ(L"TesvorUtil", name);
    };
    expectOnTheChain(NULL);
    for (int round = 0; round < 2; round++) {
        SCOPED_TRACE(round);
        HMODULE first = ::LoadLibraryW(L"TesvorUtil.dll");
        ASSERT_NE(nullptr, first) << ::GetLastError();
        expectOnTheChain(first);
        HMODULE second = ::LoadLibraryW(L"TesvorUtil.dll");
        EXPECT_EQ(first, second);
        expectOnTheChain(first);
        ASSERT_TRUE(::FreeLibrary(second));
        expectOnTheChain(first);  // still loaded once
        ASSERT_TRUE(::FreeLibrary(first));
        EXPECT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll"));
        expectOnTheChain(NULL);
    }
}
