// MCWTSDll: the Terminal Services API ("Wtsapi32.dll") bound at run time.
// When the library is not loaded every call returns 0 and does nothing.
#pragma once
#include "MCDll.h"
#include <wtsapi32.h>

class TESVORUTIL_API MCWTSDll : public MCDll {
public:
    typedef BOOL(WINAPI* PFNRegisterSessionNotification)(HWND, DWORD);
    typedef BOOL(WINAPI* PFNUnRegisterSessionNotification)(HWND);
    typedef BOOL(WINAPI* PFNQuerySessionInformationA)(HANDLE, DWORD, WTS_INFO_CLASS, LPSTR*, DWORD*);
    typedef BOOL(WINAPI* PFNQuerySessionInformationW)(HANDLE, DWORD, WTS_INFO_CLASS, LPWSTR*, DWORD*);
    typedef void(WINAPI* PFNFreeMemory)(void*);
    typedef BOOL(WINAPI* PFNEnumerateSessionsA)(HANDLE, DWORD, DWORD, WTS_SESSION_INFOA**, DWORD*);
    typedef BOOL(WINAPI* PFNEnumerateSessionsW)(HANDLE, DWORD, DWORD, WTS_SESSION_INFOW**, DWORD*);

    MCWTSDll();
    MCWTSDll(const MCWTSDll& other);
    MCWTSDll& operator=(const MCWTSDll& other);
    virtual ~MCWTSDll();

    BOOL WTSRegisterSessionNotification(HWND hWnd, DWORD flags);
    BOOL WTSUnRegisterSessionNotification(HWND hWnd);
    BOOL WTSQuerySessionInformationA(HANDLE server, DWORD session, WTS_INFO_CLASS infoClass,
                                     LPSTR* buffer, DWORD* bytes);
    BOOL WTSQuerySessionInformationW(HANDLE server, DWORD session, WTS_INFO_CLASS infoClass,
                                     LPWSTR* buffer, DWORD* bytes);
    void WTSFreeMemory(void* memory);
    BOOL WTSEnumerateSessionsA(HANDLE server, DWORD reserved, DWORD version,
                               WTS_SESSION_INFOA** sessions, DWORD* count);
    BOOL WTSEnumerateSessionsW(HANDLE server, DWORD reserved, DWORD version,
                               WTS_SESSION_INFOW** sessions, DWORD* count);

protected:
    virtual bool BindEntryPoints();

    PFNRegisterSessionNotification m_pfnRegisterSessionNotification;
    PFNUnRegisterSessionNotification m_pfnUnRegisterSessionNotification;
    PFNQuerySessionInformationA m_pfnQuerySessionInformationA;
    PFNQuerySessionInformationW m_pfnQuerySessionInformationW;
    PFNFreeMemory m_pfnFreeMemory;
    PFNEnumerateSessionsA m_pfnEnumerateSessionsA;
    PFNEnumerateSessionsW m_pfnEnumerateSessionsW;
};
