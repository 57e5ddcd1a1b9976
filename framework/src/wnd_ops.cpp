// Windows: children, text, coordinates, contexts, fonts and subclassing.
#include "handlemap.h"

CWnd* CWnd::GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }

void CWnd::GetWindowText(CString& rString) const
{
    int nLength = ::GetWindowTextLengthW(m_hWnd);
    ::GetWindowTextW(m_hWnd, rString.GetBufferSetLength(nLength), nLength + 1);
    rString.ReleaseBuffer();
}

void CWnd::ScreenToClient(LPRECT lpRect) const
{
    ::ScreenToClient(m_hWnd, reinterpret_cast<LPPOINT>(lpRect));
    ::ScreenToClient(m_hWnd, reinterpret_cast<LPPOINT>(lpRect) + 1);
}

void CWnd::ClientToScreen(LPRECT lpRect) const
{
    ::ClientToScreen(m_hWnd, reinterpret_cast<LPPOINT>(lpRect));
    ::ClientToScreen(m_hWnd, reinterpret_cast<LPPOINT>(lpRect) + 1);
}

CDC* CWnd::GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }

int CWnd::ReleaseDC(CDC* pDC) { return ::ReleaseDC(m_hWnd, pDC->GetSafeHdc()); }

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)));
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw)
{
    ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(pFont->GetSafeHandle()), bRedraw);
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!::IsWindow(hWnd) || !Attach(hWnd))
        return FALSE;
    m_pfnSuper = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::SubclassProc)));
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    HWND hControl = ::GetDlgItem(pParent->GetSafeHwnd(), nID);
    return hControl != NULL && SubclassWindow(hControl);
}

HWND CWnd::UnsubclassWindow()
{
    if (m_pfnSuper != NULL)
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = NULL;
    return Detach();
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper != NULL)
        return ::CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CALLBACK CWnd::SubclassProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* pWnd = FromHandlePermanent(hWnd);
    if (pWnd == NULL)
        return ::DefWindowProcW(hWnd, message, wParam, lParam);
    if (message != WM_NCDESTROY)
        return pWnd->WindowProc(message, wParam, lParam);
    // The last message: the object lets go of the handle so that its destructor
    // does not destroy a window that no longer exists.
    LRESULT result = pWnd->DefWindowProc(message, wParam, lParam);
    pWnd->m_pfnSuper = NULL;
    pWnd->Detach();
    pWnd->PostNcDestroy();
    return result;
}
