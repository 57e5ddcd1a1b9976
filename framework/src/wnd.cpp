// Windows: the handle wrapper and its maps.
#include "handlemap.h"

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

CWnd::~CWnd()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

CWnd* PASCAL CWnd::FromHandle(HWND hWnd) { return AfxLiteWndMap().FromHandle(hWnd); }
CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd) { return AfxLiteWndMap().LookupPermanent(hWnd); }
void PASCAL CWnd::DeleteTempMap() { AfxLiteWndMap().DeleteTemp(); }

BOOL CWnd::Attach(HWND hWndNew)
{
    if (hWndNew == NULL)
        return FALSE;
    m_hWnd = hWndNew;
    AfxLiteWndMap().SetPermanent(hWndNew, this);
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND hWnd = m_hWnd;
    if (hWnd != NULL)
        AfxLiteWndMap().RemoveHandle(hWnd);
    m_hWnd = NULL;
    return hWnd;
}

BOOL CWnd::DestroyWindow()
{
    if (m_hWnd == NULL)
        return FALSE;
    HWND hWnd = Detach();
    return ::DestroyWindow(hWnd);
}
