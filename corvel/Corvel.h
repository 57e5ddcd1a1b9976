// Corvel.dll stand-in: the two entry points of the sibling core library that
// TesvorUtil uses, plus a trace sink through which tests observe trace lines.
#pragma once
#include <afx.h>

#if defined(CORVEL_BUILD)
#define CORVEL_API __declspec(dllexport)
#else
#define CORVEL_API __declspec(dllimport)
#endif

// Formats one trace line and writes it to the debugger output (and to the sink, if set).
CORVEL_API void MDebugTrace(const char* channel, const wchar_t* format, ...);

// Receives every formatted trace line; pass null to remove it. Returns the previous sink.
typedef void (*MDebugTraceSink)(const char* channel, const wchar_t* line);
CORVEL_API MDebugTraceSink MDebugTraceSetSink(MDebugTraceSink sink);

namespace MNStringUtils {
// Removes leading and trailing white space in place.
CORVEL_API void Trim(CString& str);
}  // namespace MNStringUtils
