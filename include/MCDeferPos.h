// MCDeferPos: one deferred-position batch (BeginDeferWindowPos .. EndDeferWindowPos)
// so that a dialog moves many children at once without flicker. The batch is
// applied when the object goes out of scope. A failing defer ends the batch (the
// system discards it) and every later call returns 0.
#pragma once
#include <afxwin.h>
#include "TesvorUtilExport.h"

class CWnd;

class TESVORUTIL_API MCDeferPos {
public:
    explicit MCDeferPos(int nNumWindows = 1);
    // Copies share the batch: both end it, only the first end reaches the system.
    MCDeferPos(const MCDeferPos& other) = default;
    MCDeferPos& operator=(const MCDeferPos& other) = default;
    ~MCDeferPos();

    void EndDeferWindowPos();

    BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    BOOL SetWindowPos(CWnd* pWnd, CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    BOOL MoveWindow(HWND hWnd, int x, int y, int cx, int cy, BOOL bRepaint);
    BOOL MoveWindow(CWnd* pWnd, int x, int y, int cx, int cy, BOOL bRepaint);
    BOOL MoveWindow(CWnd* pWnd, const CRect& rc, BOOL bRepaint);

private:
    HDWP m_hDWP;
};
