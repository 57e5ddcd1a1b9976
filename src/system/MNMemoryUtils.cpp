#include "MNMemoryUtils.h"

namespace {

const DWORD kTrimSize = 0xFFFFFFFF;
const DWORD kProtectFailed = 0xFFFFFFFF;

// 0xFFFFFFFF asks for a trim; on the 64-bit build that request is (SIZE_T)-1.
SIZE_T WorkingSetSize(DWORD size) { return size == kTrimSize ? static_cast<SIZE_T>(-1) : size; }

void StoreError(DWORD* error, DWORD code)
{
    if (error != NULL)
        *error = code;
}

}  // namespace

int MNMemoryUtils::SetProcessWorkingSetSize(DWORD minimum, DWORD maximum, DWORD* error)
{
    BOOL ok = ::SetProcessWorkingSetSize(::GetCurrentProcess(), WorkingSetSize(minimum),
                                         WorkingSetSize(maximum));
    if (!ok)
        StoreError(error, ::GetLastError());
    return ok;
}

int MNMemoryUtils::HeapCompact(DWORD flags, DWORD* error)
{
    if (::HeapCompact(::GetProcessHeap(), flags) > 0)
        return 1;
    StoreError(error, ::GetLastError());
    return 0;
}

int MNMemoryUtils::OptimizeMemory(DWORD* error)
{
    int trimmed = SetProcessWorkingSetSize(kTrimSize, kTrimSize, error);
    int compacted = HeapCompact(0, trimmed ? error : NULL);
    return trimmed == 1 && compacted == 1;
}

DWORD MNMemoryUtils::SetMemProtect(void* address, DWORD protect, MEMORY_BASIC_INFORMATION* info)
{
    if (info == NULL)
        return kProtectFailed;
    if (address != NULL && ::VirtualQuery(address, info, sizeof(*info)) == 0)
        return kProtectFailed;
    DWORD previous = 0;
    if (!::VirtualProtect(info->BaseAddress, info->RegionSize, protect, &previous))
        return kProtectFailed;
    return previous;
}
