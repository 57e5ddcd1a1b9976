#include "MCWndEffects.h"

namespace {

typedef BOOL(WINAPI* SetLayeredWindowAttributesProc)(HWND, COLORREF, BYTE, DWORD);
typedef BOOL(WINAPI* AnimateWindowProc)(HWND, DWORD, DWORD);
typedef HDESK(WINAPI* OpenInputDesktopProc)(DWORD, BOOL, ACCESS_MASK);

// Read objects, create window, hook control, enumerate, write objects.
const ACCESS_MASK kInputDesktopAccess = DESKTOP_READOBJECTS | DESKTOP_CREATEWINDOW | DESKTOP_HOOKCONTROL |
                                        DESKTOP_ENUMERATE | DESKTOP_WRITEOBJECTS;

template <class Proc>
Proc LookUp(HMODULE hModule, const char* name)
{
    if (hModule == NULL)
        return NULL;
    return reinterpret_cast<Proc>(reinterpret_cast<void (*)()>(::GetProcAddress(hModule, name)));
}

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
    auto setAttributes = LookUp<SetLayeredWindowAttributesProc>(m_hUser32, "SetLayeredWindowAttributes");
    if (setAttributes == NULL || !MakeLayered(hWnd))
        return FALSE;
    return setAttributes(hWnd, 0, nAlpha, LWA_ALPHA);
}

BOOL MCWndEffects::SetEffects_AnimateWindow(HWND hWnd, DWORD dwTime, DWORD dwFlags)
{
    auto animate = LookUp<AnimateWindowProc>(m_hUser32, "AnimateWindow");
    if (animate == NULL || !MakeLayered(hWnd))
        return FALSE;
    return animate(hWnd, dwTime, dwFlags);
}

bool MCWndEffects::IsDesktopActive()
{
    auto openInputDesktop = LookUp<OpenInputDesktopProc>(m_hUser32, "OpenInputDesktop");
    if (openInputDesktop == NULL)
        return true;
    HDESK hDesk = openInputDesktop(0, FALSE, kInputDesktopAccess);
    if (hDesk == NULL)
        return false;
    ::CloseDesktop(hDesk);
    return true;
}
