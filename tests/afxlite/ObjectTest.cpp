// afxlite's run-time classes and exceptions.
#include <gtest/gtest.h>
#include <afxwin.h>

namespace {

class CTestShape : public CObject {
    DECLARE_DYNCREATE(CTestShape)
public:
    int m_nSides = 4;
};

class CTestTriangle : public CTestShape {
    DECLARE_DYNAMIC(CTestTriangle)
};

}  // namespace

IMPLEMENT_DYNCREATE(CTestShape, CObject)
IMPLEMENT_DYNAMIC(CTestTriangle, CTestShape)

namespace {

TEST(RuntimeClassTest, RecordsBaseChainsAndCreation)
{
    CRuntimeClass* pClass = RUNTIME_CLASS(CTestShape);
    EXPECT_STREQ("CTestShape", pClass->m_lpszClassName);
    EXPECT_EQ(static_cast<int>(sizeof(CTestShape)), pClass->m_nObjectSize);
    EXPECT_EQ(0xFFFFu, pClass->m_wSchema);
    EXPECT_EQ(RUNTIME_CLASS(CObject), pClass->m_pfnGetBaseClass());
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CObject)->m_pfnGetBaseClass());

    CTestTriangle triangle;
    CMemoryException memory(FALSE);
    struct Case {
        const CObject& object;
        CRuntimeClass* pClass;
        bool kind;
    } const cases[] = {
        {triangle, RUNTIME_CLASS(CTestTriangle), true}, {triangle, RUNTIME_CLASS(CTestShape), true},
        {triangle, RUNTIME_CLASS(CObject), true},       {triangle, RUNTIME_CLASS(CException), false},
        {memory, RUNTIME_CLASS(CSimpleException), true}, {memory, RUNTIME_CLASS(CException), true},
        {memory, RUNTIME_CLASS(COleException), false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.kind, c.object.IsKindOf(c.pClass) != FALSE) << c.pClass->m_lpszClassName;
    EXPECT_FALSE(triangle.IsSerializable());
    EXPECT_EQ(RUNTIME_CLASS(CMemoryException), memory.GetRuntimeClass());

    CObject* pObject = pClass->CreateObject();
    ASSERT_NE(nullptr, pObject);
    EXPECT_EQ(pClass, pObject->GetRuntimeClass());
    EXPECT_EQ(4, static_cast<CTestShape*>(pObject)->m_nSides);
    delete pObject;
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CTestTriangle)->CreateObject());  // not creatable
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CException)->CreateObject());
}

int g_destroyed = 0;

class CCountedException : public CException {
public:
    explicit CCountedException(BOOL bAutoDelete = TRUE) : CException(bAutoDelete) {}
    ~CCountedException() override { g_destroyed++; }
};

TEST(ExceptionDeleteTest, HeapExceptionsDeleteThemselvesTheMemoryExceptionNever)
{
    g_destroyed = 0;
    try {
        throw new CCountedException;
    } catch (CException* e) {
        EXPECT_TRUE(e->m_bAutoDelete);
        e->Delete();
    }
    EXPECT_EQ(1, g_destroyed);
    CCountedException onTheStack(FALSE);
    onTheStack.Delete();
    EXPECT_EQ(1, g_destroyed);  // not auto-delete: survives the call

    CException* caught[2] = {};
    for (CException*& e : caught) {
        try {
            AfxThrowMemoryException();
        } catch (CException* thrown) {
            e = thrown;
            EXPECT_FALSE(thrown->m_bAutoDelete);
            thrown->Delete();
        }
    }
    EXPECT_EQ(caught[0], caught[1]);  // one static object, still alive after Delete
    wchar_t text[64];
    EXPECT_TRUE(caught[1]->GetErrorMessage(text, 64));
    EXPECT_STREQ(L"Out of memory.", text);
}

TEST(ExceptionTest, ThrowHelpersAndTheirResults)
{
    struct Case {
        void (*thrower)();
        CRuntimeClass* pClass;
        SCODE sc;
    } const cases[] = {
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), E_OUTOFMEMORY},
        {[] { AfxThrowInvalidArgException(); }, RUNTIME_CLASS(CInvalidArgException), E_INVALIDARG},
        {[] { AfxThrowNotSupportedException(); }, RUNTIME_CLASS(CNotSupportedException), E_NOTIMPL},
        {[] { AfxThrowOleException(E_POINTER); }, RUNTIME_CLASS(COleException), E_POINTER},
        {[] { AfxThrowFileException(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, L"a.txt"); },
         RUNTIME_CLASS(CFileException), E_UNEXPECTED},
    };
    for (const Case& c : cases) {
        try {
            c.thrower();
            ADD_FAILURE() << "nothing thrown by " << c.pClass->m_lpszClassName;
        } catch (CException* e) {
            EXPECT_EQ(c.pClass, e->GetRuntimeClass());
            EXPECT_EQ(c.sc, COleException::Process(e)) << c.pClass->m_lpszClassName;
            e->Delete();
        }
    }
    CFileException e(CFileException::accessDenied, ERROR_ACCESS_DENIED, L"C:\\x.dat");
    wchar_t text[128];
    EXPECT_TRUE(e.GetErrorMessage(text, 128));
    EXPECT_STREQ(L"Access to C:\\x.dat was denied.", text);
    EXPECT_EQ(CFileException::sharingViolation, CFileException::OsErrorToException(ERROR_SHARING_VIOLATION));
}

}  // namespace
