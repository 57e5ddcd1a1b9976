// A real modeless dialog made from an in-memory template, with the child controls
// the dialogs of the applications use: edits, a three-state check box, combo boxes,
// a static and a push button. The first edit is subclassed as a CEdit.
#pragma once
#include <afxwin.h>
#include <vector>

enum TestControlID : UINT {
    IDC_EDIT = 101,       // subclassed as CEdit
    IDC_PLAIN_EDIT = 102, // no wrapper object
    IDC_CHECK = 103,
    IDC_COMBO = 104,      // long items, few: no scroll bar
    IDC_COMBO_MANY = 105, // long items, many, a short list: a scroll bar
    IDC_COMBO_EMPTY = 106,
    IDC_STATIC_TEXT = 107,
    IDC_BUTTON = 108,
    IDC_MISSING = 999,
};

// Builds a DLGTEMPLATE with its items, each DWORD-aligned as the system wants.
class DialogTemplateBuilder {
public:
    DialogTemplateBuilder(DWORD style, short cx, short cy)
    {
        AddDword(style | DS_SETFONT);
        AddDword(0);
        m_countAt = m_words.size();
        AddWord(0);  // item count, filled in by Add
        AddWord(0);
        AddWord(0);
        AddWord(static_cast<WORD>(cx));
        AddWord(static_cast<WORD>(cy));
        AddWord(0);  // no menu
        AddWord(0);  // the dialog class
        AddString(L"Test dialog");
        AddWord(8);
        AddString(L"MS Shell Dlg");
    }
    // classAtom: 0x80 button, 0x81 edit, 0x82 static, 0x85 combo box.
    void Add(WORD classAtom, DWORD style, short x, short y, short cx, short cy, WORD id, const wchar_t* text)
    {
        if (m_words.size() % 2)
            AddWord(0);
        AddDword(style | WS_CHILD | WS_VISIBLE);
        AddDword(0);
        AddWord(static_cast<WORD>(x));
        AddWord(static_cast<WORD>(y));
        AddWord(static_cast<WORD>(cx));
        AddWord(static_cast<WORD>(cy));
        AddWord(id);
        AddWord(0xFFFF);
        AddWord(classAtom);
        AddString(text);
        AddWord(0);  // no creation data
        ++m_words[m_countAt];
    }
    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words.data()); }

private:
    void AddWord(WORD w) { m_words.push_back(w); }
    void AddDword(DWORD d)
    {
        AddWord(LOWORD(d));
        AddWord(HIWORD(d));
    }
    void AddString(const wchar_t* s)
    {
        do
            AddWord(*s);
        while (*s++);
    }
    std::vector<WORD> m_words;
    size_t m_countAt = 0;
};

class TestDialog : public CDialog {
public:
    static const wchar_t* LongItem() { return L"A rather long item, much wider than the combo box itself"; }

    BOOL Create()
    {
        DialogTemplateBuilder dt(WS_POPUP | WS_CAPTION, 300, 200);
        dt.Add(0x81, ES_AUTOHSCROLL | WS_BORDER, 10, 10, 80, 12, IDC_EDIT, L"42");
        dt.Add(0x81, ES_AUTOHSCROLL | WS_BORDER, 10, 30, 80, 12, IDC_PLAIN_EDIT, L"");
        dt.Add(0x80, BS_AUTO3STATE, 10, 50, 80, 10, IDC_CHECK, L"Check");
        dt.Add(0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 10, 60, 120, IDC_COMBO, L"");
        dt.Add(0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 30, 60, 40, IDC_COMBO_MANY, L"");
        dt.Add(0x85, CBS_DROPDOWNLIST | WS_VSCROLL, 100, 50, 60, 60, IDC_COMBO_EMPTY, L"");
        dt.Add(0x82, SS_LEFT, 10, 70, 80, 10, IDC_STATIC_TEXT, L"Static");
        dt.Add(0x80, BS_PUSHBUTTON, 10, 90, 50, 14, IDC_BUTTON, L"Button");
        return CreateIndirect(dt.Get(), NULL);
    }
    BOOL OnInitDialog() override
    {
        m_edit.SubclassDlgItem(IDC_EDIT, this);
        const wchar_t* shortItems[] = {L"one", L"two", LongItem()};
        for (const wchar_t* item : shortItems)
            ::SendDlgItemMessageW(m_hWnd, IDC_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        for (int i = 0; i < 30; ++i) {
            CString item;
            item.Format(L"Item %d of a list that overflows its drop-down", i);
            ::SendDlgItemMessageW(m_hWnd, IDC_COMBO_MANY, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.GetString()));
        }
        return TRUE;
    }

    CEdit m_edit;
};
