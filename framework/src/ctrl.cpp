// The standard controls and modeless dialogs.
#include <afxwin.h>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CDialog, CWnd)

CStatic::~CStatic() {}
CButton::~CButton() {}
CEdit::~CEdit() {}
CComboBox::~CComboBox() {}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    int nLength = GetLBTextLen(nIndex);
    if (nLength == CB_ERR) {
        rString.Empty();
        return;
    }
    int nCopied = GetLBText(nIndex, rString.GetBufferSetLength(nLength));
    rString.ReleaseBuffer(nCopied == CB_ERR ? 0 : nCopied);
}

// Destroyed here rather than in ~CWnd so that the window goes while this object is
// still a CDialog.
CDialog::~CDialog()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    HWND hWnd = ::CreateDialogIndirectParamW(AfxGetResourceHandle(), lpDialogTemplate, pParentWnd->GetSafeHwnd(),
                                             DialogProc, reinterpret_cast<LPARAM>(this));
    return hWnd != NULL && m_hWnd == hWnd;
}

INT_PTR CALLBACK CDialog::DialogProc(HWND hWnd, UINT message, WPARAM, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: {
        CDialog* pDialog = reinterpret_cast<CDialog*>(lParam);
        pDialog->Attach(hWnd);
        return pDialog->OnInitDialog();
    }
    case WM_NCDESTROY:
        if (CWnd* pWnd = FromHandlePermanent(hWnd)) {
            pWnd->Detach();
            static_cast<CDialog*>(pWnd)->PostNcDestroy();
        }
        return FALSE;
    default:
        return FALSE;
    }
}
