// MCTesvorInstanceImpl: the check a program of the family makes once at
// start, and the request that brings its running copy to the front.
#pragma once
#include <afx.h>
#include "MCTesvorInstance.h"
#include "MDCheckInstanceResult.h"
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCTesvorInstanceImpl {
public:
    // windowTitle: the exact title of the program's top-level window;
    // commandID: the command its running copy answers by coming to the front.
    MCTesvorInstanceImpl(UINT commandID, CString& windowTitle);
    MCTesvorInstanceImpl(const MCTesvorInstanceImpl& other);
    MCTesvorInstanceImpl& operator=(const MCTesvorInstanceImpl& other);
    ~MCTesvorInstanceImpl();

    // 1: the program goes on starting; 0: it exits. With bringFront, a copy
    // already running in this session is brought to the front and the guard
    // is unlocked on a conflict.
    int StartCheck(MCTesvorInstance& guard, MDCheckInstanceResult* result, int bringFront);
    int StartCheck(MCAppInstance& guard, MDCheckInstanceResult* result, int bringFront);
    // Sends the command to the window with the title; 1 if one was found.
    int BringFront();

    CString m_windowTitle;
    UINT m_commandID;
};
