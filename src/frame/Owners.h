// Owners of system resources, in the manner of WIL's unique_any: each holds one
// handle and frees it with the function named on its line when it goes out of
// scope. get() lends the handle, put() receives one from an output parameter,
// release() gives it up (for results handed to the caller, and for the few
// places where the library keeps a resource on purpose).
#pragma once
#include <windows.h>
#include <objbase.h>
#include <utility>

template <class Handle, auto Free>
class UniqueAny {
public:
    UniqueAny() = default;
    explicit UniqueAny(Handle handle) : m_handle(handle) {}
    ~UniqueAny() { reset(); }
    UniqueAny(UniqueAny&& other) noexcept : m_handle(other.release()) {}
    UniqueAny& operator=(UniqueAny&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    UniqueAny(const UniqueAny&) = delete;
    UniqueAny& operator=(const UniqueAny&) = delete;

    void reset(Handle handle = Handle())
    {
        if (m_handle != Handle())
            Free(m_handle);
        m_handle = handle;
    }
    Handle release() { return std::exchange(m_handle, Handle()); }
    Handle get() const { return m_handle; }
    Handle* put()
    {
        reset();
        return &m_handle;
    }
    explicit operator bool() const { return m_handle != Handle(); }

private:
    Handle m_handle = Handle();
};

using UniqueHGlobal = UniqueAny<HGLOBAL, ::GlobalFree>;
template <class T = void> using UniqueHLocal = UniqueAny<T*, ::LocalFree>;
using UniqueSid = UniqueAny<PSID, ::FreeSid>;
using UniqueHandle = UniqueAny<HANDLE, ::CloseHandle>;  // kernel objects that are null when absent
using UniqueHKey = UniqueAny<HKEY, ::RegCloseKey>;
template <class T = void> using UniqueCoTaskMem = UniqueAny<T*, ::CoTaskMemFree>;
template <class Gdi> using UniqueGdiObject = UniqueAny<Gdi, ::DeleteObject>;
using UniqueHDesk = UniqueAny<HDESK, ::CloseDesktop>;

// A global block locked for the owner's life; Data() is null when the lock failed.
class UniqueGlobalLock {
public:
    explicit UniqueGlobalLock(HGLOBAL memory) : m_memory(memory), m_data(::GlobalLock(memory)) {}
    ~UniqueGlobalLock()
    {
        if (m_data != NULL)
            ::GlobalUnlock(m_memory);
    }
    UniqueGlobalLock(const UniqueGlobalLock&) = delete;
    UniqueGlobalLock& operator=(const UniqueGlobalLock&) = delete;
    template <class T = void> T* Data() const { return static_cast<T*>(m_data); }

private:
    HGLOBAL m_memory;
    void* m_data;
};

// A device context of a window (GetDC), released with the window it came from.
class UniqueWindowDC {
public:
    explicit UniqueWindowDC(HWND window) : m_window(window), m_dc(::GetDC(window)) {}
    ~UniqueWindowDC()
    {
        if (m_dc != NULL)
            ::ReleaseDC(m_window, m_dc);
    }
    UniqueWindowDC(const UniqueWindowDC&) = delete;
    UniqueWindowDC& operator=(const UniqueWindowDC&) = delete;
    HDC get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// An object selected into a device context; the one it displaced goes back in
// when the owner goes. A null object selects nothing.
class UniqueSelectObject {
public:
    UniqueSelectObject(HDC dc, HGDIOBJ object)
        : m_dc(dc), m_previous(dc != NULL && object != NULL ? ::SelectObject(dc, object) : NULL)
    {
    }
    ~UniqueSelectObject()
    {
        if (m_previous != NULL && m_previous != HGDI_ERROR)
            ::SelectObject(m_dc, m_previous);
    }
    UniqueSelectObject(const UniqueSelectObject&) = delete;
    UniqueSelectObject& operator=(const UniqueSelectObject&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// A palette selected into a device context and realised; the previous palette is
// selected back (as a background palette, as GDI expects on the way out) and
// realised again when the owner goes.
class UniqueSelectPalette {
public:
    UniqueSelectPalette(HDC dc, HPALETTE palette) : m_dc(dc), m_previous(NULL)
    {
        if (dc != NULL && palette != NULL) {
            m_previous = ::SelectPalette(dc, palette, FALSE);
            ::RealizePalette(dc);
        }
    }
    ~UniqueSelectPalette()
    {
        if (m_previous != NULL) {
            ::SelectPalette(m_dc, m_previous, TRUE);
            ::RealizePalette(m_dc);
        }
    }
    UniqueSelectPalette(const UniqueSelectPalette&) = delete;
    UniqueSelectPalette& operator=(const UniqueSelectPalette&) = delete;

private:
    HDC m_dc;
    HPALETTE m_previous;
};
