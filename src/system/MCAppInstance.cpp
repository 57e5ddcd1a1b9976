#include "MCAppInstance.h"
#include "KernelObjectNames.h"
#include "MCWTSSession.h"

namespace {

// Takes a lock for this process: made not owned, then owned by waiting, so
// that the first copy gets it at once, a later copy waits for the first, and
// an abandoned lock of a crashed copy is taken over.
bool Acquire(MCMutex& mutex, const wchar_t* name, DWORD milliseconds)
{
    if (mutex.empty() && !mutex.create(name, FALSE))
        return false;
    return mutex.wait(milliseconds) == WAIT_OBJECT_0;
}

}  // namespace

MCWTSSession* MCAppInstance::s_pWtsSes = NULL;

MCAppInstance::MCAppInstance(const wchar_t* globalName, const wchar_t* localName, MEAppID appID)
    : m_bClearWtsSes(FALSE), m_globalName(globalName), m_localName(localName), m_appID(appID)
{
    if (!s_pWtsSes)
        s_pWtsSes = MCWTSSession::Instance();
    // Each session has its own local lock, also on systems whose kernel keeps
    // one namespace for all sessions.
    if (HasTerminalServices() && s_pWtsSes) {
        CString sessionNumber;
        sessionNumber.Format(L"%d", static_cast<int>(s_pWtsSes->GetCurrentSessionID()));
        m_localName += sessionNumber;
    }
}

MCAppInstance::MCAppInstance(const MCAppInstance& other)
    : m_localMutex(other.m_localMutex),
      m_globalMutex(other.m_globalMutex),
      m_bClearWtsSes(other.m_bClearWtsSes),
      m_globalName(other.m_globalName),
      m_localName(other.m_localName),
      m_appID(other.m_appID)
{
}

MCAppInstance::~MCAppInstance()
{
    m_localMutex.close();
    m_globalMutex.close();
    if (m_bClearWtsSes && s_pWtsSes) {
        delete s_pWtsSes;
        s_pWtsSes = NULL;
    }
}

MELockResult MCAppInstance::Lock(UINT timeoutSeconds)
{
    const DWORD milliseconds = timeoutSeconds * 1000;

    if (CanLocalMulti()) {
        if (m_localMutex.open(m_localName))
            return LockBusyLocal;
        m_localMutex.create(m_localName, FALSE);
    } else if (!Acquire(m_localMutex, m_localName, milliseconds)) {
        return LockBusyLocal;
    }

    // Without terminal services there is one session: the local lock suffices.
    if (!HasTerminalServices())
        return LockOk;

    bool globalLocked;
    if (CanGlobalMulti()) {
        globalLocked = !m_globalMutex.open(m_globalName);
        if (globalLocked)
            m_globalMutex.create(m_globalName, FALSE);
    } else {
        globalLocked = Acquire(m_globalMutex, m_globalName, milliseconds);
    }
    return globalLocked ? LockOk : LockBusyGlobal;
}

bool MCAppInstance::Unlock()
{
    m_localMutex.close();
    m_globalMutex.close();
    return true;
}

bool MCAppInstance::CanLocalMulti() const
{
    return false;
}

bool MCAppInstance::CanGlobalMulti() const
{
    return false;
}

bool MCAppInstance::Detach(HANDLE& globalMutex, HANDLE& localMutex)
{
    globalMutex = m_globalMutex.detach();
    localMutex = m_localMutex.detach();
    return globalMutex && localMutex;
}

void MCAppInstance::CanClearWtsSes(BOOL clear)
{
    m_bClearWtsSes = clear;
}

MEAppID MCAppInstance::GetAppID() const
{
    return m_appID;
}
