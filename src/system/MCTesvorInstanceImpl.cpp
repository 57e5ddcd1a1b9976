#include "MCTesvorInstanceImpl.h"
#include "MCInstanceResponseImpl.h"

MCTesvorInstanceImpl::MCTesvorInstanceImpl(UINT commandID, CString& windowTitle)
    : m_windowTitle(windowTitle), m_commandID(commandID)
{
}

MCTesvorInstanceImpl::MCTesvorInstanceImpl(const MCTesvorInstanceImpl& other)
    : m_windowTitle(other.m_windowTitle), m_commandID(other.m_commandID)
{
}

MCTesvorInstanceImpl& MCTesvorInstanceImpl::operator=(const MCTesvorInstanceImpl& other)
{
    m_windowTitle = other.m_windowTitle;
    m_commandID = other.m_commandID;
    return *this;
}

MCTesvorInstanceImpl::~MCTesvorInstanceImpl() {}

int MCTesvorInstanceImpl::StartCheck(MCTesvorInstance& guard, MDCheckInstanceResult* result,
                                     int bringFront)
{
    return StartCheck(static_cast<MCAppInstance&>(guard), result, bringFront);
}

int MCTesvorInstanceImpl::StartCheck(MCAppInstance& guard, MDCheckInstanceResult* result,
                                     int bringFront)
{
    MCInstanceResponseImpl response(3);
    if (!result)
        return 0;
    int started = response.StartCheck(guard, result);
    if (started == 1 || !bringFront)
        return started;
    if (result->appID == guard.GetAppID()) {
        // One copy per session is the limit: a copy in another session only
        // does not stop this one, which keeps its local lock.
        if (result->lockResult == LockBusyGlobal)
            return 1;
        BringFront();
    }
    guard.Unlock();
    return 0;
}

int MCTesvorInstanceImpl::BringFront()
{
    if (m_commandID == 0 || m_windowTitle.IsEmpty())
        return 0;
    HWND window = ::FindWindowW(NULL, m_windowTitle);
    if (!::IsWindow(window))
        return 0;
    // The running copy may then take the foreground when it handles the command.
    ::AllowSetForegroundWindow(ASFW_ANY);
    ::SendMessageW(window, WM_COMMAND, m_commandID, 0);
    return 1;
}
