// MCTesvorInstallerInstance: the guard of the installer.
#pragma once
#include "MCAppInstance.h"

class TESVORUTIL_API MCTesvorInstallerInstance : public MCAppInstance {
public:
    MCTesvorInstallerInstance();
    virtual ~MCTesvorInstallerInstance();

    static const wchar_t* const sGlobalMutex;
    static const wchar_t* const sLocalMutex;
};
