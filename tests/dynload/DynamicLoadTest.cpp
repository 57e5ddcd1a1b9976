#include <gtest/gtest.h>
#include <afxwin.h>
#include "resource.h"

namespace {

// The string-table block that holds the library's name.
LPCWSTR LibraryNameBlock() { return MAKEINTRESOURCEW((IDS_TESVORUTIL_LIBRARY_NAME >> 4) + 1); }

CString LibraryName()
{
    CString name;
    name.LoadString(IDS_TESVORUTIL_LIBRARY_NAME);
    return name;
}

class DynamicLoadTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll")) << "the test program must not link the library";
        chainBefore_ = AfxGetFirstDynLinkLibrary();
    }

    void ExpectLibraryOffTheChain()
    {
        EXPECT_EQ(chainBefore_, AfxGetFirstDynLinkLibrary());
        // Not found: the search falls back to the program's own resources.
        EXPECT_EQ(AfxGetResourceHandle(), AfxFindResourceHandle(LibraryNameBlock(), RT_STRING));
        EXPECT_STREQ(L"", LibraryName());
    }

    void ExpectLibraryOnTheChain(HMODULE hLibrary)
    {
        CDynLinkLibrary* pHead = AfxGetFirstDynLinkLibrary();
        ASSERT_NE(nullptr, pHead);
        EXPECT_EQ(hLibrary, pHead->m_hModule);
        EXPECT_EQ(hLibrary, pHead->m_hResource);
        EXPECT_FALSE(pHead->m_bSystem);
        EXPECT_EQ(chainBefore_, pHead->m_pNextDLL) << "exactly one record per loaded library";
        EXPECT_EQ(hLibrary, AfxFindResourceHandle(LibraryNameBlock(), RT_STRING));
        EXPECT_STREQ(L"TesvorUtil", LibraryName());
    }

    CDynLinkLibrary* chainBefore_ = NULL;
};

TEST_F(DynamicLoadTest, LibraryJoinsTheChainOnLoadAndLeavesOnUnload)
{
    ExpectLibraryOffTheChain();

    HMODULE hLibrary = ::LoadLibraryW(L"TesvorUtil.dll");
    ASSERT_NE(nullptr, hLibrary) << ::GetLastError();
    ExpectLibraryOnTheChain(hLibrary);

    ASSERT_TRUE(::FreeLibrary(hLibrary));
    EXPECT_EQ(nullptr, ::GetModuleHandleW(L"TesvorUtil.dll"));
    ExpectLibraryOffTheChain();
}

TEST_F(DynamicLoadTest, ASecondLoadAddsNoSecondRecord)
{
    HMODULE hFirst = ::LoadLibraryW(L"TesvorUtil.dll");
    ASSERT_NE(nullptr, hFirst);
    HMODULE hSecond = ::LoadLibraryW(L"TesvorUtil.dll");
    EXPECT_EQ(hFirst, hSecond);
    ExpectLibraryOnTheChain(hFirst);

    ASSERT_TRUE(::FreeLibrary(hSecond));
    ExpectLibraryOnTheChain(hFirst);  // still loaded once

    ASSERT_TRUE(::FreeLibrary(hFirst));
    ExpectLibraryOffTheChain();
}

TEST_F(DynamicLoadTest, LoadsAgainAfterAnUnload)
{
    for (int round = 0; round < 2; round++) {
        SCOPED_TRACE(round);
        HMODULE hLibrary = ::LoadLibraryW(L"TesvorUtil.dll");
        ASSERT_NE(nullptr, hLibrary);
        ExpectLibraryOnTheChain(hLibrary);
        ASSERT_TRUE(::FreeLibrary(hLibrary));
        ExpectLibraryOffTheChain();
    }
}

}  // namespace
