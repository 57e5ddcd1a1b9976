#include "MCWTSDll.h"
#include "system/ProcBinding.h"

MCWTSDll::MCWTSDll()
    : MCDll(L"Wtsapi32.dll"),
      m_pfnRegisterSessionNotification(NULL),
      m_pfnUnRegisterSessionNotification(NULL),
      m_pfnQuerySessionInformationA(NULL),
      m_pfnQuerySessionInformationW(NULL),
      m_pfnFreeMemory(NULL),
      m_pfnEnumerateSessionsA(NULL),
      m_pfnEnumerateSessionsW(NULL)
{
    Load();
}

MCWTSDll::MCWTSDll(const MCWTSDll& other)
    : MCDll(other),
      m_pfnRegisterSessionNotification(other.m_pfnRegisterSessionNotification),
      m_pfnUnRegisterSessionNotification(other.m_pfnUnRegisterSessionNotification),
      m_pfnQuerySessionInformationA(other.m_pfnQuerySessionInformationA),
      m_pfnQuerySessionInformationW(other.m_pfnQuerySessionInformationW),
      m_pfnFreeMemory(other.m_pfnFreeMemory),
      m_pfnEnumerateSessionsA(other.m_pfnEnumerateSessionsA),
      m_pfnEnumerateSessionsW(other.m_pfnEnumerateSessionsW)
{
}

MCWTSDll& MCWTSDll::operator=(const MCWTSDll& other)
{
    MCDll::operator=(other);
    m_pfnRegisterSessionNotification = other.m_pfnRegisterSessionNotification;
    m_pfnUnRegisterSessionNotification = other.m_pfnUnRegisterSessionNotification;
    m_pfnQuerySessionInformationA = other.m_pfnQuerySessionInformationA;
    m_pfnQuerySessionInformationW = other.m_pfnQuerySessionInformationW;
    m_pfnFreeMemory = other.m_pfnFreeMemory;
    m_pfnEnumerateSessionsA = other.m_pfnEnumerateSessionsA;
    m_pfnEnumerateSessionsW = other.m_pfnEnumerateSessionsW;
    return *this;
}

MCWTSDll::~MCWTSDll() {}

bool MCWTSDll::BindEntryPoints()
{
    if (!m_hDll)
        return false;
    return BindProc(m_hDll, "WTSRegisterSessionNotification", m_pfnRegisterSessionNotification) &&
           BindProc(m_hDll, "WTSUnRegisterSessionNotification", m_pfnUnRegisterSessionNotification) &&
           BindProc(m_hDll, "WTSFreeMemory", m_pfnFreeMemory) &&
           BindProc(m_hDll, "WTSQuerySessionInformationW", m_pfnQuerySessionInformationW) &&
           BindProc(m_hDll, "WTSQuerySessionInformationA", m_pfnQuerySessionInformationA) &&
           BindProc(m_hDll, "WTSEnumerateSessionsA", m_pfnEnumerateSessionsA) &&
           BindProc(m_hDll, "WTSEnumerateSessionsW", m_pfnEnumerateSessionsW);
}

BOOL MCWTSDll::WTSRegisterSessionNotification(HWND hWnd, DWORD flags)
{
    if (!m_hDll || !m_pfnRegisterSessionNotification)
        return FALSE;
    BOOL result = m_pfnRegisterSessionNotification(hWnd, flags);
    SaveLastError();
    return result;
}

BOOL MCWTSDll::WTSUnRegisterSessionNotification(HWND hWnd)
{
    if (!m_hDll || !m_pfnUnRegisterSessionNotification)
        return FALSE;
    BOOL result = m_pfnUnRegisterSessionNotification(hWnd);
    SaveLastError();
    return result;
}

BOOL MCWTSDll::WTSQuerySessionInformationA(HANDLE server, DWORD session, WTS_INFO_CLASS infoClass,
                                           LPSTR* buffer, DWORD* bytes)
{
    if (!m_hDll || !m_pfnQuerySessionInformationA)
        return FALSE;
    BOOL result = m_pfnQuerySessionInformationA(server, session, infoClass, buffer, bytes);
    SaveLastError();
    return result;
}

BOOL MCWTSDll::WTSQuerySessionInformationW(HANDLE server, DWORD session, WTS_INFO_CLASS infoClass,
                                           LPWSTR* buffer, DWORD* bytes)
{
    if (!m_hDll || !m_pfnQuerySessionInformationW)
        return FALSE;
    BOOL result = m_pfnQuerySessionInformationW(server, session, infoClass, buffer, bytes);
    SaveLastError();
    return result;
}

void MCWTSDll::WTSFreeMemory(void* memory)
{
    if (m_hDll && m_pfnFreeMemory)
        m_pfnFreeMemory(memory);
}

BOOL MCWTSDll::WTSEnumerateSessionsA(HANDLE server, DWORD reserved, DWORD version,
                                     WTS_SESSION_INFOA** sessions, DWORD* count)
{
    if (!m_hDll || !m_pfnEnumerateSessionsA)
        return FALSE;
    return m_pfnEnumerateSessionsA(server, reserved, version, sessions, count);
}

BOOL MCWTSDll::WTSEnumerateSessionsW(HANDLE server, DWORD reserved, DWORD version,
                                     WTS_SESSION_INFOW** sessions, DWORD* count)
{
    if (!m_hDll || !m_pfnEnumerateSessionsW)
        return FALSE;
    return m_pfnEnumerateSessionsW(server, reserved, version, sessions, count);
}
