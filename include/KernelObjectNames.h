// Kernel-object names and mutexes for systems with and without terminal
// services. With terminal services the "Global\", "Local\" and "Session\"
// prefixes choose a namespace; without them older systems reject the prefix,
// so it is stripped. The answer is computed once per process.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

TESVORUTIL_API bool HasTerminalServices();

// The name itself or a pointer just past a known prefix; nothing is copied.
TESVORUTIL_API const wchar_t* KernaelObjectName(const wchar_t* name);
// For names known to start with "Global\" (GlobalName) or "Local\" (LocalName):
// the prefix is skipped by length, without looking at it.
TESVORUTIL_API const wchar_t* GlobalName(const wchar_t* name);
TESVORUTIL_API const wchar_t* LocalName(const wchar_t* name);

// A named mutex that every user of every session may open. A caller-supplied
// sa is used as it is. On failure the result is null and GetLastError tells
// why; on success it may be ERROR_ALREADY_EXISTS.
TESVORUTIL_API HANDLE CreateMutexAllAccess(SECURITY_ATTRIBUTES* sa, BOOL initialOwner,
                                           const wchar_t* name);
