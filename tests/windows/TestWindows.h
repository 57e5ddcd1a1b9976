// Real windows for the window-helper tests: plain windows of a private class at
// known positions, destroyed (with their children) by their owner object.
#pragma once
#include <windows.h>
#include "frame/Owners.h"

using TestWindow = UniqueAny<HWND, ::DestroyWindow>;

// A child is visible; a top-level window is a popup (no frame, so its client area starts at its window
// corner), hidden unless asked: Wine without a window manager takes seconds to unmap one.
inline HWND MakeWindow(HWND hParent, int x, int y, int cx, int cy, DWORD exStyle = 0, DWORD style = WS_POPUP)
{
    static const ATOM atom = [] {
        const WNDCLASSEXW wc = {sizeof(wc), 0, ::DefWindowProcW, 0, 0, ::GetModuleHandleW(NULL),
                                NULL, NULL, NULL, NULL, L"TesvorTestWindow", NULL};
        return ::RegisterClassExW(&wc);
    }();
    return ::CreateWindowExW(exStyle, MAKEINTATOM(atom), L"test", hParent != NULL ? WS_CHILD | WS_VISIBLE : style, x,
                             y, cx, cy, hParent, NULL, ::GetModuleHandleW(NULL), NULL);
}
