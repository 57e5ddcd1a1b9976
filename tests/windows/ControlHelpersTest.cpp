#include <gtest/gtest.h>
#include <afxcmn.h>
#include "MUIUtils.h"
#include "MCDeferPos.h"
#include "TestDialog.h"

namespace {

class ControlHelpers : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_dialog.Create()); }
    HWND Control(UINT nID) const { return ::GetDlgItem(m_dialog.m_hWnd, nID); }

    TestDialog m_dialog;
    CWnd* const m_null = NULL;
    // A parent object that is not there at all: using it is a machine fault.
    CWnd* const m_bogus = reinterpret_cast<CWnd*>(static_cast<ULONG_PTR>(0x10));
};

}  // namespace

TEST_F(ControlHelpers, HandleMapsGivePermanentObjectsAndTemporaries)
{
    CWnd* pEdit = m_dialog.GetDlgItem(IDC_EDIT);
    EXPECT_EQ(&m_dialog.m_edit, pEdit);
    EXPECT_TRUE(pEdit->IsKindOf(RUNTIME_CLASS(CEdit)));

    CWnd* pPlain = m_dialog.GetDlgItem(IDC_PLAIN_EDIT);
    ASSERT_NE(nullptr, pPlain);
    EXPECT_EQ(pPlain, m_dialog.GetDlgItem(IDC_PLAIN_EDIT));  // one temporary per handle
    EXPECT_FALSE(pPlain->IsKindOf(RUNTIME_CLASS(CEdit)));
    EXPECT_TRUE(pPlain->IsKindOf(RUNTIME_CLASS(CWnd)));
    EXPECT_EQ(nullptr, m_dialog.GetDlgItem(IDC_MISSING));
    EXPECT_EQ(&m_dialog, CWnd::FromHandle(m_dialog.m_hWnd));

    // The subclassed edit still behaves as an edit, and lets go when it is destroyed.
    m_dialog.m_edit.SetWindowText(L"typed");
    CString text;
    m_dialog.m_edit.GetWindowText(text);
    EXPECT_STREQ(L"typed", text);
    m_dialog.DestroyWindow();
    EXPECT_EQ(nullptr, m_dialog.m_edit.m_hWnd);
    EXPECT_EQ(nullptr, m_dialog.m_hWnd);
}

TEST_F(ControlHelpers, EnableAndShowByIdentifier)
{
    MUIUtils::EnableWindow(&m_dialog, IDC_BUTTON, FALSE);
    EXPECT_FALSE(::IsWindowEnabled(Control(IDC_BUTTON)));
    EXPECT_EQ(0, MUIUtils::IsWindowEnabled(&m_dialog, IDC_BUTTON));
    MUIUtils::EnableWindow(&m_dialog, IDC_BUTTON, TRUE);
    EXPECT_NE(0, MUIUtils::IsWindowEnabled(&m_dialog, IDC_BUTTON));

    // The dialog is hidden, so visibility is read from the control's own style.
    MUIUtils::ShowWindow(&m_dialog, IDC_STATIC_TEXT, FALSE);
    EXPECT_FALSE(::GetWindowLongPtrW(Control(IDC_STATIC_TEXT), GWL_STYLE) & WS_VISIBLE);
    MUIUtils::ShowWindow(&m_dialog, IDC_STATIC_TEXT, TRUE);
    EXPECT_TRUE(::GetWindowLongPtrW(Control(IDC_STATIC_TEXT), GWL_STYLE) & WS_VISIBLE);

    for (CWnd* pParent : {static_cast<CWnd*>(&m_dialog), m_null, m_bogus}) {
        UINT nID = pParent == &m_dialog ? IDC_MISSING : IDC_BUTTON;
        MUIUtils::EnableWindow(pParent, nID, FALSE);
        MUIUtils::ShowWindow(pParent, nID, FALSE);
        MUIUtils::SetFocus(pParent, nID);
        EXPECT_EQ(0, MUIUtils::IsWindowEnabled(pParent, nID));
    }
    EXPECT_TRUE(::IsWindowEnabled(Control(IDC_BUTTON)));
}

TEST_F(ControlHelpers, FocusMovesToTheControl)
{
    ::ShowWindow(m_dialog.m_hWnd, SW_SHOW);
    ::SetForegroundWindow(m_dialog.m_hWnd);
    MUIUtils::SetFocus(&m_dialog, IDC_PLAIN_EDIT);
    EXPECT_EQ(Control(IDC_PLAIN_EDIT), ::GetFocus());
    MUIUtils::SetFocus(&m_dialog, IDC_MISSING);
    EXPECT_EQ(Control(IDC_PLAIN_EDIT), ::GetFocus());
}

TEST_F(ControlHelpers, TextByIdentifier)
{
    EXPECT_STREQ(L"42", MUIUtils::GetWindowTextW(&m_dialog, IDC_EDIT));
    EXPECT_EQ(42, MUIUtils::GetWindowTextInt(&m_dialog, IDC_EDIT));

    MUIUtils::SetWindowTextW(&m_dialog, IDC_PLAIN_EDIT, L"hello");
    EXPECT_STREQ(L"hello", MUIUtils::GetWindowTextW(&m_dialog, IDC_PLAIN_EDIT));
    EXPECT_EQ(0, MUIUtils::GetWindowTextInt(&m_dialog, IDC_PLAIN_EDIT));
    MUIUtils::SetWindowTextW(&m_dialog, IDC_PLAIN_EDIT, -15);
    EXPECT_STREQ(L"-15", MUIUtils::GetWindowTextW(&m_dialog, IDC_PLAIN_EDIT));
    EXPECT_EQ(-15, MUIUtils::GetWindowTextInt(&m_dialog, IDC_PLAIN_EDIT));

    for (CWnd* pParent : {static_cast<CWnd*>(&m_dialog), m_null, m_bogus}) {
        UINT nID = pParent == &m_dialog ? IDC_MISSING : IDC_PLAIN_EDIT;
        MUIUtils::SetWindowTextW(pParent, nID, L"lost");
        MUIUtils::SetWindowTextW(pParent, nID, 7);
        EXPECT_STREQ(L"", MUIUtils::GetWindowTextW(pParent, nID));
        EXPECT_EQ(0, MUIUtils::GetWindowTextInt(pParent, nID));
    }
    EXPECT_STREQ(L"-15", MUIUtils::GetWindowTextW(&m_dialog, IDC_PLAIN_EDIT));
}

TEST_F(ControlHelpers, CheckBoxStates)
{
    struct Case {
        int set;
        int read;
    } cases[] = {{BST_CHECKED, 1}, {BST_UNCHECKED, 0}, {BST_INDETERMINATE, 0}};
    for (const Case& c : cases) {
        MUIUtils::SetButtonCheck(&m_dialog, IDC_CHECK, c.set);
        EXPECT_EQ(c.set, ::SendMessageW(Control(IDC_CHECK), BM_GETCHECK, 0, 0));
        EXPECT_EQ(c.read, MUIUtils::GetButtonCheck(&m_dialog, IDC_CHECK)) << c.set;
    }
    EXPECT_EQ(-1, MUIUtils::GetButtonCheck(&m_dialog, IDC_MISSING));
    EXPECT_EQ(-1, MUIUtils::GetButtonCheck(m_null, IDC_CHECK));
    EXPECT_EQ(-1, MUIUtils::GetButtonCheck(m_bogus, IDC_CHECK));
    MUIUtils::SetButtonCheck(m_null, IDC_CHECK, BST_CHECKED);
    MUIUtils::SetButtonCheck(m_bogus, IDC_CHECK, BST_CHECKED);
    EXPECT_EQ(BST_INDETERMINATE, ::SendMessageW(Control(IDC_CHECK), BM_GETCHECK, 0, 0));
}

TEST_F(ControlHelpers, EditLengthOnlyForEditObjects)
{
    EXPECT_TRUE(MUIUtils::SetEditTextLength(&m_dialog, IDC_EDIT, 5));
    EXPECT_EQ(5, ::SendMessageW(Control(IDC_EDIT), EM_GETLIMITTEXT, 0, 0));

    // An edit control without a CEdit object, a static, a missing control, no parent.
    LRESULT plainLimit = ::SendMessageW(Control(IDC_PLAIN_EDIT), EM_GETLIMITTEXT, 0, 0);
    EXPECT_FALSE(MUIUtils::SetEditTextLength(&m_dialog, IDC_PLAIN_EDIT, 5));
    EXPECT_EQ(plainLimit, ::SendMessageW(Control(IDC_PLAIN_EDIT), EM_GETLIMITTEXT, 0, 0));
    EXPECT_FALSE(MUIUtils::SetEditTextLength(&m_dialog, IDC_STATIC_TEXT, 5));
    EXPECT_FALSE(MUIUtils::SetEditTextLength(&m_dialog, IDC_MISSING, 5));
    EXPECT_FALSE(MUIUtils::SetEditTextLength(m_null, IDC_EDIT, 5));
    EXPECT_FALSE(MUIUtils::SetEditTextLength(m_bogus, IDC_EDIT, 5));
}

TEST_F(ControlHelpers, RectanglesAndPoints)
{
    CRect screen;
    ::GetWindowRect(Control(IDC_BUTTON), &screen);
    CRect client = screen;
    ::MapWindowPoints(NULL, m_dialog.m_hWnd, reinterpret_cast<POINT*>(&client), 2);
    ASSERT_NE(screen, client);  // the dialog has a caption: the two differ

    EXPECT_EQ(screen, MUIUtils::GetWinRect(&m_dialog, IDC_BUTTON, false));
    EXPECT_EQ(client, MUIUtils::GetWinRect(&m_dialog, IDC_BUTTON, true));
    EXPECT_EQ(client, MUIUtils::GetWinRect(&m_dialog, m_dialog.GetDlgItem(IDC_BUTTON), true));
    EXPECT_EQ(screen.TopLeft(), MUIUtils::GetWinPointByID(&m_dialog, IDC_BUTTON, false));
    EXPECT_EQ(client.TopLeft(), MUIUtils::GetWinPointByID(&m_dialog, IDC_BUTTON, true));

    const CRect empty;
    EXPECT_EQ(empty, MUIUtils::GetWinRect(&m_dialog, static_cast<UINT>(IDC_MISSING), true));
    EXPECT_EQ(empty, MUIUtils::GetWinRect(m_null, static_cast<UINT>(IDC_BUTTON), false));
    EXPECT_EQ(empty, MUIUtils::GetWinRect(m_bogus, static_cast<UINT>(IDC_BUTTON), false));
    EXPECT_EQ(empty, MUIUtils::GetWinRect(&m_dialog, m_null, false));
    EXPECT_EQ(empty, MUIUtils::GetWinRect(m_null, &m_dialog, false));
    EXPECT_EQ(CPoint(0, 0), MUIUtils::GetWinPointByID(&m_dialog, IDC_MISSING, true));
    EXPECT_EQ(CPoint(0, 0), MUIUtils::GetWinPointByID(m_bogus, IDC_BUTTON, true));
}

TEST_F(ControlHelpers, ComboDropWidthFitsTheLongestItem)
{
    HWND hCombo = Control(IDC_COMBO);
    HWND hMany = Control(IDC_COMBO_MANY);
    HWND hEmpty = Control(IDC_COMBO_EMPTY);

    // Measured independently, with the font the combo boxes draw with.
    auto widestItem = [](HWND hWnd) {
        HDC hdc = ::GetDC(hWnd);
        HGDIOBJ old = ::SelectObject(hdc, reinterpret_cast<HFONT>(::SendMessageW(hWnd, WM_GETFONT, 0, 0)));
        int widest = 0;
        int count = static_cast<int>(::SendMessageW(hWnd, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            wchar_t text[256] = L"";
            ::SendMessageW(hWnd, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            SIZE size;
            ::GetTextExtentPoint32W(hdc, text, static_cast<int>(wcslen(text)), &size);
            widest = size.cx > widest ? size.cx : widest;
        }
        ::SelectObject(hdc, old);
        ::ReleaseDC(hWnd, hdc);
        return widest;
    };
    auto dropWidth = [](HWND hWnd) { return static_cast<int>(::SendMessageW(hWnd, CB_GETDROPPEDWIDTH, 0, 0)); };
    auto windowWidth = [](HWND hWnd) {
        RECT rc;
        ::GetWindowRect(hWnd, &rc);
        return static_cast<int>(rc.right - rc.left);
    };
    const int edges = 2 * ::GetSystemMetrics(SM_CXEDGE);
    ASSERT_NE(nullptr, reinterpret_cast<HFONT>(::SendMessageW(hCombo, WM_GETFONT, 0, 0)));

    // Three items in a tall list: no scroll bar.
    ASSERT_GT(widestItem(hCombo) + edges, windowWidth(hCombo));
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO);
    EXPECT_EQ(widestItem(hCombo) + edges, dropWidth(hCombo));

    // Thirty items in a short list: room for a vertical scroll bar.
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_MANY);
    EXPECT_EQ(widestItem(hMany) + edges + ::GetSystemMetrics(SM_CXVSCROLL), dropWidth(hMany));

    // No items: the list is as wide as the box, whatever it was before.
    ::SendMessageW(hEmpty, CB_SETDROPPEDWIDTH, 500, 0);
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_EMPTY);
    EXPECT_EQ(windowWidth(hEmpty), dropWidth(hEmpty));

    // Short items never make the list narrower than the box.
    ::SendMessageW(hEmpty, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"x"));
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_EMPTY);
    EXPECT_EQ(windowWidth(hEmpty), dropWidth(hEmpty));

    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_MISSING);
    MUIUtils::AjustComboboxDropWidth(m_null, IDC_COMBO);
    MUIUtils::AjustComboboxDropWidth(m_bogus, IDC_COMBO);
    EXPECT_EQ(widestItem(hCombo) + edges, dropWidth(hCombo));
}

// Remembers the flags of the last position change it was asked to make.
class PositionRecorder : public CButton {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_WINDOWPOSCHANGING)
            lastFlags = reinterpret_cast<WINDOWPOS*>(lParam)->flags;
        return CButton::WindowProc(message, wParam, lParam);
    }
    UINT lastFlags = 0;
};

TEST_F(ControlHelpers, DeferredMovesThroughWindowObjects)
{
    PositionRecorder recorder;
    ASSERT_TRUE(recorder.SubclassDlgItem(IDC_BUTTON, &m_dialog));
    CWnd* pButton = m_dialog.GetDlgItem(IDC_BUTTON);
    ASSERT_EQ(&recorder, pButton);
    CWnd* pStatic = m_dialog.GetDlgItem(IDC_STATIC_TEXT);
    {
        MCDeferPos batch(2);
        EXPECT_TRUE(batch.MoveWindow(pButton, CRect(10, 20, 110, 70), FALSE));
        EXPECT_TRUE(batch.SetWindowPos(pStatic, NULL, 5, 6, 30, 40, SWP_NOZORDER));
    }
    EXPECT_EQ(CRect(10, 20, 110, 70), MUIUtils::GetWinRect(&m_dialog, pButton, true));
    EXPECT_EQ(CRect(5, 6, 35, 46), MUIUtils::GetWinRect(&m_dialog, pStatic, true));
    // No z-order, no activation, no owner order, and no redraw.
    EXPECT_EQ(0x21Cu, recorder.lastFlags & 0x21Cu);
    {
        MCDeferPos batch;
        EXPECT_TRUE(batch.MoveWindow(pButton, 1, 2, 3, 4, TRUE));
    }
    EXPECT_EQ(CRect(1, 2, 4, 6), MUIUtils::GetWinRect(&m_dialog, pButton, true));
    EXPECT_EQ(0x214u, recorder.lastFlags & 0x21Cu);

    // Unsubclassed, the button is a temporary again.
    HWND hButton = recorder.GetSafeHwnd();
    EXPECT_EQ(hButton, recorder.UnsubclassWindow());
    EXPECT_NE(&recorder, m_dialog.GetDlgItem(IDC_BUTTON));
    EXPECT_EQ(nullptr, recorder.m_hWnd);
}

TEST(UIUnits, PixelsAndTwipsAtScreenResolution)
{
    HDC screen = ::GetDC(NULL);
    int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(NULL, screen);
    ASSERT_EQ(96, dpi);
    // The system scales twips by the screen's size in whole millimetres, so on a
    // screen whose width is not a whole number of millimetres (1280 pixels at 96
    // DPI) the result is one twip off; on 1024 pixels it is exact.
    EXPECT_NEAR(1440, MUIUtils::PixelsToTwips(96), 1);
    EXPECT_EQ(96, MUIUtils::TwipsToPixels(1440));
    EXPECT_EQ(15, MUIUtils::PixelsToTwips(1));
    EXPECT_EQ(0, MUIUtils::PixelsToTwips(0));
    EXPECT_NEAR(-1440, MUIUtils::PixelsToTwips(-96), 1);
    EXPECT_EQ(-96, MUIUtils::TwipsToPixels(-1440));
}

TEST(UIFonts, CreateFontMakesAnIndependentCopy)
{
    LOGFONTW lf = {};
    lf.lfHeight = -17;
    lf.lfWeight = FW_BOLD;
    lf.lfItalic = TRUE;
    wcscpy(lf.lfFaceName, L"Tahoma");
    HFONT original = ::CreateFontIndirectW(&lf);
    ASSERT_NE(nullptr, original);

    CFont copy;
    ASSERT_TRUE(copy.CreatePointFont(90, L"Arial"));  // replaced by the copy
    ASSERT_TRUE(MUIUtils::CreateFontW(original, copy));
    EXPECT_NE(original, static_cast<HFONT>(copy));
    ::DeleteObject(original);

    LOGFONTW read = {};
    ASSERT_EQ(static_cast<int>(sizeof(read)), ::GetObjectW(copy, sizeof(read), &read));
    EXPECT_EQ(-17, read.lfHeight);
    EXPECT_EQ(FW_BOLD, read.lfWeight);
    EXPECT_TRUE(read.lfItalic);
    EXPECT_STREQ(L"Tahoma", read.lfFaceName);

    EXPECT_FALSE(MUIUtils::CreateFontW(NULL, copy));
    EXPECT_EQ(nullptr, copy.GetSafeHandle());
}

TEST(UIImageLists, ValidImageListFromABitmapStrip)
{
    CImageList il;
    ASSERT_TRUE(MUIUtils::CreateValidImageList(il, 201, 16, RGB(255, 0, 255)));
    EXPECT_EQ(3, il.GetImageCount());
    IMAGEINFO info;
    ASSERT_TRUE(il.GetImageInfo(0, &info));
    EXPECT_EQ(16, info.rcImage.bottom - info.rcImage.top);
    EXPECT_EQ(16, info.rcImage.right - info.rcImage.left);
    EXPECT_NE(nullptr, info.hbmMask);

    CImageList missing;
    EXPECT_FALSE(MUIUtils::CreateValidImageList(missing, 202, 16, RGB(255, 0, 255)));
}
