// MNMemoryUtils: the working set, the process heap and page protection.
#pragma once
#include <windows.h>
#include "TesvorUtilExport.h"

namespace MNMemoryUtils {

// SetProcessWorkingSetSize on the current process; 0xFFFFFFFF for both sizes
// trims the working set. On failure GetLastError goes to *error (when given).
TESVORUTIL_API int SetProcessWorkingSetSize(DWORD minimum, DWORD maximum, DWORD* error);
// Compacts the process heap: 1 when the heap has a free block left, else 0 with
// GetLastError in *error (when given).
TESVORUTIL_API int HeapCompact(DWORD flags, DWORD* error);
// Trims the working set and compacts the heap; 1 when both worked. The first
// failure's error goes to *error (when given).
TESVORUTIL_API int OptimizeMemory(DWORD* error);
// With an address: describes its region in *info and changes the protection of
// that whole region. With null: changes the region already in *info. Returns the
// previous protection, or 0xFFFFFFFF.
TESVORUTIL_API DWORD SetMemProtect(void* address, DWORD protect, MEMORY_BASIC_INFORMATION* info);

}  // namespace MNMemoryUtils
