#include "MCTesvorInstance.h"
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorUninstallerInstance.h"

// Shared with older and newer builds of the programs: keep them as they are.
const wchar_t* const MCTesvorInstance::sGlobalMutex = L"Global\\Tesvor_Global_Mutex";
const wchar_t* const MCTesvorInstance::sLocalMutex = L"Local\\Tesvor_Local_Mutex";
const wchar_t* const MCTesvorInstance::sLegacyMutexName = L"Tesvor Mutex";
const wchar_t* const MCTesvorInstallerInstance::sGlobalMutex = L"Global\\Tesvor_Install_Global_Mutex";
const wchar_t* const MCTesvorInstallerInstance::sLocalMutex = L"Local\\Tesvor_Install_Local_Mutex";
const wchar_t* const MCTesvorUninstallerInstance::sGlobalMutex = L"Global\\Tesvor_Uninstall_Global_Mutex";
const wchar_t* const MCTesvorUninstallerInstance::sLocalMutex = L"Local\\Tesvor_Uninstall_Local_Mutex";

MCTesvorInstance::MCTesvorInstance() : MCAppInstance(sGlobalMutex, sLocalMutex, AppIDMain) {}

MCTesvorInstance::~MCTesvorInstance()
{
    m_legacyMutex.close();
}

MELockResult MCTesvorInstance::Lock(UINT timeoutSeconds)
{
    // Older builds only hold this name, and only test that it exists; the
    // opened handle stays held until Unlock so that the answer stays true.
    if (m_legacyMutex.open(sLegacyMutexName))
        return LockBusyLocal;
    m_legacyMutex.create(sLegacyMutexName, FALSE);
    return MCAppInstance::Lock(timeoutSeconds);
}

bool MCTesvorInstance::Unlock()
{
    m_legacyMutex.close();
    return MCAppInstance::Unlock();
}

MCTesvorInstallerInstance::MCTesvorInstallerInstance()
    : MCAppInstance(sGlobalMutex, sLocalMutex, AppIDInstaller)
{
}

MCTesvorInstallerInstance::~MCTesvorInstallerInstance() {}

MCTesvorUninstallerInstance::MCTesvorUninstallerInstance()
    : MCAppInstance(sGlobalMutex, sLocalMutex, AppIDUninstaller)
{
}

MCTesvorUninstallerInstance::~MCTesvorUninstallerInstance() {}
