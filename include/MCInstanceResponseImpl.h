// MCInstanceResponseImpl: the family-wide start-up check. A program locks its
// own guard for good and probes the other two programs' locks for a moment,
// since none of the three may run beside another.
#pragma once
#include <windows.h>
#include "MCTesvorInstance.h"
#include "MDCheckInstanceResult.h"
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCInstanceResponseImpl {
public:
    explicit MCInstanceResponseImpl(UINT timeoutSeconds = 3);

    // 1 when no other program of the family runs; 0 with the conflict in
    // result. Each probe may wait up to the time-out for a running sibling.
    int StartCheck(MCTesvorInstance& guard, MDCheckInstanceResult* result);
    // The same for the guard of any program of the family.
    int StartCheck(MCAppInstance& guard, MDCheckInstanceResult* result);

    UINT m_timeout;
};
