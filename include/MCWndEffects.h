// MCWndEffects: alpha transparency and animated show/hide of a window, and a test
// of whether the input desktop is reachable. The entry points are looked up in
// User32 at run time, so the library loads on systems that lack them.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCWndEffects {
public:
    MCWndEffects();
    // Copies share the module handle without loading User32 again, and each copy
    // frees it; User32 stays loaded in any process that has windows.
    MCWndEffects(const MCWndEffects& other) = default;
    MCWndEffects& operator=(const MCWndEffects& other) = default;
    virtual ~MCWndEffects();

    // Both make the window layered first. A window whose previous extended style
    // was 0 gets the layered style but no effect, and the result is 0.
    BOOL SetEffects_TransparentWnd(HWND hWnd, BYTE nAlpha);
    BOOL SetEffects_AnimateWindow(HWND hWnd, DWORD dwTime, DWORD dwFlags);
    // False while the workstation is locked or another desktop has the input.
    bool IsDesktopActive();

private:
    HMODULE m_hUser32;
};
