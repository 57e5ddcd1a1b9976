#include <gtest/gtest.h>
#include <functional>
#include "FrameTestResources.h"
#include "MCVLRException.h"
#include "TestApp.h"
#include "TesvorFunctions.h"

namespace {

// Runs the throw and returns what was caught as MCVLRException*; the caller
// releases it with Delete().
MCVLRException* Catch(const std::function<void()>& thrower)
{
    try {
        thrower();
    } catch (MCVLRException* e) {
        return e;
    }
    ADD_FAILURE() << "nothing thrown";
    return NULL;
}

TEST(VLRExceptionClassTest, RuntimeClassRecord)
{
    CRuntimeClass* pClass = RUNTIME_CLASS(MCVLRException);
    EXPECT_EQ(&MCVLRException::classMCVLRException, pClass);
    EXPECT_STREQ("MCVLRException", pClass->m_lpszClassName);
    EXPECT_EQ(static_cast<int>(sizeof(MCVLRException)), pClass->m_nObjectSize);
    EXPECT_EQ(0xFFFFu, pClass->m_wSchema);
    EXPECT_EQ(RUNTIME_CLASS(CException), pClass->m_pfnGetBaseClass());
    EXPECT_TRUE(pClass->IsDerivedFrom(RUNTIME_CLASS(CObject)));
}

TEST(VLRExceptionClassTest, CreateObjectBuildsTheDefault)
{
    CObject* pObject = RUNTIME_CLASS(MCVLRException)->CreateObject();
    ASSERT_NE(nullptr, pObject);
    ASSERT_TRUE(pObject->IsKindOf(RUNTIME_CLASS(MCVLRException)));
    EXPECT_EQ(RUNTIME_CLASS(MCVLRException), pObject->GetRuntimeClass());
    MCVLRException* e = static_cast<MCVLRException*>(pObject);
    EXPECT_EQ(0, e->m_nCode);
    EXPECT_EQ(E_FAIL, e->m_hResult);
    EXPECT_EQ(0u, e->m_nID);
    EXPECT_TRUE(e->m_strMessage.IsEmpty());
    EXPECT_TRUE(e->m_bAutoDelete);
    e->Delete();
}

TEST(VLRExceptionTest, ThrowHelpersKeepWhatTheirConstructorKeeps)
{
    struct Case {
        const char* name;
        std::function<void()> thrower;
        int code;
        HRESULT hr;
        UINT id;
        const wchar_t* message;
    } const cases[] = {
        {"int code is dropped", [] { MU_ThrowVLRException(5, L"x", 10); }, 0, E_FAIL, 0, L""},
        {"HRESULT", [] { MU_ThrowVLRException(static_cast<HRESULT>(0x80070005L), L"x", 10); }, 0,
         static_cast<HRESULT>(0x80070005L), 0, L""},
        {"HRESULT S_OK", [] { MU_ThrowVLRException(S_OK, NULL, 0); }, 0, S_OK, 0, L""},
        {"UINT id", [] { MU_ThrowVLRException(7u, L"x", 10); }, 0, E_FAIL, 7, L""},
        {"text", [] { MU_ThrowVLRException(L"Disk full", L"x", 10); }, 0, E_FAIL, 0, L"Disk full"},
        {"resource text", [] { MU_ThrowVLRException(MAKEINTRESOURCEW(IDS_TEST_DISK_FULL), L"x", 10); }, 0,
         E_FAIL, 0, L"Disk full (from the string table)"},
        {"missing resource", [] { MU_ThrowVLRException(MAKEINTRESOURCEW(IDS_TEST_MISSING), L"x", 10); }, 0,
         E_FAIL, 0, L""},
        {"null text", [] { MU_ThrowVLRException(static_cast<const wchar_t*>(NULL), L"x", 10); }, 0, E_FAIL, 0,
         L""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MCVLRException* e = Catch(c.thrower);
        ASSERT_NE(nullptr, e);
        EXPECT_EQ(c.code, e->m_nCode);
        EXPECT_EQ(c.hr, e->m_hResult);
        EXPECT_EQ(c.id, e->m_nID);
        EXPECT_STREQ(c.message, e->m_strMessage);
        // The message, or the (empty) COM text: never the id or the dropped code.
        EXPECT_STREQ(c.message, e->GetErrorMessage(true));
        e->Delete();
    }
}

TEST(VLRExceptionTest, CaughtThroughTheFrameworkBases)
{
    try {
        MU_ThrowVLRException(L"base", NULL, 0);
    } catch (CException* e) {
        EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(MCVLRException)));
        // The framework's own text stays in force for a catcher that knows only CException.
        wchar_t text[64] = L"unchanged";
        EXPECT_FALSE(e->GetErrorMessage(text, 64));
        EXPECT_STREQ(L"", text);
        e->Delete();
    }
    try {
        MU_ThrowVLRException(E_OUTOFMEMORY, NULL, 0);
    } catch (CObject* e) {
        ASSERT_TRUE(e->IsKindOf(RUNTIME_CLASS(MCVLRException)));
        EXPECT_EQ(E_OUTOFMEMORY, static_cast<MCVLRException*>(e)->m_hResult);
        static_cast<CException*>(e)->Delete();
    }
}

TEST(VLRExceptionTest, ErrorMessagePrefersTextThenResultThenCode)
{
    struct Case {
        const wchar_t* message;
        HRESULT hr;
        int code;
        const wchar_t* expected;
    } const cases[] = {
        {L"text", S_OK, 42, L"text"},  {L"text", E_FAIL, 42, L"text"}, {L"", E_FAIL, 42, L""},
        {L"", S_FALSE, 42, L"42"},     {L"", S_OK, -7, L"-7"},         {L"", S_OK, 0, L""},
        {L"", static_cast<HRESULT>(0x80070005L), 0, L""},
    };
    for (const Case& c : cases) {
        MCVLRException e(CString(c.message));
        e.m_hResult = c.hr;
        e.m_nCode = c.code;
        EXPECT_STREQ(c.expected, e.GetErrorMessage(false)) << c.message << " " << std::hex << c.hr << " " << c.code;
    }
}

class ReportErrorTest : public ::testing::Test {
protected:
    void SetUp() override { TheTestApp().calls.clear(); }
};

TEST_F(ReportErrorTest, ShowsTheMessageAlone)
{
    MCVLRException e(CString(L"Disk full"));
    e.m_nCode = 42;
    e.ReportError();
    ASSERT_EQ(1u, TheTestApp().calls.size());
    EXPECT_STREQ(L"Disk full", TheTestApp().calls[0].text);
    EXPECT_EQ(static_cast<UINT>(MB_OK), TheTestApp().calls[0].type);
    EXPECT_EQ(0u, TheTestApp().calls[0].helpId);
}

TEST_F(ReportErrorTest, ResultOrCodeShowsAnEmptyBox)
{
    MCVLRException fromResult(static_cast<HRESULT>(0x80070005L));
    fromResult.ReportError();
    MCVLRException fromCode(S_OK);
    fromCode.m_nCode = 42;  // GetErrorMessage would give "42"; ReportError does not ask it
    fromCode.ReportError();
    ASSERT_EQ(2u, TheTestApp().calls.size());
    EXPECT_STREQ(L"", TheTestApp().calls[0].text);
    EXPECT_STREQ(L"", TheTestApp().calls[1].text);
}

}  // namespace
