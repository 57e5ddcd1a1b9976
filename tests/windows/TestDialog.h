// A real modeless dialog made from the program's dialog resource IDD_TEST, with
// filled combo boxes. The first edit is subclassed as a CEdit.
#pragma once
#include <afxwin.h>
#include "WindowsTestResources.h"

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
