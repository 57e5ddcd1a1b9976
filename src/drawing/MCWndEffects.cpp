#include "MCWndEffects.h"
#include "system/ProcBinding.h"
#include "frame/Owners.h"

namespace {

typedef BOOL(WINAPI* SetLayeredWindowAttributesProc)(HWND, COLORREF, BYTE, DWORD);
typedef BOOL(WINAPI* AnimateWindowProc)(HWND, DWORD, DWORD);
typedef HDESK(WINAPI* OpenInputDesktopProc)(DWORD, BOOL, ACCESS_MASK);

// Read objects, create window, hook control, enumerate, write objects.
const ACCESS_MASK kInputDesktopAccess = DESKTOP_READOBJECTS | DESKTOP_CREATEWINDOW | DESKTOP_HOOKCONTROL |
                                        DESKTOP_ENUMERATE | DESKTOP_WRITEOBJECTS;

// Both effects need a layered window. The previous style must read as a positive
// number, so a window that had no extended style at all is refused here even
// though it has just become layered; callers rely on that result.
BOOL MakeLayered(HWND hWnd)
{
    LONG exStyle = static_cast<LONG>(::GetWindowLongPtrW(hWnd, GWL_EXSTYLE));
    if (exStyle & WS_EX_LAYERED)
        return TRUE;
    LONG previous = static_cast<LONG>(::SetWindowLongPtrW(hWnd, GWL_EXSTYLE, exStyle | WS_EX_LAYERED));
    return previous > 0;
}

}  // namespace

MCWndEffects::MCWndEffects() : m_hUser32(::LoadLibraryW(L"User32.dll")) {}

MCWndEffects::~MCWndEffects()
{
    if (m_hUser32 != NULL)
        ::FreeLibrary(m_hUser32);
}

BOOL MCWndEffects::SetEffects_TransparentWnd(HWND hWnd, BYTE nAlpha)
{
    SetLayeredWindowAttributesProc setAttributes;
    if (!BindProc(m_hUser32, "SetLayeredWindowAttributes", setAttributes) || !MakeLayered(hWnd))
        return FALSE;
    return setAttributes(hWnd, 0, nAlpha, LWA_ALPHA);
}

BOOL MCWndEffects::SetEffects_AnimateWindow(HWND hWnd, DWORD dwTime, DWORD dwFlags)
{
    AnimateWindowProc animate;
    if (!BindProc(m_hUser32, "AnimateWindow", animate) || !MakeLayered(hWnd))
        return FALSE;
    return animate(hWnd, dwTime, dwFlags);
}

bool MCWndEffects::IsDesktopActive()
{
    OpenInputDesktopProc openInputDesktop;
    if (!BindProc(m_hUser32, "OpenInputDesktop", openInputDesktop))
        return true;
    UniqueHDesk desktop(openInputDesktop(0, FALSE, kInputDesktopAccess));
    return static_cast<bool>(desktop);
}
