// The helpers that reach a dialog's controls by identifier, on a real dialog: each
// helper with a real control, a missing control, no parent, and a parent object
// that is not there at all (using it is a machine fault).
#include <gtest/gtest.h>
#include <afxcmn.h>
#include <functional>
#include <string>
#include "MCDeferPos.h"
#include "MUIUtils.h"
#include "WindowsTestResources.h"
#include "frame/Owners.h"

namespace {

// A real modeless dialog made from the program's dialog resource IDD_TEST, with
// filled combo boxes. The first edit is subclassed as a CEdit.
class TestDialog : public CDialog {
public:
    BOOL Create()
    {
        HRSRC resource = ::FindResourceW(NULL, MAKEINTRESOURCEW(IDD_TEST), RT_DIALOG);
        return CreateIndirect(static_cast<LPCDLGTEMPLATE>(::LockResource(::LoadResource(NULL, resource))), NULL);
    }
    BOOL OnInitDialog() override
    {
        m_edit.SubclassDlgItem(IDC_EDIT, this);
        for (const wchar_t* item : {L"one", L"two", L"A rather long item, much wider than the combo box itself"})
            SendDlgItemMessageW(m_hWnd, IDC_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        for (int i = 0; i < 30; ++i) {
            CString item;
            item.Format(L"Item %d of a list that overflows its drop-down", i);
            SendDlgItemMessageW(m_hWnd, IDC_COMBO_MANY, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.GetString()));
        }
        return TRUE;
    }

    CEdit m_edit;
};

class ControlHelpers : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_dialog.Create()); }
    HWND Control(UINT nID) const { return ::GetDlgItem(m_dialog.m_hWnd, nID); }
    LRESULT Send(UINT nID, UINT message, WPARAM wParam = 0) const { return ::SendDlgItemMessageW(m_dialog.m_hWnd, nID, message, wParam, 0); }
    CRect ScreenRect(UINT nID) const
    {
        CRect rc;
        ::GetWindowRect(Control(nID), &rc);
        return rc;
    }
    CRect ClientRect(UINT nID) const
    {
        CRect rc = ScreenRect(nID);
        ::MapWindowPoints(NULL, m_dialog.m_hWnd, reinterpret_cast<POINT*>(&rc), 2);
        return rc;
    }
    // The widest item of a combo box, measured with the font it draws with.
    int WidestItem(UINT nID) const
    {
        UniqueWindowDC dc(Control(nID));
        UniqueSelectObject font(dc.get(), reinterpret_cast<HFONT>(Send(nID, WM_GETFONT)));
        int widest = 0;
        for (int i = 0; i < static_cast<int>(Send(nID, CB_GETCOUNT)); ++i) {
            wchar_t text[256] = L"";
            ::SendMessageW(Control(nID), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            SIZE size;
            ::GetTextExtentPoint32W(dc.get(), text, static_cast<int>(wcslen(text)), &size);
            widest = std::max(widest, static_cast<int>(size.cx));
        }
        return widest + 2 * ::GetSystemMetrics(SM_CXEDGE);
    }

    TestDialog m_dialog;
};

std::string N(long long n) { return std::to_string(n); }
std::string A(const CString& text) { return std::string(text.GetString(), text.GetString() + text.GetLength()); }

}  // namespace

TEST_F(ControlHelpers, EachHelperWithARealAMissingAndNoControlAndComboDropWidths)
{
    ::ShowWindow(m_dialog.m_hWnd, SW_SHOW);
    ::SetForegroundWindow(m_dialog.m_hWnd);
    ::SetFocus(Control(IDC_EDIT));
    // Each call runs a helper with the given parent and identifier and tells what it
    // answered and what the real control shows afterwards.
    const struct Row {
        const char* helper;
        UINT nID;
        std::function<std::string(CWnd*, UINT)> call;
        const char* real;     // on the real dialog and control
        const char* failed;   // missing control, no parent, no parent object: the control is left alone
    } rows[] = {
        {"EnableWindow, IsWindowEnabled", IDC_BUTTON, [&](CWnd* p, UINT id) {
             MUIUtils::EnableWindow(p, id, FALSE);
             std::string s = N(::IsWindowEnabled(Control(IDC_BUTTON))) + N(MUIUtils::IsWindowEnabled(p, id) != 0);
             MUIUtils::EnableWindow(p, id, TRUE);
             return s + N(::IsWindowEnabled(Control(IDC_BUTTON))) + N(MUIUtils::IsWindowEnabled(p, id) != 0);
         }, "0011", "1010"},
        {"ShowWindow", IDC_STATIC_TEXT, [&](CWnd* p, UINT id) {
             auto visible = [&] { return N((::GetWindowLongPtrW(Control(IDC_STATIC_TEXT), GWL_STYLE) & WS_VISIBLE) != 0); };
             MUIUtils::ShowWindow(p, id, FALSE);
             std::string s = visible();
             MUIUtils::ShowWindow(p, id, TRUE);
             return s + visible();
         }, "01", "11"},
        {"SetFocus", IDC_PLAIN_EDIT, [&](CWnd* p, UINT id) {
             MUIUtils::SetFocus(p, id);
             return N(::GetDlgCtrlID(::GetFocus()));
         }, "102", "101"},
        {"SetWindowTextW, GetWindowTextW, GetWindowTextInt", IDC_PLAIN_EDIT, [&](CWnd* p, UINT id) {
             auto seen = [&] {
                 wchar_t text[32] = L"";
                 ::GetWindowTextW(Control(IDC_PLAIN_EDIT), text, 32);
                 return A(text) + "|" + A(MUIUtils::GetWindowTextW(p, id)) + "|" + N(MUIUtils::GetWindowTextInt(p, id)) + ";";
             };
             MUIUtils::SetWindowTextW(p, id, -15);
             const std::string s = seen();
             MUIUtils::SetWindowTextW(p, id, L"hello");
             return s + seen();
         }, "-15|-15|-15;hello|hello|0;", "||0;||0;"},
        {"SetButtonCheck, GetButtonCheck", IDC_CHECK, [&](CWnd* p, UINT id) {
             std::string s;
             for (int state : {BST_CHECKED, BST_UNCHECKED, BST_INDETERMINATE}) {  // indeterminate reads 0
                 MUIUtils::SetButtonCheck(p, id, state);
                 s += N(Send(IDC_CHECK, BM_GETCHECK)) + N(MUIUtils::GetButtonCheck(p, id)) + ",";
             }
             return s;
         }, "11,00,20,", "0-1,0-1,0-1,"},
        {"SetEditTextLength", IDC_EDIT, [&](CWnd* p, UINT id) {  // only an edit bound to a CEdit takes a limit
             std::string s = N(MUIUtils::SetEditTextLength(p, id, 5));
             s += N(Send(IDC_EDIT, EM_GETLIMITTEXT) == 5) + N(MUIUtils::SetEditTextLength(p, IDC_PLAIN_EDIT, 5));
             s += N(Send(IDC_PLAIN_EDIT, EM_GETLIMITTEXT) == 5);
             return s + N(MUIUtils::SetEditTextLength(p, IDC_STATIC_TEXT, 5));
         }, "11000", "00000"},
        {"GetWinRect, GetWinPointByID", IDC_BUTTON, [&](CWnd* p, UINT id) {
             auto seen = [](const CRect& rc, const CRect& expected) { return rc == expected ? "=" : rc.IsRectNull() ? "0" : "?"; };
             const CRect screen = ScreenRect(IDC_BUTTON), client = ClientRect(IDC_BUTTON);
             return std::string(seen(MUIUtils::GetWinRect(p, id, false), screen)) + seen(MUIUtils::GetWinRect(p, id, true), client) +
                    seen(CRect(MUIUtils::GetWinPointByID(p, id, false), CSize()), CRect(screen.TopLeft(), CSize())) +
                    seen(CRect(MUIUtils::GetWinPointByID(p, id, true), CSize()), CRect(client.TopLeft(), CSize()));
         }, "====", "0000"},
        {"AjustComboboxDropWidth", IDC_COMBO, [&](CWnd* p, UINT id) {
             MUIUtils::AjustComboboxDropWidth(p, id);
             return N(Send(IDC_COMBO, CB_GETDROPPEDWIDTH) == WidestItem(IDC_COMBO));
         }, "1", "0"},
    };
    ASSERT_NE(ScreenRect(IDC_BUTTON), ClientRect(IDC_BUTTON)) << "the dialog has a caption: the two differ";
    CWnd* const bogus = reinterpret_cast<CWnd*>(static_cast<ULONG_PTR>(0x10));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.helper);
        EXPECT_EQ(row.failed, row.call(&m_dialog, IDC_MISSING)) << "missing control";
        EXPECT_EQ(row.failed, row.call(nullptr, row.nID)) << "no parent";
        EXPECT_EQ(row.failed, row.call(bogus, row.nID)) << "no parent object";
        EXPECT_EQ(row.real, row.call(&m_dialog, row.nID)) << "real control";
    }
    EXPECT_EQ(CRect(), MUIUtils::GetWinRect(static_cast<CWnd*>(nullptr), &m_dialog, false));

    ASSERT_NE(nullptr, reinterpret_cast<HFONT>(Send(IDC_COMBO, WM_GETFONT)));
    // Thirty items in a short list: room for a scroll bar (three in a tall one are a row above).
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_MANY);
    EXPECT_EQ(WidestItem(IDC_COMBO_MANY) + ::GetSystemMetrics(SM_CXVSCROLL), Send(IDC_COMBO_MANY, CB_GETDROPPEDWIDTH));
    // No items: the list is as wide as the box, whatever it was before; short items never make it narrower.
    ::SendMessageW(Control(IDC_COMBO_EMPTY), CB_SETDROPPEDWIDTH, 500, 0);
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_EMPTY);
    EXPECT_EQ(ScreenRect(IDC_COMBO_EMPTY).Width(), Send(IDC_COMBO_EMPTY, CB_GETDROPPEDWIDTH));
    ::SendMessageW(Control(IDC_COMBO_EMPTY), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"x"));
    MUIUtils::AjustComboboxDropWidth(&m_dialog, IDC_COMBO_EMPTY);
    EXPECT_EQ(ScreenRect(IDC_COMBO_EMPTY).Width(), Send(IDC_COMBO_EMPTY, CB_GETDROPPEDWIDTH));
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

// A batch moves nothing until it ends, at its scope end or by EndDeferWindowPos;
// copies share it, and one failed defer fails every later call of the batch. Windows
// that have wrapper objects are found through them; the others get temporaries.
TEST_F(ControlHelpers, DeferredMovesAndTheObjectsOfSubclassedAndPlainControls)
{
    PositionRecorder recorder;
    ASSERT_TRUE(recorder.SubclassDlgItem(IDC_BUTTON, &m_dialog));
    CWnd* pButton = m_dialog.GetDlgItem(IDC_BUTTON);
    ASSERT_EQ(&recorder, pButton);
    const CRect before = ClientRect(IDC_BUTTON);
    {
        MCDeferPos batch(2);
        EXPECT_TRUE(batch.MoveWindow(pButton, CRect(10, 20, 110, 70), FALSE));
        EXPECT_TRUE(batch.SetWindowPos(m_dialog.GetDlgItem(IDC_STATIC_TEXT), NULL, 5, 6, 30, 40, SWP_NOZORDER));
        EXPECT_EQ(before, ClientRect(IDC_BUTTON));
    }
    EXPECT_EQ(CRect(10, 20, 110, 70), ClientRect(IDC_BUTTON));
    EXPECT_EQ(CRect(5, 6, 35, 46), ClientRect(IDC_STATIC_TEXT));
    EXPECT_EQ(0x21Cu, recorder.lastFlags & 0x21Cu) << "no z-order, no activation, no owner order, and no redraw";

    MCDeferPos first;
    ASSERT_TRUE(first.MoveWindow(pButton, 1, 2, 3, 4, TRUE));
    {
        MCDeferPos second(first);
        second.EndDeferWindowPos();
        EXPECT_FALSE(second.MoveWindow(Control(IDC_BUTTON), 50, 60, 70, 80, TRUE)) << "an ended batch takes no more";
    }
    EXPECT_EQ(CRect(1, 2, 4, 6), ClientRect(IDC_BUTTON));
    EXPECT_EQ(0x214u, recorder.lastFlags & 0x21Cu);

    HWND gone = ::CreateWindowExW(0, L"Static", L"", WS_CHILD, 0, 0, 1, 1, m_dialog.m_hWnd, NULL, NULL, NULL);
    ::DestroyWindow(gone);
    {
        MCDeferPos failed(2);
        EXPECT_FALSE(failed.MoveWindow(gone, 1, 1, 1, 1, TRUE));
        EXPECT_FALSE(failed.MoveWindow(Control(IDC_BUTTON), 10, 20, 30, 40, TRUE));
        EXPECT_FALSE(failed.SetWindowPos(Control(IDC_BUTTON), NULL, 10, 20, 30, 40, SWP_NOZORDER));
        EXPECT_FALSE(failed.MoveWindow(static_cast<CWnd*>(NULL), CRect(1, 2, 3, 4), TRUE));
    }
    EXPECT_EQ(CRect(1, 2, 4, 6), ClientRect(IDC_BUTTON));

    // Unsubclassed, the button is a temporary again.
    EXPECT_EQ(Control(IDC_BUTTON), recorder.UnsubclassWindow());
    EXPECT_NE(&recorder, m_dialog.GetDlgItem(IDC_BUTTON));
    EXPECT_EQ(nullptr, recorder.m_hWnd);

    CWnd* pPlain = m_dialog.GetDlgItem(IDC_PLAIN_EDIT);
    ASSERT_NE(nullptr, pPlain);
    EXPECT_EQ(pPlain, m_dialog.GetDlgItem(IDC_PLAIN_EDIT));  // one temporary per handle
    EXPECT_EQ(&m_dialog, CWnd::FromHandle(m_dialog.m_hWnd));
    // The subclassed edit lets go when it is destroyed.
    m_dialog.DestroyWindow();
    EXPECT_EQ(nullptr, m_dialog.m_edit.m_hWnd);
    EXPECT_EQ(nullptr, m_dialog.m_hWnd);
}

TEST(UIUnitsFontsAndImageLists, AtScreenResolution)
{
    ASSERT_EQ(96, ::GetDeviceCaps(UniqueWindowDC(NULL).get(), LOGPIXELSX));
    // The system scales twips by the screen's size in whole millimetres, so on a
    // screen whose width is not a whole number of millimetres (1280 pixels at 96
    // DPI) the result is one twip off; on 1024 pixels it is exact.
    EXPECT_NEAR(1440, MUIUtils::PixelsToTwips(96), 1);
    EXPECT_NEAR(-1440, MUIUtils::PixelsToTwips(-96), 1);
    const int exact[][2] = {{MUIUtils::TwipsToPixels(1440), 96}, {MUIUtils::PixelsToTwips(1), 15}, {MUIUtils::PixelsToTwips(0), 0},
                            {MUIUtils::TwipsToPixels(-1440), -96}, {MUIUtils::PointsToTwips(12), 240},
                            {MUIUtils::TwipsToPoints(39), 1}, {MUIUtils::TwipsToPoints(-39), -1}, {MUIUtils::TwipsToPoints(19), 0}};
    for (const auto& pair : exact)
        EXPECT_EQ(pair[1], pair[0]) << "row " << &pair - exact;

    const LOGFONTW lf = {-17, 0, 0, 0, FW_BOLD, TRUE, 0, 0, 0, 0, 0, 0, 0, L"Tahoma"};
    UniqueGdiObject<HFONT> original(::CreateFontIndirectW(&lf));
    CFont copy;
    ASSERT_TRUE(copy.CreatePointFont(90, L"Arial"));  // replaced by the copy
    ASSERT_TRUE(MUIUtils::CreateFontW(original.get(), copy));
    EXPECT_NE(original.get(), static_cast<HFONT>(copy));
    LOGFONTW read = {};
    ASSERT_EQ(static_cast<int>(sizeof(read)), ::GetObjectW(copy, sizeof(read), &read));
    EXPECT_TRUE(read.lfHeight == -17 && read.lfWeight == FW_BOLD && read.lfItalic && !wcscmp(read.lfFaceName, L"Tahoma"));
    EXPECT_FALSE(MUIUtils::CreateFontW(NULL, copy));
    EXPECT_EQ(nullptr, copy.GetSafeHandle());

    CImageList il, missing;
    ASSERT_TRUE(MUIUtils::CreateValidImageList(il, IDB_HELPER_STRIP, 16, RGB(255, 0, 255)));  // three 16x16 images
    EXPECT_EQ(3, il.GetImageCount());
    IMAGEINFO info;
    ASSERT_TRUE(il.GetImageInfo(0, &info));
    EXPECT_EQ(CSize(16, 16), CRect(info.rcImage).Size());
    EXPECT_NE(nullptr, info.hbmMask);
    EXPECT_FALSE(MUIUtils::CreateValidImageList(missing, 202, 16, RGB(255, 0, 255)));
}
