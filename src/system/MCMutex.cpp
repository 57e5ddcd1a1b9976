#include "MCMutex.h"
#include "KernelObjectNames.h"

MCMutex::MCMutex() : m_handle(NULL) {}

MCMutex::~MCMutex()
{
    close();
}

MCMutex::MCMutex(const MCMutex& other) : m_handle(other.m_handle) {}

MCMutex& MCMutex::operator=(const MCMutex& other)
{
    m_handle = other.m_handle;
    return *this;
}

bool MCMutex::open(const wchar_t* name)
{
    close();
    m_handle = ::OpenMutexW(MUTEX_ALL_ACCESS, TRUE, name);
    return m_handle != NULL;
}

bool MCMutex::create(const wchar_t* name, BOOL initialOwner)
{
    close();
    m_handle = CreateMutexAllAccess(NULL, initialOwner, KernaelObjectName(name));
    return m_handle != NULL;
}

DWORD MCMutex::wait(DWORD milliseconds)
{
    DWORD result = ::WaitForSingleObject(m_handle, milliseconds);
    if (result == WAIT_ABANDONED)
        result = ::WaitForSingleObject(m_handle, milliseconds);
    return result;
}

bool MCMutex::release()
{
    return !m_handle || ::ReleaseMutex(m_handle);
}

void MCMutex::close()
{
    if (!m_handle)
        return;
    ::ReleaseMutex(m_handle);
    ::CloseHandle(m_handle);
    m_handle = NULL;
}

HANDLE MCMutex::detach()
{
    HANDLE handle = m_handle;
    m_handle = NULL;
    return handle;
}

bool MCMutex::empty() const
{
    return m_handle == NULL;
}
