// MCTesvorUninstallerInstance: the guard of the uninstaller.
#pragma once
#include "MCAppInstance.h"

class TESVORUTIL_API MCTesvorUninstallerInstance : public MCAppInstance {
public:
    MCTesvorUninstallerInstance();
    virtual ~MCTesvorUninstallerInstance();

    static const wchar_t* const sGlobalMutex;
    static const wchar_t* const sLocalMutex;
};
