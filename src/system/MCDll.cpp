#include "MCDll.h"

MCDll::MCDll(const wchar_t* dllName) : m_hDll(NULL), m_lastError(0), m_name(dllName) {}

MCDll::~MCDll()
{
    Free();
}

MCDll::MCDll(const MCDll& other)
    : m_hDll(other.m_hDll), m_lastError(other.m_lastError), m_name(other.m_name)
{
}

MCDll& MCDll::operator=(const MCDll& other)
{
    m_hDll = other.m_hDll;
    m_lastError = other.m_lastError;
    m_name = other.m_name;
    return *this;
}

void MCDll::Load()
{
    if (m_hDll)
        return;
    m_hDll = ::LoadLibraryExW(m_name, NULL, 0);
    SaveLastError();
    // The binder runs on a failed load too, so the loader's error is replaced by
    // the binder's only when binding is what failed.
    if (!BindEntryPoints()) {
        SaveLastError();
        Free();
    }
}

void MCDll::Free()
{
    if (m_hDll) {
        ::FreeLibrary(m_hDll);
        m_hDll = NULL;
    }
}

void MCDll::SaveLastError()
{
    m_lastError = ::GetLastError();
}

HINSTANCE MCDll::GetDllHandle()
{
    return m_hDll;
}

MCDll::operator bool() const
{
    return m_hDll != NULL;
}
