#include <gtest/gtest.h>
#include <MNMemoryUtils.h>
#include "ScopedImportHook.h"

namespace {

const DWORD kUntouched = 0xDEADBEEF;
const DWORD kFailed = 0xFFFFFFFF;

// Stand-ins for the system calls the library makes, to reach its failure paths.
BOOL WINAPI FailingWorkingSet(HANDLE, SIZE_T, SIZE_T)
{
    ::SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

SIZE_T WINAPI FailingHeapCompact(HANDLE, DWORD)
{
    ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

SIZE_T g_workingSetMinimum;
SIZE_T g_workingSetMaximum;
BOOL WINAPI RecordingWorkingSet(HANDLE, SIZE_T minimum, SIZE_T maximum)
{
    g_workingSetMinimum = minimum;
    g_workingSetMaximum = maximum;
    return TRUE;
}

SIZE_T WINAPI WorkingHeapCompact(HANDLE, DWORD) { return 0x10000; }

// Under Wine the heap is never compacted (HeapCompact gives 0), so the result
// follows what the system gives; an error is stored exactly when it is 0.
TEST(MemoryUtils, OptimizeMemoryRunsWithAndWithoutErrorPointer)
{
    int expected = ::HeapCompact(::GetProcessHeap(), 0) > 0 ? 1 : 0;
    EXPECT_EQ(expected, MNMemoryUtils::OptimizeMemory(nullptr));
    DWORD error = kUntouched;
    EXPECT_EQ(expected, MNMemoryUtils::OptimizeMemory(&error));
    EXPECT_EQ(expected == 1, error == kUntouched);
}

TEST(MemoryUtils, OptimizeMemoryKeepsTheFirstFailure)
{
    struct Case {
        const char* what;
        bool failWorkingSet;
        bool failHeap;
        int result;
        DWORD error;
    };
    const Case cases[] = {
        {"both work", false, false, 1, kUntouched},
        {"working set fails", true, false, 0, ERROR_ACCESS_DENIED},
        {"heap fails", false, true, 0, ERROR_NOT_ENOUGH_MEMORY},
        {"both fail", true, true, 0, ERROR_ACCESS_DENIED},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        HMODULE lib = TesvorUtilModule();
        ScopedImportHook workingSet(lib, "kernel32.dll", "SetProcessWorkingSetSize",
                                    c.failWorkingSet ? &FailingWorkingSet : &RecordingWorkingSet);
        ScopedImportHook heap(lib, "kernel32.dll", "HeapCompact",
                              c.failHeap ? &FailingHeapCompact : &WorkingHeapCompact);
        ASSERT_TRUE(workingSet.Hooked());
        ASSERT_TRUE(heap.Hooked());

        DWORD error = kUntouched;
        EXPECT_EQ(c.result, MNMemoryUtils::OptimizeMemory(&error));
        EXPECT_EQ(c.error, error);
        EXPECT_EQ(c.result, MNMemoryUtils::OptimizeMemory(nullptr));
    }
}

TEST(MemoryUtils, TrimRequestIsPassedAsTheLargestSize)
{
    ScopedImportHook workingSet(TesvorUtilModule(), "KERNEL32.dll", "SetProcessWorkingSetSize",
                                &RecordingWorkingSet);
    ASSERT_TRUE(workingSet.Hooked());
    MNMemoryUtils::OptimizeMemory(nullptr);
    EXPECT_EQ(static_cast<SIZE_T>(-1), g_workingSetMinimum);
    EXPECT_EQ(static_cast<SIZE_T>(-1), g_workingSetMaximum);

    EXPECT_EQ(1, MNMemoryUtils::SetProcessWorkingSetSize(0x100000, 0x400000, nullptr));
    EXPECT_EQ(static_cast<SIZE_T>(0x100000), g_workingSetMinimum);
    EXPECT_EQ(static_cast<SIZE_T>(0x400000), g_workingSetMaximum);
}

TEST(MemoryUtils, HeapCompactGivesOneOrItsError)
{
    {
        ScopedImportHook heap(TesvorUtilModule(), "KERNEL32.dll", "HeapCompact", &WorkingHeapCompact);
        ASSERT_TRUE(heap.Hooked());
        DWORD error = kUntouched;
        EXPECT_EQ(1, MNMemoryUtils::HeapCompact(0, &error));
        EXPECT_EQ(kUntouched, error);
    }
    ScopedImportHook heap(TesvorUtilModule(), "KERNEL32.dll", "HeapCompact", &FailingHeapCompact);
    ASSERT_TRUE(heap.Hooked());
    DWORD error = kUntouched;
    EXPECT_EQ(0, MNMemoryUtils::HeapCompact(0, &error));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY), error);
    EXPECT_EQ(0, MNMemoryUtils::HeapCompact(0, nullptr));
}

DWORD ProtectionOf(const void* address)
{
    MEMORY_BASIC_INFORMATION info = {};
    ::VirtualQuery(address, &info, sizeof(info));
    return info.Protect;
}

// Three committed pages the test owns.
class Pages {
public:
    Pages() { m_base = static_cast<BYTE*>(::VirtualAlloc(NULL, 3 * Size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)); }
    ~Pages() { ::VirtualFree(m_base, 0, MEM_RELEASE); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    BYTE* Page(int index) const { return m_base + index * Size(); }
    static SIZE_T Size()
    {
        SYSTEM_INFO system;
        ::GetSystemInfo(&system);
        return system.dwPageSize;
    }

private:
    BYTE* m_base;
};

TEST(MemoryUtils, SetMemProtectChangesTheRegionAndRestoresIt)
{
    Pages pages;
    ASSERT_NE(nullptr, pages.Page(0));
    DWORD old = 0;
    ASSERT_TRUE(::VirtualProtect(pages.Page(0), 1, PAGE_READONLY, &old));

    // The region starts at the queried page and runs over the pages alike.
    MEMORY_BASIC_INFORMATION info = {};
    EXPECT_EQ(static_cast<DWORD>(PAGE_READWRITE), MNMemoryUtils::SetMemProtect(pages.Page(1) + 10, PAGE_NOACCESS, &info));
    EXPECT_EQ(pages.Page(1), info.BaseAddress);
    EXPECT_EQ(2 * Pages::Size(), info.RegionSize);
    EXPECT_EQ(static_cast<DWORD>(PAGE_READONLY), ProtectionOf(pages.Page(0)));
    EXPECT_EQ(static_cast<DWORD>(PAGE_NOACCESS), ProtectionOf(pages.Page(1)));
    EXPECT_EQ(static_cast<DWORD>(PAGE_NOACCESS), ProtectionOf(pages.Page(2)));

    // Null: the region already described.
    EXPECT_EQ(static_cast<DWORD>(PAGE_NOACCESS), MNMemoryUtils::SetMemProtect(nullptr, PAGE_READWRITE, &info));
    EXPECT_EQ(static_cast<DWORD>(PAGE_READWRITE), ProtectionOf(pages.Page(1)));
    EXPECT_EQ(static_cast<DWORD>(PAGE_READWRITE), ProtectionOf(pages.Page(2)));
    pages.Page(2)[0] = 1;
}

TEST(MemoryUtils, SetMemProtectFailsClearly)
{
    MEMORY_BASIC_INFORMATION info = {};
    // A free region is described but cannot be protected.
    BYTE* freed = static_cast<BYTE*>(::VirtualAlloc(NULL, Pages::Size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    ASSERT_NE(nullptr, freed);
    ::VirtualFree(freed, 0, MEM_RELEASE);
    EXPECT_EQ(kFailed, MNMemoryUtils::SetMemProtect(freed, PAGE_READONLY, &info));
    // An address beyond user space cannot even be queried.
    EXPECT_EQ(kFailed, MNMemoryUtils::SetMemProtect(reinterpret_cast<void*>(~static_cast<ULONG_PTR>(0xFFFF)),
                                                    PAGE_READONLY, &info));
    EXPECT_EQ(kFailed, MNMemoryUtils::SetMemProtect(freed, PAGE_READONLY, nullptr));
}

}  // namespace
