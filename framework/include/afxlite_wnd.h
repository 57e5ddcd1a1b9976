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

private:
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
};
