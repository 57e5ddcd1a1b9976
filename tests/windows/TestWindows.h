// Real windows for the window-helper tests: plain windows of a private class at
// known positions, destroyed by their owner object.
#pragma once
#include <windows.h>

// Owns one window and destroys it (with its children) at scope end.
class TestWindow {
public:
    TestWindow() = default;
    explicit TestWindow(HWND hWnd) : m_hWnd(hWnd) {}
    TestWindow(TestWindow&& other) noexcept : m_hWnd(other.m_hWnd) { other.m_hWnd = NULL; }
    TestWindow& operator=(TestWindow&& other) noexcept
    {
        Reset(other.m_hWnd);
        other.m_hWnd = NULL;
        return *this;
    }
    ~TestWindow() { Reset(NULL); }
    void Reset(HWND hWnd)
    {
        if (m_hWnd != NULL && ::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
        m_hWnd = hWnd;
    }
    HWND Get() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

private:
    HWND m_hWnd = NULL;
};

inline const wchar_t* TestWindowClass()
{
    static ATOM atom = [] {
        WNDCLASSEXW wc = {};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = ::GetModuleHandleW(NULL);
        wc.hCursor = ::LoadCursorW(NULL, IDC_ARROW);
        wc.lpszClassName = L"TesvorTestWindow";
        return ::RegisterClassExW(&wc);
    }();
    return atom != 0 ? L"TesvorTestWindow" : NULL;
}

// A top-level popup (no frame, so its client area starts at its window corner),
// hidden unless asked: Wine without a window manager takes seconds to unmap one.
inline HWND MakeTopWindow(int x, int y, int cx, int cy, DWORD exStyle = 0, DWORD style = WS_POPUP)
{
    return ::CreateWindowExW(exStyle, TestWindowClass(), L"top", style, x, y, cx, cy, NULL, NULL,
                             ::GetModuleHandleW(NULL), NULL);
}

inline HWND MakeChildWindow(HWND hParent, int x, int y, int cx, int cy, DWORD style = WS_CHILD | WS_VISIBLE)
{
    return ::CreateWindowExW(0, TestWindowClass(), L"child", style, x, y, cx, cy, hParent, NULL,
                             ::GetModuleHandleW(NULL), NULL);
}

// Lets the windows settle (pending messages, deferred moves) before reading them back.
inline void PumpMessages()
{
    MSG msg;
    while (::PeekMessageW(&msg, NULL, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
}
