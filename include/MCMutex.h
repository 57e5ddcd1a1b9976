// MCMutex: owns one named mutex handle of the single-instance guard.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCMutex {
public:
    MCMutex();
    ~MCMutex();
    // A copy shares the handle without duplicating it; guards live once.
    MCMutex(const MCMutex& other);
    MCMutex& operator=(const MCMutex& other);

    // Opens an existing mutex by its exact name; false when there is none.
    bool open(const wchar_t* name);
    // Creates the mutex, or opens it when it exists, under its kernel-object
    // name and open to every session; true when a handle came back.
    bool create(const wchar_t* name, BOOL initialOwner);
    // Waits for ownership. An abandoned mutex (its owner ended without
    // releasing it) is waited on once more, so the result tells whether this
    // thread now owns it.
    DWORD wait(DWORD milliseconds);
    bool release();
    void close();
    HANDLE detach();

    bool empty() const;

private:
    HANDLE m_handle;
};
