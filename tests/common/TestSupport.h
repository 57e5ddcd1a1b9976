// Helpers shared by the test programs.
#pragma once
#include <afx.h>
#include <ostream>
#include <vector>

// Results compared as one list, so that one assertion shows them all.
typedef std::vector<long long> Values;

// Full Windows path of a file under tests/data.
inline CString TestDataPath(const wchar_t* relative) { return CString(TESVOR_TEST_DATA_DIR) + L"\\" + relative; }

// The whole content of a file; empty when it cannot be read.
inline std::vector<BYTE> FileBytes(const wchar_t* path)
{
    std::vector<BYTE> bytes;
    CFile file;
    if (file.Open(path, CFile::modeRead)) {
        bytes.resize(static_cast<size_t>(file.GetLength()));
        bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    }
    return bytes;
}

// Full path of a file next to the test program: the build puts the library, its test
// DLLs and the helper programs there.
inline CString ProgramFolderPath(const wchar_t* name)
{
    wchar_t path[MAX_PATH] = L"";
    CString program(path, ::GetModuleFileNameW(NULL, path, MAX_PATH));
    return program.Left(program.ReverseFind(L'\\') + 1) + name;
}

// Whether `call` throws a framework exception of the given class (which is then deleted).
template <class Exception, class Call>
bool Throws(Call call)
{
    try {
        call();
    } catch (Exception* e) {
        e->Delete();
        return true;
    }
    return false;
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
