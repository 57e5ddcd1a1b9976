// MCModuleVersion: a module file's version resource, its fixed block as the
// object's own fields and its string values.
#pragma once
#include <afx.h>
#include <shlwapi.h>
#include <winver.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCModuleVersion : public tagVS_FIXEDFILEINFO {
public:
    MCModuleVersion();
    // Copies share the version block; a copy must not outlive the original.
    MCModuleVersion(const MCModuleVersion& other) = default;
    MCModuleVersion& operator=(const MCModuleVersion& other) = default;
    virtual ~MCModuleVersion();

    // Reads the version resource of path; non-zero when it holds a valid fixed block.
    int GetFileVersionInfoW(const wchar_t* path);
    // A string value of the version resource, or null when no resource was read.
    const wchar_t* GetValue(const wchar_t* name);
    // Looks for the library's DllGetVersion entry; always 0.
    static int DllGetVersion(const wchar_t* path, DLLVERSIONINFO& info);

    BYTE* m_pVersionData;
    WORD m_wLanguage;
    WORD m_wCodePage;
};
