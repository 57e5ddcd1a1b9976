// The per-thread handle maps. thread_local objects are destroyed at thread exit
// (and at process exit for the main thread), which deletes what temporaries remain.
#include "handlemap.h"

namespace {

CGdiObject* MakeTempGdiObject(HANDLE h)
{
    CGdiObject* p;
    switch (::GetObjectType(h)) {
    case OBJ_BITMAP: p = new CBitmap; break;
    case OBJ_BRUSH: p = new CBrush; break;
    case OBJ_FONT: p = new CFont; break;
    case OBJ_PAL: p = new CPalette; break;
    case OBJ_PEN:
    case OBJ_EXTPEN: p = new CPen; break;
    default: p = new CGdiObject; break;
    }
    p->m_hObject = h;
    return p;
}
void ForgetGdiObject(CGdiObject* p) { p->m_hObject = NULL; }

CDC* MakeTempDC(HANDLE h)
{
    CDC* p = new CDC;
    p->m_hDC = p->m_hAttribDC = static_cast<HDC>(h);
    return p;
}
void ForgetDC(CDC* p) { p->m_hDC = p->m_hAttribDC = NULL; }

CWnd* MakeTempWnd(HANDLE h)
{
    CWnd* p = new CWnd;
    p->m_hWnd = static_cast<HWND>(h);
    return p;
}
void ForgetWnd(CWnd* p) { p->m_hWnd = NULL; }

struct ThreadMaps {
    int lockCount = 0;
    CHandleMapLite<CGdiObject> gdi{MakeTempGdiObject, ForgetGdiObject};
    CHandleMapLite<CDC> dc{MakeTempDC, ForgetDC};
    CHandleMapLite<CWnd> wnd{MakeTempWnd, ForgetWnd};
};

ThreadMaps& Maps()
{
    thread_local ThreadMaps maps;
    return maps;
}

}  // namespace

CHandleMapLite<CGdiObject>& AfxLiteGdiMap() { return Maps().gdi; }
CHandleMapLite<CDC>& AfxLiteDCMap() { return Maps().dc; }
CHandleMapLite<CWnd>& AfxLiteWndMap() { return Maps().wnd; }

void AFXAPI AfxLockTempMaps() { ++Maps().lockCount; }

BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps)
{
    ThreadMaps& maps = Maps();
    if (maps.lockCount != 0 && --maps.lockCount == 0 && bDeleteTemps) {
        // Windows first: a window's temporaries may refer to its device contexts.
        maps.wnd.DeleteTemp();
        maps.dc.DeleteTemp();
        maps.gdi.DeleteTemp();
    }
    return maps.lockCount != 0;
}
