// MELockResult: the result of a single-instance lock attempt.
#pragma once

enum MELockResult {
    LockOk = 0,          // this process holds the locks
    LockBusyLocal = 1,   // another copy runs in this session, or the lock could not be made
    LockBusyGlobal = 2   // another copy runs in another session
};
