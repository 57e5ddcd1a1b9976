// afxlite: windows. A CWnd wraps an HWND; FromHandle gives the permanent wrapper
// of an attached window or a temporary one (see afxlite_gdi.h for the lifetime of
// temporaries).
#pragma once
#include "afxlite_cmdtarget.h"
#include "afxlite_gdi.h"

class AFXLITE_API CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)
public:
    CWnd() : m_hWnd(NULL) {}
    // Destroys a window that is still attached, as the framework does.
    ~CWnd() override;

    HWND m_hWnd;
    operator HWND() const { return GetSafeHwnd(); }
    HWND GetSafeHwnd() const { return AfxLiteIsNullObject(this) ? NULL : m_hWnd; }

    static CWnd* PASCAL FromHandle(HWND hWnd);
    static CWnd* PASCAL FromHandlePermanent(HWND hWnd);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HWND hWndNew);
    HWND Detach();

    virtual BOOL DestroyWindow();

    // Subclassing makes this object the window's permanent wrapper and routes the
    // window's messages through WindowProc until the window is destroyed (the
    // object is then detached) or UnsubclassWindow is called.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();

    // Children: the permanent wrapper where one exists, else a temporary.
    CWnd* GetDlgItem(int nID) const;
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    // The window that had the focus before (a temporary or permanent wrapper).
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* PASCAL GetFocus() { return FromHandle(::GetFocus()); }

    void SetWindowText(LPCTSTR lpszString) { ::SetWindowTextW(m_hWnd, lpszString); }
    int GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const
    {
        return ::GetWindowTextW(m_hWnd, lpszStringBuf, nMaxCount);
    }
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }

    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const;
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const;
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    }
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE)
    {
        MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint);
    }

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessageW(m_hWnd, message, wParam, lParam);
    }

    // The client-area context as a temporary CDC; give it back with ReleaseDC.
    CDC* GetDC();
    int ReleaseDC(CDC* pDC);
    CFont* GetFont() const;
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);

    // Messages of a subclassed window; the default passes them on to the
    // window's previous procedure.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    // Called after the window has been destroyed and this object detached.
    virtual void PostNcDestroy() {}

    WNDPROC m_pfnSuper = NULL;  // the procedure a subclassed window had before

private:
    static LRESULT CALLBACK SubclassProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
};
