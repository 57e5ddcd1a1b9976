#include "MCInstanceResponseImpl.h"
#include <memory>
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorUninstallerInstance.h"

MCInstanceResponseImpl::MCInstanceResponseImpl(UINT timeoutSeconds) : m_timeout(timeoutSeconds) {}

int MCInstanceResponseImpl::StartCheck(MCTesvorInstance& guard, MDCheckInstanceResult* result)
{
    return StartCheck(static_cast<MCAppInstance&>(guard), result);
}

int MCInstanceResponseImpl::StartCheck(MCAppInstance& guard, MDCheckInstanceResult* result)
{
    // Probes of the other two programs, in the family's order.
    std::unique_ptr<MCAppInstance> probes[2];
    int probeCount = 0;
    if (guard.GetAppID() != AppIDMain)
        probes[probeCount++].reset(new MCTesvorInstance);
    if (guard.GetAppID() != AppIDInstaller)
        probes[probeCount++].reset(new MCTesvorInstallerInstance);
    if (guard.GetAppID() != AppIDUninstaller)
        probes[probeCount++].reset(new MCTesvorUninstallerInstance);

    MCAppInstance* guards[3] = {&guard, probes[0].get(), probes[1].get()};
    MCAppInstance* failed = NULL;
    MELockResult lockResult = LockOk;
    for (MCAppInstance* candidate : guards) {
        lockResult = candidate->Lock(m_timeout);
        if (lockResult != LockOk) {
            failed = candidate;
            break;
        }
    }
    if (failed && result) {
        result->appID = failed->GetAppID();
        result->lockResult = lockResult;
    }
    // The probes' locks go at once; the given guard keeps what it took.
    for (int i = 0; i < probeCount; ++i)
        probes[i]->Unlock();
    return failed ? 0 : 1;
}
