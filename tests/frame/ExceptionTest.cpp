// The error record, the exception class and its throw helpers.
#include <afxwin.h>
#include <gtest/gtest.h>
#include <functional>
#include <type_traits>
#include <vector>
#include "FrameTestResources.h"
#include "MCError.h"
#include "MCVLRException.h"
#include "TestSupport.h"
#include "TesvorFunctions.h"

static_assert(std::has_virtual_destructor<MCError>::value, "readers are destroyed through their error record");

namespace {

struct MessageBoxCall {
    CString text;
    UINT type;
    UINT helpId;
};

// The test program's application object: it records framework message boxes
// instead of showing them (a real one would wait for a click forever).
class TestApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt) override
    {
        calls.push_back({CString(lpszPrompt), nType, nIDPrompt});
        return IDOK;
    }
    std::vector<MessageBoxCall> calls;
} theApp;

TEST(VLRExceptionClassTest, RuntimeClassRecordAndDefaultObject)
{
    CRuntimeClass* pClass = RUNTIME_CLASS(MCVLRException);
    EXPECT_STREQ("MCVLRException", pClass->m_lpszClassName);
    EXPECT_EQ((Values{sizeof(MCVLRException), 0xFFFF}), (Values{pClass->m_nObjectSize, pClass->m_wSchema}));
    EXPECT_EQ(RUNTIME_CLASS(CException), pClass->m_pfnGetBaseClass());

    CObject* pObject = pClass->CreateObject();
    ASSERT_TRUE(pObject != nullptr && pObject->IsKindOf(pClass));
    MCVLRException* e = static_cast<MCVLRException*>(pObject);
    EXPECT_EQ((Values{0, E_FAIL, 0, 0, TRUE}),
              (Values{e->m_nCode, e->m_hResult, e->m_nID, e->m_strMessage.GetLength(), e->m_bAutoDelete}));
    e->Delete();
}

TEST(VLRExceptionTest, ThrowHelpersKeepWhatTheirConstructorKeepsAndAreCaughtAsFrameworkExceptions)
{
    struct Case {
        std::function<void()> thrower;
        HRESULT hr;
        UINT id;
        const wchar_t* message;
    } const cases[] = {
        {[] { MU_ThrowVLRException(5, L"x", 10); }, E_FAIL, 0, L""},  // the int code is dropped
        {[] { MU_ThrowVLRException(static_cast<HRESULT>(0x80070005L), L"x", 10); }, static_cast<HRESULT>(0x80070005L), 0, L""},
        {[] { MU_ThrowVLRException(S_OK, NULL, 0); }, S_OK, 0, L""},
        {[] { MU_ThrowVLRException(7u, L"x", 10); }, E_FAIL, 7, L""},
        {[] { MU_ThrowVLRException(L"Disk full", L"x", 10); }, E_FAIL, 0, L"Disk full"},
        {[] { MU_ThrowVLRException(MAKEINTRESOURCEW(IDS_TEST_DISK_FULL), L"x", 10); }, E_FAIL, 0,
         L"Disk full (from the string table)"},
        {[] { MU_ThrowVLRException(MAKEINTRESOURCEW(IDS_TEST_MISSING), L"x", 10); }, E_FAIL, 0, L""},
        {[] { MU_ThrowVLRException(static_cast<const wchar_t*>(NULL), L"x", 10); }, E_FAIL, 0, L""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases);
        try {
            c.thrower();
            ADD_FAILURE() << "nothing thrown";
        } catch (CException* base) {
            ASSERT_TRUE(base->IsKindOf(RUNTIME_CLASS(MCVLRException)));
            MCVLRException* e = static_cast<MCVLRException*>(base);
            EXPECT_EQ((Values{0, c.hr, c.id}), (Values{e->m_nCode, e->m_hResult, e->m_nID}));
            EXPECT_STREQ(c.message, e->m_strMessage);
            EXPECT_STREQ(c.message, e->GetErrorMessage(true));  // never the id or the dropped code
            // A catcher that knows only CException gets the framework's own (empty) text.
            wchar_t text[64] = L"unchanged";
            EXPECT_FALSE(base->GetErrorMessage(text, 64));
            EXPECT_STREQ(L"", text);
            e->Delete();
        }
    }
}

// ReportError shows the text alone: where GetErrorMessage gives a result's or a code's
// text, the message box is empty.
TEST(VLRExceptionTest, ErrorMessagePrefersTextThenResultThenCodeAndReportErrorShowsTheTextAlone)
{
    struct Case {
        const wchar_t* message;
        HRESULT hr;
        int code;
        const wchar_t* expected;
    } const cases[] = {
        {L"text", S_OK, 42, L"text"}, {L"text", E_FAIL, 42, L"text"}, {L"", E_FAIL, 42, L""},
        {L"", S_FALSE, 42, L"42"},    {L"", S_OK, -7, L"-7"},         {L"", S_OK, 0, L""},
        {L"", static_cast<HRESULT>(0x80070005L), 0, L""},  // no system text is looked up
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases);
        MCVLRException e(CString(c.message));
        e.m_hResult = c.hr;
        e.m_nCode = c.code;
        EXPECT_STREQ(c.expected, e.GetErrorMessage(false));
        theApp.calls.clear();
        e.ReportError();
        ASSERT_EQ(1u, theApp.calls.size());
        const MessageBoxCall& call = theApp.calls[0];
        EXPECT_EQ((Values{MB_OK, 0}), (Values{call.type, call.helpId}));
        EXPECT_STREQ(c.message, call.text);
    }
}

}  // namespace
