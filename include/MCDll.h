// MCDll: a system library loaded by name at run time, for entry points that
// older systems lack. A library whose entry points are not all present counts
// as not loaded, so callers test one flag (operator bool) before using it.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCDll {
public:
    virtual ~MCDll();

    // Copies share the module handle without taking a new load reference, and
    // each copy frees it when destroyed: keep a wrapper in one place.
    MCDll(const MCDll& other);
    MCDll& operator=(const MCDll& other);

    HINSTANCE GetDllHandle();
    operator bool() const;

protected:
    explicit MCDll(const wchar_t* dllName);

    // Resolves the derived class's entry points; false when the handle is null
    // or any entry point is missing.
    virtual bool BindEntryPoints() = 0;

    void Load();
    void Free();
    void SaveLastError();

    HINSTANCE m_hDll;
    DWORD m_lastError;
    CString m_name;
};
