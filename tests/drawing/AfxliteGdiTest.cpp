// afxlite's GDI objects, device contexts and files.
#include <gtest/gtest.h>
#include <afxwin.h>
#include "ScopedTempFolder.h"

namespace {

TEST(AfxliteGdi, TemporariesMatchTheObjectTypeAndNeverOwnTheHandle)
{
    HBRUSH hBrush = ::CreateSolidBrush(RGB(1, 2, 3));
    struct Case { HGDIOBJ handle; CRuntimeClass* cls; } const cases[] = {
        {hBrush, RUNTIME_CLASS(CBrush)},
        {::GetStockObject(DEFAULT_GUI_FONT), RUNTIME_CLASS(CFont)},
        {::GetStockObject(DEFAULT_PALETTE), RUNTIME_CLASS(CPalette)},
    };
    for (const Case& c : cases) {
        CGdiObject* temp = CGdiObject::FromHandle(c.handle);
        ASSERT_NE(temp, nullptr);
        EXPECT_TRUE(temp->IsKindOf(c.cls));
        EXPECT_EQ(temp, CGdiObject::FromHandle(c.handle));  // one temporary per handle
    }
    EXPECT_EQ(CGdiObject::FromHandle(NULL), nullptr);
    AfxLockTempMaps();
    EXPECT_FALSE(AfxUnlockTempMaps());
    EXPECT_EQ(::GetObjectType(hBrush), static_cast<DWORD>(OBJ_BRUSH));
    EXPECT_TRUE(::DeleteObject(hBrush));

    // A permanent wrapper is what FromHandle finds, until it lets go.
    CBrush owned;
    ASSERT_TRUE(owned.CreateSolidBrush(RGB(9, 9, 9)));
    EXPECT_EQ(CGdiObject::FromHandle(owned.m_hObject), &owned);
    EXPECT_TRUE(owned.DeleteObject());
    EXPECT_EQ(owned.m_hObject, nullptr);
    CBrush* volatile noBrush = nullptr;  // framework code asks null pointers for handles
    EXPECT_EQ(noBrush->GetSafeHandle(), nullptr);
}

TEST(AfxliteGdi, DeviceContextsAttachDetachAndSelect)
{
    CDC dc;
    EXPECT_FALSE(dc.Attach(NULL));
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    EXPECT_EQ(dc.m_hDC, dc.m_hAttribDC);
    EXPECT_EQ(CDC::FromHandle(dc.m_hDC), &dc);

    CBitmap bitmap;
    CClientDC screen(nullptr);
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 4, 4));
    CBitmap* old = dc.SelectObject(&bitmap);
    ASSERT_NE(old, nullptr);
    dc.FillSolidRect(0, 0, 4, 4, RGB(0, 128, 0));
    EXPECT_EQ(dc.GetPixel(3, 3), RGB(0, 128, 0));
    EXPECT_EQ(dc.SetPixel(1, 1, RGB(255, 0, 0)), RGB(255, 0, 0));
    EXPECT_EQ(dc.GetCurrentBitmap(), &bitmap);
    dc.SelectObject(old);

    HDC hDC = dc.Detach();
    EXPECT_TRUE(dc.m_hDC == nullptr && dc.m_hAttribDC == nullptr);
    EXPECT_NE(CDC::FromHandle(hDC), &dc);  // a temporary now
    EXPECT_TRUE(::DeleteDC(hDC));
    CDC::DeleteTempMap();
    EXPECT_FALSE(dc.DeleteDC());

    EXPECT_EQ(CWnd::FromHandle(::GetDesktopWindow())->GetSafeHwnd(), ::GetDesktopWindow());
    EXPECT_EQ(CWnd::FromHandlePermanent(::GetDesktopWindow()), nullptr);
    CWnd::DeleteTempMap();  // never destroys the window it wrapped
    EXPECT_TRUE(::IsWindow(::GetDesktopWindow()));
}

TEST(AfxliteFile, WritesReadsSeeksAndReportsErrors)
{
    ScopedTempFolder folder;
    const CString path = folder.Make(L"afxlite-file.bin");
    {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write("abcdef", 6);
        EXPECT_EQ(file.GetFileName(), CString(L"afxlite-file.bin"));
    }
    CFile file;
    ASSERT_TRUE(file.Open(path, CFile::modeRead));
    char buffer[8] = {};
    file.Seek(2, CFile::begin);
    EXPECT_EQ(file.Read(buffer, 8), 4u);
    EXPECT_STREQ(buffer, "cdef");
    UINT cause = 0;
    try {
        file.Write("x", 1);  // opened for reading only
    } catch (CFileException* e) {
        cause = e->m_cause;
        e->Delete();
    }
    EXPECT_EQ(cause, static_cast<UINT>(CFileException::accessDenied));
    file.Close();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);

    CFileException error;
    EXPECT_FALSE(file.Open(folder.Path(L"missing\\none.bin"), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
}

}  // namespace
