// afxlite: configuration shared by every framework header.
#pragma once

#ifndef _UNICODE
#error afxlite is a Unicode framework: define UNICODE and _UNICODE
#endif

#include <windows.h>
#include <tchar.h>
#include <cstdarg>
#include <cstddef>
#include <new>

#if defined(AFXLITE_BUILD)
#define AFXLITE_API __declspec(dllexport)
#else
#define AFXLITE_API __declspec(dllimport)
#endif

#ifndef AFXAPI
#define AFXAPI __stdcall
#endif
#ifndef AFX_CDECL
#define AFX_CDECL __cdecl
#endif
#ifndef AFX_INLINE
#define AFX_INLINE inline
#endif

// Diagnostics of the release framework: checks compile away, VERIFY keeps its expression.
#ifndef ASSERT
#define ASSERT(f) ((void)0)
#endif
#ifndef VERIFY
#define VERIFY(f) ((void)(f))
#endif
#ifndef ASSERT_VALID
#define ASSERT_VALID(p) ((void)0)
#endif
#ifndef TRACE
#define TRACE(...) ((void)0)
#endif
#ifndef UNUSED_ALWAYS
#define UNUSED_ALWAYS(x) (void)(x)
#endif

// The platform C runtime's own wide formatter and scanner. MinGW's C++ library
// forces its C99 replacements, in which %s of a wide format is a narrow string;
// code written for this framework expects the platform's meaning (%s wide, %S
// narrow) and its scanning rules, so these names bind to msvcrt directly.
#define AFXLITE_CRT_SYMBOL(name) __MINGW64_STRINGIFY(__MINGW_USYMBOL(name))
extern "C" int __cdecl AfxCrtVsnwprintf(wchar_t* buffer, size_t count, const wchar_t* format,
                                        va_list args) __asm__(AFXLITE_CRT_SYMBOL(_vsnwprintf));
extern "C" int __cdecl AfxCrtVscwprintf(const wchar_t* format, va_list args)
    __asm__(AFXLITE_CRT_SYMBOL(_vscwprintf));
extern "C" int __cdecl AfxCrtSwscanf(const wchar_t* text, const wchar_t* format, ...)
    __asm__(AFXLITE_CRT_SYMBOL(swscanf));
