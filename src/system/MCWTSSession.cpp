#include "MCWTSSession.h"

namespace {

const wchar_t kNotifyWindowClass[] = L"vlrwtsseswndclass";

// The class belongs to the executable, not to this library, so that it stays
// valid for as long as the process runs.
HINSTANCE ProcessInstance()
{
    return ::GetModuleHandleW(NULL);
}

}  // namespace

MCWTSSession* MCWTSSession::s_pInstance = NULL;

MCWTSSession* MCWTSSession::Instance()
{
    if (!s_pInstance)
        s_pInstance = new MCWTSSession;
    return s_pInstance;
}

MCWTSSession::MCWTSSession() : m_pNotify(NULL), m_hWnd(NULL), m_bRegistered(FALSE) {}

MCWTSSession::~MCWTSSession()
{
    if (m_wts)
        m_wts.WTSUnRegisterSessionNotification(m_hWnd);
    // The hidden window and its class outlive the object (so a later session
    // object of the process cannot register the class again); the window only
    // stops pointing at this object.
    if (m_hWnd)
        ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, 0);
    if (s_pInstance == this)
        s_pInstance = NULL;
}

int MCWTSSession::Init()
{
    if (m_bRegistered)
        return 1;
    if (!m_wts)
        return 0;
    if (!m_hWnd && !CreateNotifyWindow())
        return 0;
    m_bRegistered = m_wts.WTSRegisterSessionNotification(m_hWnd, NOTIFY_FOR_THIS_SESSION) ? TRUE : FALSE;
    return m_bRegistered ? 1 : 0;
}

MCWTSSession::MIWTSSessionNotify* MCWTSSession::SetNotify(MIWTSSessionNotify* notify)
{
    MIWTSSessionNotify* previous = m_pNotify;
    m_pNotify = notify;
    return previous;
}

bool MCWTSSession::IsSessionConnected()
{
    if (!m_wts)
        return true;
    LPWSTR buffer = NULL;
    DWORD bytes = 0;
    if (!m_wts.WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION,
                                           WTSConnectState, &buffer, &bytes))
        return true;
    bool active = true;
    if (buffer && bytes >= sizeof(WTS_CONNECTSTATE_CLASS))
        active = *reinterpret_cast<WTS_CONNECTSTATE_CLASS*>(buffer) == WTSActive;
    m_wts.WTSFreeMemory(buffer);
    return active;
}

DWORD MCWTSSession::GetCurrentSessionID()
{
    if (!m_wts)
        return 0xFFFFFFFF;
    LPWSTR buffer = NULL;
    DWORD bytes = 0;
    if (!m_wts.WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION,
                                           WTSSessionId, &buffer, &bytes))
        return 0xFFFFFFFF;
    DWORD sessionID = 0xFFFFFFFF;
    if (buffer && bytes >= sizeof(DWORD))
        sessionID = *reinterpret_cast<DWORD*>(buffer);
    m_wts.WTSFreeMemory(buffer);
    return sessionID;
}

bool MCWTSSession::CreateNotifyWindow()
{
    WNDCLASSW windowClass;
    ::ZeroMemory(&windowClass, sizeof(windowClass));
    windowClass.style = CS_CLASSDC;
    windowClass.lpfnWndProc = NotifyWindowProc;
    windowClass.hInstance = ProcessInstance();
    windowClass.lpszClassName = kNotifyWindowClass;
    if (!::RegisterClassW(&windowClass))
        return false;

    m_hWnd = ::CreateWindowExW(0, kNotifyWindowClass, NULL, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, NULL, NULL,
                               ProcessInstance(), NULL);
    if (m_hWnd) {
        // SetWindowLongPtrW returns the previous value (0 here), so only the
        // last error tells a failure.
        ::SetLastError(0);
        ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        if (::GetLastError() == 0)
            return true;
        ::DestroyWindow(m_hWnd);
        m_hWnd = NULL;
    }
    ::UnregisterClassW(kNotifyWindowClass, ProcessInstance());
    return false;
}

LRESULT CALLBACK MCWTSSession::NotifyWindowProc(HWND hWnd, UINT message, WPARAM wParam,
                                                LPARAM lParam)
{
    if (message != WM_WTSSESSION_CHANGE)
        return ::DefWindowProcW(hWnd, message, wParam, lParam);
    MCWTSSession* session =
        reinterpret_cast<MCWTSSession*>(::GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    MIWTSSessionNotify* notify = session ? session->m_pNotify : NULL;
    if (!notify)
        return 0;
    switch (wParam) {
    case WTS_CONSOLE_CONNECT: notify->OnConsoleConnect(); break;
    case WTS_CONSOLE_DISCONNECT: notify->OnConsoleDisconnect(); break;
    case WTS_REMOTE_CONNECT: notify->OnRemoteConnect(); break;
    case WTS_REMOTE_DISCONNECT: notify->OnRemoteDisconnect(); break;
    case WTS_SESSION_LOGON: notify->OnSessionLogon(); break;
    case WTS_SESSION_LOGOFF: notify->OnSessionLogoff(); break;
    default: break;
    }
    return 0;
}
