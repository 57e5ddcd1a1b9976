// MCWTSSession: the terminal session of this process (connect state, session
// number) and its session-change notifications, delivered to a listener on the
// message loop of the thread that called Init. One per process.
#pragma once
#include "MCWTSDll.h"

class TESVORUTIL_API MCWTSSession {
public:
    // Listener of session changes. The slot order is an interface of its own
    // (listeners are built against it) and differs from the order of the codes.
    class MIWTSSessionNotify {
    public:
        virtual bool OnConsoleConnect() = 0;     // code 1
        virtual bool OnConsoleDisconnect() = 0;  // code 2
        virtual bool OnSessionLogon() = 0;       // code 5
        virtual bool OnSessionLogoff() = 0;      // code 6
        virtual bool OnRemoteConnect() = 0;      // code 3
        virtual bool OnRemoteDisconnect() = 0;   // code 4

    protected:
        ~MIWTSSessionNotify() {}
    };

    static MCWTSSession* Instance();
    ~MCWTSSession();

    // Makes the hidden notification window and registers it for this session's
    // changes; 1 when registered (also when it already was), 0 otherwise.
    int Init();
    MIWTSSessionNotify* SetNotify(MIWTSSessionNotify* notify);
    // Fails open: true when it cannot tell.
    bool IsSessionConnected();
    // 0xFFFFFFFF when it cannot tell.
    DWORD GetCurrentSessionID();

private:
    MCWTSSession();
    MCWTSSession(const MCWTSSession&);
    MCWTSSession& operator=(const MCWTSSession&);

    bool CreateNotifyWindow();
    static LRESULT CALLBACK NotifyWindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    MIWTSSessionNotify* m_pNotify;
    HWND m_hWnd;
    MCWTSDll m_wts;
    BOOL m_bRegistered;

    static MCWTSSession* s_pInstance;
};
