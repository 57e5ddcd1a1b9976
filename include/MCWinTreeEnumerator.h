// MCWinTreeEnumerator: walks every descendant window of the context's root
// (depth first, through EnumChildWindows) and hands each to the context.
#pragma once
#include <windows.h>
#include "MCWinTreeEnumCtx.h"
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCWinTreeEnumerator {
public:
    explicit MCWinTreeEnumerator(MCWinTreeEnumCtx* pCtx = NULL);

    // FALSE while a walk is running.
    BOOL SetEnumCtx(MCWinTreeEnumCtx* pCtx);
    MCWinTreeEnumCtx* GetEnumCtx();
    BOOL IsEnumerating();
    // Marks a running walk aborted (meant for use inside a callback); always TRUE.
    BOOL AbortEnumerating();
    // TRUE when every window was visited; FALSE when busy, without a context or a
    // valid root, or when the walk was stopped.
    BOOL StartEnumerating();

private:
    static BOOL CALLBACK EnumChildProc(HWND hWnd, LPARAM lParam);
    BOOL OnProcessChildWnd(HWND hWnd);

    MCWinTreeEnumCtx* m_pCtx;  // not owned
    int m_nLevel;              // -1 when idle
    int m_bAborted;
};
