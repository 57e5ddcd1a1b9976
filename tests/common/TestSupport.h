// Helpers shared by the test programs.
#pragma once
#include <afx.h>
#include <ostream>

// Full Windows path of a file under tests/data.
inline CString TestDataPath(const wchar_t* relative)
{
    CString path(TESVOR_TEST_DATA_DIR);
    path += L"\\";
    path += relative;
    return path;
}

// Readable CString values in assertion messages.
inline void PrintTo(const CString& text, std::ostream* os)
{
    *os << '"';
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t ch = text[i];
        if (ch >= 0x20 && ch < 0x7F)
            *os << static_cast<char>(ch);
        else
            *os << "\\x" << std::hex << static_cast<unsigned>(ch) << std::dec;
    }
    *os << '"';
}
