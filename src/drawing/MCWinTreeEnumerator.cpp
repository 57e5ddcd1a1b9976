#include "MCWinTreeEnumerator.h"

MCWinTreeEnumCtx::MCWinTreeEnumCtx() : m_hWndRoot(NULL), m_nParam(0) {}
MCWinTreeEnumCtx::MCWinTreeEnumCtx(HWND hWndRoot, int nParam) : m_hWndRoot(hWndRoot), m_nParam(nParam) {}
MCWinTreeEnumCtx::MCWinTreeEnumCtx(const MCWinTreeEnumCtx& other)
    : m_hWndRoot(other.m_hWndRoot), m_nParam(other.m_nParam) {}

MCWinTreeEnumCtx& MCWinTreeEnumCtx::operator=(const MCWinTreeEnumCtx& other)
{
    m_hWndRoot = other.m_hWndRoot;
    m_nParam = other.m_nParam;
    return *this;
}

MCWinTreeEnumCtx::~MCWinTreeEnumCtx() {}

MEEnumeratingAction MCWinTreeEnumCtx::OnSubTreeEnumBegin(HWND, int) { return EnumActionContinue; }
MEEnumeratingAction MCWinTreeEnumCtx::OnSubTreeEnumFinish(HWND, int) { return EnumActionContinue; }
void MCWinTreeEnumCtx::OnEnumeratingFinished() {}

void MCWinTreeEnumCtx::SetEnumParams(HWND hWndRoot, int nParam)
{
    m_hWndRoot = hWndRoot;
    m_nParam = nParam;
}

MCWinTreeEnumerator::MCWinTreeEnumerator(MCWinTreeEnumCtx* pCtx) : m_pCtx(pCtx), m_nLevel(-1), m_bAborted(0) {}

BOOL MCWinTreeEnumerator::SetEnumCtx(MCWinTreeEnumCtx* pCtx)
{
    if (IsEnumerating())
        return FALSE;
    m_pCtx = pCtx;
    return TRUE;
}

MCWinTreeEnumCtx* MCWinTreeEnumerator::GetEnumCtx() { return m_pCtx; }

BOOL MCWinTreeEnumerator::IsEnumerating() { return m_nLevel >= 0; }

BOOL MCWinTreeEnumerator::AbortEnumerating()
{
    if (IsEnumerating())
        m_bAborted = 1;
    return TRUE;
}

BOOL MCWinTreeEnumerator::StartEnumerating()
{
    if (IsEnumerating() || m_pCtx == NULL || !::IsWindow(m_pCtx->m_hWndRoot))
        return FALSE;
    m_nLevel = 0;
    m_bAborted = 0;
    if (::EnumChildWindows(m_pCtx->m_hWndRoot, EnumChildProc, reinterpret_cast<LPARAM>(this))) {
        m_pCtx->OnEnumeratingFinished();
        m_nLevel = -1;
        m_bAborted = 0;
        return TRUE;
    }
    // The abort flag stays set so that the caller can tell an abort from a stop.
    m_nLevel = -1;
    return FALSE;
}

BOOL CALLBACK MCWinTreeEnumerator::EnumChildProc(HWND hWnd, LPARAM lParam)
{
    return reinterpret_cast<MCWinTreeEnumerator*>(lParam)->OnProcessChildWnd(hWnd);
}

BOOL MCWinTreeEnumerator::OnProcessChildWnd(HWND hWnd)
{
    if (m_bAborted)
        return FALSE;
    switch (m_pCtx->OnWindowFound(hWnd, m_nLevel)) {
    case EnumActionContinue:
        return TRUE;
    case EnumActionAbort:
        m_bAborted = 1;
        return FALSE;
    default:
        return FALSE;
    }
}
