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

TEST(RuntimeClassTest, RecordsNameSizeSchemaAndBase)
{
    CRuntimeClass* pClass = RUNTIME_CLASS(CTestShape);
    EXPECT_STREQ("CTestShape", pClass->m_lpszClassName);
    EXPECT_EQ(static_cast<int>(sizeof(CTestShape)), pClass->m_nObjectSize);
    EXPECT_EQ(0xFFFFu, pClass->m_wSchema);
    EXPECT_EQ(RUNTIME_CLASS(CObject), pClass->m_pfnGetBaseClass());
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CObject)->m_pfnGetBaseClass());
}

TEST(RuntimeClassTest, IsKindOfFollowsTheBaseChain)
{
    CTestTriangle triangle;
    EXPECT_TRUE(triangle.IsKindOf(RUNTIME_CLASS(CTestTriangle)));
    EXPECT_TRUE(triangle.IsKindOf(RUNTIME_CLASS(CTestShape)));
    EXPECT_TRUE(triangle.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(triangle.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_FALSE(triangle.IsSerializable());

    CMemoryException memory(FALSE);
    EXPECT_TRUE(memory.IsKindOf(RUNTIME_CLASS(CSimpleException)));
    EXPECT_TRUE(memory.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_FALSE(memory.IsKindOf(RUNTIME_CLASS(COleException)));
    EXPECT_EQ(RUNTIME_CLASS(CMemoryException), memory.GetRuntimeClass());
}

TEST(RuntimeClassTest, CreateObjectOnlyForCreatableClasses)
{
    CObject* pObject = RUNTIME_CLASS(CTestShape)->CreateObject();
    ASSERT_NE(nullptr, pObject);
    EXPECT_EQ(RUNTIME_CLASS(CTestShape), pObject->GetRuntimeClass());
    EXPECT_EQ(4, static_cast<CTestShape*>(pObject)->m_nSides);
    delete pObject;

    EXPECT_EQ(nullptr, RUNTIME_CLASS(CTestTriangle)->CreateObject());
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CException)->CreateObject());
}

int g_destroyed = 0;

class CCountedException : public CException {
public:
    explicit CCountedException(BOOL bAutoDelete = TRUE) : CException(bAutoDelete) {}
    ~CCountedException() override { g_destroyed++; }
};

TEST(ExceptionDeleteTest, HeapExceptionsDeleteThemselves)
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
}

TEST(ExceptionDeleteTest, MemoryExceptionIsOneStaticObject)
{
    CException* pFirst = NULL;
    CException* pSecond = NULL;
    try {
        AfxThrowMemoryException();
    } catch (CException* e) {
        pFirst = e;
        EXPECT_FALSE(e->m_bAutoDelete);
        e->Delete();
    }
    try {
        AfxThrowMemoryException();
    } catch (CMemoryException* e) {
        pSecond = e;
        wchar_t text[64];
        EXPECT_TRUE(e->GetErrorMessage(text, 64));  // still alive after Delete
        EXPECT_STREQ(L"Out of memory.", text);
        e->Delete();
    }
    EXPECT_EQ(pFirst, pSecond);
}

TEST(ExceptionTest, ThrowHelpersAndTheirResults)
{
    struct Case {
        const char* name;
        void (*thrower)();
        CRuntimeClass* pClass;
        SCODE sc;
    } const cases[] = {
        {"memory", [] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException), E_OUTOFMEMORY},
        {"invalid argument", [] { AfxThrowInvalidArgException(); }, RUNTIME_CLASS(CInvalidArgException),
         E_INVALIDARG},
        {"not supported", [] { AfxThrowNotSupportedException(); }, RUNTIME_CLASS(CNotSupportedException),
         E_NOTIMPL},
        {"OLE", [] { AfxThrowOleException(E_POINTER); }, RUNTIME_CLASS(COleException), E_POINTER},
        {"file", [] { AfxThrowFileException(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, L"a.txt"); },
         RUNTIME_CLASS(CFileException), E_UNEXPECTED},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        try {
            c.thrower();
            ADD_FAILURE() << "nothing thrown";
        } catch (CException* e) {
            EXPECT_EQ(c.pClass, e->GetRuntimeClass());
            EXPECT_EQ(c.sc, COleException::Process(e));
            e->Delete();
        }
    }
}

TEST(ExceptionTest, FileExceptionNamesTheFile)
{
    CFileException e(CFileException::accessDenied, ERROR_ACCESS_DENIED, L"C:\\x.dat");
    wchar_t text[128];
    EXPECT_TRUE(e.GetErrorMessage(text, 128));
    EXPECT_STREQ(L"Access to C:\\x.dat was denied.", text);
    EXPECT_EQ(CFileException::sharingViolation, CFileException::OsErrorToException(ERROR_SHARING_VIOLATION));
}

}  // namespace
