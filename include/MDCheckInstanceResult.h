// MDCheckInstanceResult: after a failed start-up check, which program of the
// family was found running and how.
#pragma once
#include "MEAppID.h"
#include "MELockResult.h"

struct MDCheckInstanceResult {
    MDCheckInstanceResult() : appID(AppIDNone), lockResult(LockOk) {}

    MEAppID appID;
    MELockResult lockResult;
};
