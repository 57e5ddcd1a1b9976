// afxlite: the standard controls and dialogs. A control object wraps a control
// that a dialog template made; SubclassDlgItem binds the two, after which
// GetDlgItem returns this object and IsKindOf tells its class.
#pragma once
#include "afxlite_wnd.h"

class AFXLITE_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    CStatic() {}
    ~CStatic() override;
};

class AFXLITE_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    CButton() {}
    ~CButton() override;

    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, nCheck); }
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFF; }
};

class AFXLITE_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    CEdit() {}
    ~CEdit() override;

    void LimitText(int nChars = 0) { SendMessage(EM_LIMITTEXT, nChars); }
    void SetLimitText(UINT nMax) { SendMessage(EM_SETLIMITTEXT, nMax); }
    UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE)
    {
        SendMessage(EM_SETSEL, nStartChar, nEndChar);
        if (!bNoScroll)
            SendMessage(EM_SCROLLCARET);
    }
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE)
    {
        SendMessage(EM_REPLACESEL, bCanUndo, reinterpret_cast<LPARAM>(lpszNewText));
    }
};

class AFXLITE_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    CComboBox() {}
    ~CComboBox() override;

    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int nSelect) { return static_cast<int>(SendMessage(CB_SETCURSEL, nSelect)); }
    int AddString(LPCTSTR lpszString)
    {
        return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)));
    }
    int GetLBTextLen(int nIndex) const { return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, nIndex)); }
    int GetLBText(int nIndex, LPTSTR lpszText) const
    {
        return static_cast<int>(SendMessage(CB_GETLBTEXT, nIndex, reinterpret_cast<LPARAM>(lpszText)));
    }
    // An item that does not exist gives an empty string.
    void GetLBText(int nIndex, CString& rString) const;
    int GetItemHeight(int nIndex) const { return static_cast<int>(SendMessage(CB_GETITEMHEIGHT, nIndex)); }
    int GetDroppedWidth() const { return static_cast<int>(SendMessage(CB_GETDROPPEDWIDTH)); }
    int SetDroppedWidth(UINT nWidth) { return static_cast<int>(SendMessage(CB_SETDROPPEDWIDTH, nWidth)); }
    void GetDroppedControlRect(LPRECT lprect) const
    {
        SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(lprect));
    }
};

// A modeless dialog made from an in-memory template.
class AFXLITE_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() {}
    ~CDialog() override;

    BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = NULL);
    // Called once the dialog and its controls exist; TRUE lets the system set the focus.
    virtual BOOL OnInitDialog() { return TRUE; }

private:
    static INT_PTR CALLBACK DialogProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
};
