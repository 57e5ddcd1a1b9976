// afxlite's run-time classes and exceptions.
#include <gtest/gtest.h>
#include <afxwin.h>
#include <vector>
#include "TestSupport.h"

namespace {

class CTestShape : public CObject {
    DECLARE_DYNAMIC(CTestShape)
};

class CTestTriangle : public CTestShape {
    DECLARE_DYNAMIC(CTestTriangle)
};

}  // namespace

IMPLEMENT_DYNAMIC(CTestShape, CObject)
IMPLEMENT_DYNAMIC(CTestTriangle, CTestShape)

namespace {

// The class record and creation of a creatable class: VLRExceptionClassTest.RuntimeClassRecordAndDefaultObject.
TEST(RuntimeClassTest, KindsFollowTheBaseChain)
{
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CObject)->m_pfnGetBaseClass());
    CTestTriangle triangle;
    EXPECT_EQ((Values{1, 1, 1, 0, 0, 0, 0}),  // neither class is serializable or creatable
              (Values{triangle.IsKindOf(RUNTIME_CLASS(CTestTriangle)), triangle.IsKindOf(RUNTIME_CLASS(CTestShape)),
                      triangle.IsKindOf(RUNTIME_CLASS(CObject)), triangle.IsKindOf(RUNTIME_CLASS(CException)),
                      triangle.IsSerializable(), RUNTIME_CLASS(CTestTriangle)->CreateObject() != nullptr,
                      RUNTIME_CLASS(CException)->CreateObject() != nullptr}));
}

int g_destroyed = 0;

class CCountedException : public CException {
public:
    explicit CCountedException(BOOL bAutoDelete = TRUE) : CException(bAutoDelete) {}
    ~CCountedException() override { g_destroyed++; }
};

// What each helper throws and what it stands for as an SCODE; thrown exceptions delete
// themselves, except the memory exception: one static object that outlives Delete.
TEST(ExceptionTest, ThrowHelpersResultsAndDeletion)
{
    struct Case {
        void (*thrower)();
        CRuntimeClass* pClass;
        SCODE sc;
    } const cases[] = {
        {[] { throw new CCountedException; }, RUNTIME_CLASS(CException), E_UNEXPECTED},
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), E_OUTOFMEMORY},
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), E_OUTOFMEMORY},
        {[] { AfxThrowInvalidArgException(); }, RUNTIME_CLASS(CInvalidArgException), E_INVALIDARG},
        {[] { AfxThrowNotSupportedException(); }, RUNTIME_CLASS(CNotSupportedException), E_NOTIMPL},
        {[] { AfxThrowOleException(E_POINTER); }, RUNTIME_CLASS(COleException), E_POINTER},
        {[] { AfxThrowFileException(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, L"a.txt"); },
         RUNTIME_CLASS(CFileException), E_UNEXPECTED},
    };
    g_destroyed = 0;
    std::vector<CException*> memoryExceptions;
    for (const Case& c : cases) {
        try {
            c.thrower();
            ADD_FAILURE() << "nothing thrown by " << c.pClass->m_lpszClassName;
        } catch (CException* e) {
            const bool memory = c.pClass == RUNTIME_CLASS(CMemoryException);
            EXPECT_EQ(c.pClass, e->GetRuntimeClass());
            EXPECT_EQ(c.sc, COleException::Process(e)) << c.pClass->m_lpszClassName;
            EXPECT_EQ(!memory, e->m_bAutoDelete != FALSE) << c.pClass->m_lpszClassName;
            e->Delete();
            if (memory)
                memoryExceptions.push_back(e);
        }
    }
    EXPECT_EQ(1, g_destroyed);
    ASSERT_EQ(2u, memoryExceptions.size());
    EXPECT_EQ(memoryExceptions[0], memoryExceptions[1]);
    wchar_t text[64];
    EXPECT_TRUE(memoryExceptions[1]->GetErrorMessage(text, 64));
    EXPECT_STREQ(L"Out of memory.", text);
    CCountedException onTheStack(FALSE);
    onTheStack.Delete();
    EXPECT_EQ(1, g_destroyed);  // not auto-delete: survives the call

    CFileException e(CFileException::accessDenied, ERROR_ACCESS_DENIED, L"C:\\x.dat");
    EXPECT_TRUE(e.GetErrorMessage(text, 64));
    EXPECT_STREQ(L"Access to C:\\x.dat was denied.", text);
    EXPECT_EQ(CFileException::sharingViolation, CFileException::OsErrorToException(ERROR_SHARING_VIOLATION));
}

}  // namespace
