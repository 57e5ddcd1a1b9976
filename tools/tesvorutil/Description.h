// Opening a UI description for a command. The reader reports a failed load only
// as E_UNEXPECTED; a command can tell the user why and where, as a compiler does.
#pragma once
#include <MCXMLReader.h>

namespace tesvorutil {

// The COM apartment the reader's DOM document lives in, for the life of a command.
class ComApartment {
public:
    ComApartment();
    ~ComApartment();
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT m_hr;
};

// Opens path in reader. On failure prints "PATH:LINE:COLUMN: error: REASON" on
// stderr ("PATH: error: REASON" when the parser names no position) and returns
// false; the command then exits with ExitInvalid.
bool OpenDescription(MCXMLReader& reader, const wchar_t* path);

}  // namespace tesvorutil
