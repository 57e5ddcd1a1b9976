// Real windows for the window-helper tests: plain windows of a private class at
// known positions, destroyed by their owner object.
#pragma once
#include <windows.h>

// Owns one window and destroys it (with its children) at scope end.
class TestWindow {
public:
    explicit TestWindow(HWND hWnd) : m_hWnd(hWnd) {}
    ~TestWindow()
    {
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    HWND Get() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

private:
    HWND m_hWnd;
};

inline HWND MakeWindow(DWORD exStyle, HWND hParent, int x, int y, int cx, int cy, DWORD style)
{
    static const ATOM atom = [] {
        WNDCLASSEXW wc = {};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = ::GetModuleHandleW(NULL);
        wc.lpszClassName = L"TesvorTestWindow";
        return ::RegisterClassExW(&wc);
    }();
    return ::CreateWindowExW(exStyle, MAKEINTATOM(atom), L"test", style, x, y, cx, cy, hParent, NULL,
                             ::GetModuleHandleW(NULL), NULL);
}

// A top-level popup (no frame, so its client area starts at its window corner),
// hidden unless asked: Wine without a window manager takes seconds to unmap one.
inline HWND MakeTopWindow(int x, int y, int cx, int cy, DWORD exStyle = 0, DWORD style = WS_POPUP)
{
    return MakeWindow(exStyle, NULL, x, y, cx, cy, style);
}

inline HWND MakeChildWindow(HWND hParent, int x, int y, int cx, int cy)
{
    return MakeWindow(0, hParent, x, y, cx, cy, WS_CHILD | WS_VISIBLE);
}
