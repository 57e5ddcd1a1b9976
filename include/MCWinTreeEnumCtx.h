// MCWinTreeEnumCtx: the callback object of MCWinTreeEnumerator. Derive from it and
// implement OnWindowFound; the root and the parameter are the caller's.
#pragma once
#include <windows.h>
#include "MEEnumeratingAction.h"
#include "TesvorUtilExport.h"

struct TESVORUTIL_API MCWinTreeEnumCtx {
    MCWinTreeEnumCtx();
    MCWinTreeEnumCtx(HWND hWndRoot, int nParam);
    MCWinTreeEnumCtx(const MCWinTreeEnumCtx& other);
    MCWinTreeEnumCtx& operator=(const MCWinTreeEnumCtx& other);
    virtual ~MCWinTreeEnumCtx();

    // Called for every descendant of the root; nLevel is always 0.
    virtual MEEnumeratingAction OnWindowFound(HWND hWnd, int nLevel) = 0;
    // Hooks for derived walkers; the enumerator itself never calls them.
    virtual MEEnumeratingAction OnSubTreeEnumBegin(HWND hWnd, int nLevel);
    virtual MEEnumeratingAction OnSubTreeEnumFinish(HWND hWnd, int nLevel);
    // Called once after a walk that visited every window.
    virtual void OnEnumeratingFinished();

    void SetEnumParams(HWND hWndRoot, int nParam);

    HWND m_hWndRoot;
    int m_nParam;
};
