// MCRegistry: a thin wrapper over one open registry key. Keys are opened with
// full access and created when missing; values are 32-bit numbers, strings
// and binary blocks. Every call keeps the system's result, which GetErrCode
// returns.
//
// Copies share the key handle (it is not duplicated) and each copy closes it
// when destroyed, so a copy must not outlive the use of the others.
// Assignment closes the key the target held before, unless it is the same one.
//
// The string reader sizes its buffer from the first query of the value (the
// stored format keeps strings under 1024 bytes; longer values are read whole
// rather than overrunning a fixed buffer).
#pragma once
#include <afx.h>
#include "MCStringArrayImpl.h"
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCRegistry {
public:
    MCRegistry();
    MCRegistry(const MCRegistry& other);
    MCRegistry& operator=(const MCRegistry& other);
    virtual ~MCRegistry();

    // Opens subKey under root, creating it when missing. A key already open
    // is not closed first.
    bool Open(HKEY root, const CString& subKey);
    void Close();
    LONG GetErrCode();

    // The calls below return false at once, leaving GetErrCode as it was,
    // when no key is open.
    bool Write(const CString& name, DWORD value);           // REG_DWORD
    bool Write(const CString& name, const CString& value);  // REG_SZ, with its NUL
    bool Write(const CString& name, const BYTE* data, DWORD size);  // REG_BINARY
    bool Write(int index, const BYTE* data, DWORD size);    // REG_BINARY named "%d"

    // The readers do not check the value's type.
    bool Read(const CString& name, DWORD& value);  // 4 bytes; value changes only on success
    bool Read(const CString& name, CString& value);
    bool Read(const CString& name, BYTE* data, DWORD& size);  // size: in capacity, out bytes read
    bool Read(int index, BYTE* data, DWORD& size);

    // Fails for a key that has sub-keys.
    bool DeleteKey(const CString& subKey);
    bool DeleteValue(const CString& name);

    // Open or create root\subKey, empty names, append the sub-key (or value)
    // names in the system's order, close the key.
    bool GetEnumKeys(HKEY root, const CString& subKey, MCStringArrayImpl<CString, const CString&>& names);
    bool GetEnumValues(HKEY root, const CString& subKey, MCStringArrayImpl<CString, const CString&>& names);

protected:
    HKEY m_hKey;
    CString m_keyPath;
    LONG m_errCode;

private:
    bool Keep(LONG result);
};
