// Helpers shared by the test programs.
#pragma once
#include <afx.h>

// Full Windows path of a file under tests/data.
inline CString TestDataPath(const wchar_t* relative)
{
    CString path(TESVOR_TEST_DATA_DIR);
    path += L"\\";
    path += relative;
    return path;
}
