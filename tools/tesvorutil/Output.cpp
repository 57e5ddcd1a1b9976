#include "Output.h"
#include <afx.h>
#include <string>

namespace {

void WriteTo(DWORD stdHandle, const wchar_t* text)
{
    HANDLE h = ::GetStdHandle(stdHandle);
    if (h == NULL || h == INVALID_HANDLE_VALUE || text == NULL)
        return;
    int length = lstrlenW(text);
    if (length == 0)
        return;
    DWORD mode = 0;
    DWORD written = 0;
    if (::GetConsoleMode(h, &mode)) {
        ::WriteConsoleW(h, text, static_cast<DWORD>(length), &written, NULL);
        return;
    }
    int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text, length, NULL, 0, NULL, NULL);
    if (bytes <= 0)
        return;
    std::string utf8(static_cast<size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, length, &utf8[0], bytes, NULL, NULL);
    ::WriteFile(h, utf8.data(), static_cast<DWORD>(bytes), &written, NULL);
}

void PrintTo(DWORD stdHandle, const wchar_t* format, va_list args)
{
    CString text;
    text.FormatV(format, args);
    WriteTo(stdHandle, text);
}

}  // namespace

void tesvorutil::WriteOut(const wchar_t* text) { WriteTo(STD_OUTPUT_HANDLE, text); }
void tesvorutil::WriteErr(const wchar_t* text) { WriteTo(STD_ERROR_HANDLE, text); }

void tesvorutil::PrintOut(const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    PrintTo(STD_OUTPUT_HANDLE, format, args);
    va_end(args);
}

void tesvorutil::PrintErr(const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    PrintTo(STD_ERROR_HANDLE, format, args);
    va_end(args);
}
