// The library's free functions for results, traces and exceptions.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

// True exactly when hr is negative. The context and line mark the call site and
// are otherwise ignored.
TESVORUTIL_API bool MFailed(HRESULT hr, const wchar_t* context, UINT line);

// The low 16 bits of hr when its customer bit (0x20000000) is set, else 0x7FFF.
TESVORUTIL_API short UVLRGetSoftErrCode(HRESULT hr);

// Formats the text and hands it to Corvel's MDebugTrace as its format, so the
// text is formatted a second time there (a literal percent sign needs "%%%%").
// Texts are cut at 2047 characters. A channel below 0x10000 is a string-resource
// identifier looked up along the module chain; it reaches Corvel in the thread's
// ANSI code page.
TESVORUTIL_API void UVLRDebugOutputEx(const wchar_t* channel, const wchar_t* format, ...);

// Does nothing (release behaviour).
TESVORUTIL_API void UVLRDebugOutput(const wchar_t* format, ...);

// Always an empty string: no system message is looked up.
TESVORUTIL_API CString UGetComError(HRESULT hr);

// Throw a heap MCVLRException by pointer; the file and line are ignored.
[[noreturn]] TESVORUTIL_API void MU_ThrowVLRException(HRESULT hr, const wchar_t* file, DWORD line);
[[noreturn]] TESVORUTIL_API void MU_ThrowVLRException(UINT id, const wchar_t* file, DWORD line);
[[noreturn]] TESVORUTIL_API void MU_ThrowVLRException(int code, const wchar_t* file, DWORD line);
[[noreturn]] TESVORUTIL_API void MU_ThrowVLRException(const wchar_t* message, const wchar_t* file, DWORD line);
