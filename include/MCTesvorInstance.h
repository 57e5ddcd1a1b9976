// MCTesvorInstance: the guard of the main application. Besides its own locks
// it holds "Tesvor Mutex", the name that older builds test and hold.
#pragma once
#include "MCAppInstance.h"

class TESVORUTIL_API MCTesvorInstance : public MCAppInstance {
public:
    MCTesvorInstance();
    virtual ~MCTesvorInstance();

    virtual MELockResult Lock(UINT timeoutSeconds);
    virtual bool Unlock();

    static const wchar_t* const sGlobalMutex;
    static const wchar_t* const sLocalMutex;
    static const wchar_t* const sLegacyMutexName;

protected:
    MCMutex m_legacyMutex;
};
