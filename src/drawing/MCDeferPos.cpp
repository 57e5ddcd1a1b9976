#include "MCDeferPos.h"

namespace {
// Position and size only: z-order, activation and owner order stay as they are.
const UINT kMoveFlags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
}

MCDeferPos::MCDeferPos(int nNumWindows) : m_hDWP(::BeginDeferWindowPos(nNumWindows)) {}

MCDeferPos::~MCDeferPos()
{
    if (m_hDWP != NULL)
        EndDeferWindowPos();
}

void MCDeferPos::EndDeferWindowPos()
{
    if (m_hDWP == NULL)
        return;
    ::EndDeferWindowPos(m_hDWP);
    m_hDWP = NULL;
}

BOOL MCDeferPos::SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    if (m_hDWP == NULL)
        return FALSE;
    // On failure the system has already discarded the batch: nothing is left to end.
    m_hDWP = ::DeferWindowPos(m_hDWP, hWnd, hWndInsertAfter, x, y, cx, cy, nFlags);
    return m_hDWP != NULL;
}

BOOL MCDeferPos::SetWindowPos(CWnd* pWnd, CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    return SetWindowPos(pWnd->GetSafeHwnd(), pWndInsertAfter->GetSafeHwnd(), x, y, cx, cy, nFlags);
}

BOOL MCDeferPos::MoveWindow(HWND hWnd, int x, int y, int cx, int cy, BOOL bRepaint)
{
    return SetWindowPos(hWnd, NULL, x, y, cx, cy, bRepaint ? kMoveFlags : kMoveFlags | SWP_NOREDRAW);
}

BOOL MCDeferPos::MoveWindow(CWnd* pWnd, int x, int y, int cx, int cy, BOOL bRepaint)
{
    return MoveWindow(pWnd->GetSafeHwnd(), x, y, cx, cy, bRepaint);
}

BOOL MCDeferPos::MoveWindow(CWnd* pWnd, const CRect& rc, BOOL bRepaint)
{
    return MoveWindow(pWnd->GetSafeHwnd(), rc.left, rc.top, rc.Width(), rc.Height(), bRepaint);
}
