#include "Corvel.h"

namespace {
MDebugTraceSink g_sink = NULL;
}

void MDebugTrace(const char* channel, const wchar_t* format, ...)
{
    if (format == NULL)
        return;
    CString line;
    va_list args;
    va_start(args, format);
    line.FormatV(format, args);
    va_end(args);

    CString text(channel != NULL ? channel : "");
    text += L": ";
    text += line;
    text += L"\n";
    ::OutputDebugStringW(text);
    if (MDebugTraceSink sink = g_sink)
        sink(channel, line);
}

MDebugTraceSink MDebugTraceSetSink(MDebugTraceSink sink)
{
    MDebugTraceSink previous = g_sink;
    g_sink = sink;
    return previous;
}

void MNStringUtils::Trim(CString& str) { str.Trim(); }
