// MNAci: redirecting an imported function of a loaded module by rewriting its
// import address table entry, and putting it back.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

namespace MNAci {

// Filled by the caller (pfnHook, optionally pSlot) and by the hook functions; the
// caller keeps it alive while hooked. Addresses are pointer-sized (32-bit on the
// 32-bit build).
struct MCHookProcData {
    DWORD_PTR pfnOriginal;  // the entry's value before the first hook
    DWORD_PTR pfnHook;      // the replacement
    DWORD_PTR* pSlot;       // the import address table entry, null until found
    BOOL bHooked;
};

// Points procName imported by module from dllName (both matched ignoring case)
// at data->pfnHook. A preset pSlot is reused and keeps the saved original.
// 1 on success; 0 (data unchanged) when the import is not found by name.
TESVORUTIL_API int HookImportedProcedureByName(HINSTANCE module, const char* dllName,
                                               const char* procName, MCHookProcData* data);
// Writes the saved original back; 1 also when nothing is hooked.
TESVORUTIL_API int UnhookImportedProcedure(MCHookProcData* data);

}  // namespace MNAci
