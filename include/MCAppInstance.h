// MCAppInstance: the single-instance guard of one program of the family, a
// per-session lock and, with terminal services, a machine-wide one.
#pragma once
#include <afx.h>
#include "MCMutex.h"
#include "MEAppID.h"
#include "MELockResult.h"
#include "TesvorUtilExport.h"

class MCWTSSession;

class TESVORUTIL_API MCAppInstance {
public:
    virtual ~MCAppInstance();
    // Takes the local lock and, with terminal services, the global one,
    // waiting up to timeoutSeconds for each. Run it on the thread that will
    // unlock: mutex ownership belongs to a thread.
    virtual MELockResult Lock(UINT timeoutSeconds);
    // Releases and closes the local lock, then the global one; always true.
    virtual bool Unlock();
    // When true, the lock is only tested for existence, not waited for.
    virtual bool CanLocalMulti() const;
    virtual bool CanGlobalMulti() const;

    // Copies share the handles without duplicating them; guards live once.
    MCAppInstance(const MCAppInstance& other);

    // Hands both handles to the caller, who keeps the locks beyond the
    // guard's life; true only if both were held.
    bool Detach(HANDLE& globalMutex, HANDLE& localMutex);
    // Makes this guard delete the shared session helper when it goes.
    void CanClearWtsSes(BOOL clear);
    MEAppID GetAppID() const;

    static MCWTSSession* s_pWtsSes;

protected:
    MCAppInstance(const wchar_t* globalName, const wchar_t* localName, MEAppID appID);

    MCMutex m_localMutex;
    MCMutex m_globalMutex;
    BOOL m_bClearWtsSes;
    CString m_globalName;
    CString m_localName;
    MEAppID m_appID;

private:
    MCAppInstance& operator=(const MCAppInstance&);
};
