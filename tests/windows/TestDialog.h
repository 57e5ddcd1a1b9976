// A real modeless dialog made from an in-memory template, with the child controls
// the dialogs of the applications use: edits, a three-state check box, combo boxes,
// a static and a push button. The first edit is subclassed as a CEdit.
#pragma once
#include <afxwin.h>
#include <vector>

enum TestControlID : UINT {
    IDC_EDIT = 101,        // subclassed as CEdit
    IDC_PLAIN_EDIT = 102,  // no wrapper object
    IDC_CHECK = 103,
    IDC_COMBO = 104,       // long items, few: no scroll bar
    IDC_COMBO_MANY = 105,  // long items, many, a short list: a scroll bar
    IDC_COMBO_EMPTY = 106,
    IDC_STATIC_TEXT = 107,
    IDC_BUTTON = 108,
    IDC_MISSING = 999,
};

class TestDialog : public CDialog {
public:
    BOOL Create()
    {
        // A DLGTEMPLATE with its items, each DWORD-aligned as the system wants; the
        // class atoms are 0x80 button, 0x81 edit, 0x82 static, 0x85 combo box.
        std::vector<WORD> t = {LOWORD(WS_POPUP | WS_CAPTION | DS_SETFONT), HIWORD(WS_POPUP | WS_CAPTION | DS_SETFONT),
                               0, 0, 0, 0, 0, 300, 200, 0, 0};
        auto text = [&t](const wchar_t* s) { t.insert(t.end(), s, s + wcslen(s) + 1); };
        text(L"Test dialog");
        t.push_back(8);
        text(L"MS Shell Dlg");
        const struct { WORD cls; DWORD style; short x, y, cx, cy; WORD id; const wchar_t* text; } items[] = {
            {0x81, ES_AUTOHSCROLL | WS_BORDER, 10, 10, 80, 12, IDC_EDIT, L"42"},
            {0x81, ES_AUTOHSCROLL | WS_BORDER, 10, 30, 80, 12, IDC_PLAIN_EDIT, L""},
            {0x80, BS_AUTO3STATE, 10, 50, 80, 10, IDC_CHECK, L"Check"},
            {0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 10, 60, 120, IDC_COMBO, L""},
            {0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 30, 60, 40, IDC_COMBO_MANY, L""},
            {0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 50, 60, 60, IDC_COMBO_EMPTY, L""},
            {0x82, SS_LEFT, 10, 70, 80, 10, IDC_STATIC_TEXT, L"Static"},
            {0x80, BS_PUSHBUTTON, 10, 90, 50, 14, IDC_BUTTON, L"Button"},
        };
        for (const auto& item : items) {
            if (t.size() % 2)
                t.push_back(0);
            const DWORD style = item.style | WS_CHILD | WS_VISIBLE;
            t.insert(t.end(), {LOWORD(style), HIWORD(style), 0, 0, static_cast<WORD>(item.x), static_cast<WORD>(item.y),
                               static_cast<WORD>(item.cx), static_cast<WORD>(item.cy), item.id, 0xFFFF, item.cls});
            text(item.text);
            t.push_back(0);  // no creation data
            ++t[4];          // the item count
        }
        return CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(t.data()), NULL);
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
