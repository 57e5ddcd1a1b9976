#include <gtest/gtest.h>
#include <MCModuleVersion.h>
#include <MNMemoryUtils.h>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>
#include "ScopedImportHook.h"

namespace {

// A file next to the test program: the library and the test DLLs are built there.
CString BinPath(const wchar_t* name)
{
    wchar_t path[MAX_PATH] = L"";
    CString full(path, ::GetModuleFileNameW(NULL, path, MAX_PATH));
    return full.Left(full.ReverseFind(L'\\') + 1) + name;
}

// "result: signature file-version product-version file-type language code-page value",
// where value tells what GetValue answers for any name: none, or the root (fixed) block.
std::string ReadVersions(const std::vector<const wchar_t*>& files)
{
    MCModuleVersion version;
    int result = 0;
    for (const wchar_t* file : files)
        result = version.GetFileVersionInfoW(BinPath(file));
    const wchar_t* value = version.GetValue(L"FileVersion");
    bool root = value && reinterpret_cast<const VS_FIXEDFILEINFO*>(value)->dwSignature == 0xFEEF04BD &&
                version.GetValue(L"NoSuchValue") == value && version.GetValue(L"ProductName") == value;
    char text[128];
    std::snprintf(text, sizeof(text), "%d: %lx %lx.%lx %lx.%lx %lu %x %u %s", result, version.dwSignature,
                  version.dwFileVersionMS, version.dwFileVersionLS, version.dwProductVersionMS,
                  version.dwProductVersionLS, version.dwFileType, version.m_wLanguage, version.m_wCodePage,
                  value == nullptr ? "none" : root ? "root" : "other");
    return text;
}

}  // namespace

TEST(ModuleVersion, ReadsTheFixedBlockAndTheFirstTranslation)
{
    const wchar_t* library = L"TesvorUtil.dll";
    EXPECT_EQ("0: 0 0.0 0.0 0 0 0 none", ReadVersions({}));
    EXPECT_EQ("1: feef04bd 10000.0 10000.0 2 409 1200 root", ReadVersions({library}));
    // Without a translation table the defaults stay, also after a file that had one.
    EXPECT_EQ("1: feef04bd 20003.40005 60007.80009 2 0 1252 root", ReadVersions({L"TesvorNoTranslation.dll"}));
    EXPECT_EQ("1: feef04bd 20003.40005 60007.80009 2 0 1252 root",
              ReadVersions({library, L"TesvorNoTranslation.dll"}));
    // Without a resource the fixed block is cleared; a block read earlier stays and still answers.
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 none", ReadVersions({L"TesvorNoVersion.dll"}));
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 root", ReadVersions({library, L"TesvorNoVersion.dll"}));
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 root", ReadVersions({library, L"NoSuchFile.dll"}));
    MCModuleVersion version;
    EXPECT_EQ(0, version.GetFileVersionInfoW(nullptr));

    // DllGetVersion looks up "D" (the wide name taken as narrow) and never calls it; only a
    // library exporting D has the record cleared, with its size set.
    for (const wchar_t* file : {library, L"TesvorNoTranslation.dll", L"NoSuchFile.dll"}) {
        DLLVERSIONINFO info;
        ::FillMemory(&info, sizeof(info), 0xCC);
        EXPECT_EQ(0, MCModuleVersion::DllGetVersion(BinPath(file), info));
        bool cleared = file && std::wcscmp(file, L"TesvorNoTranslation.dll") == 0;
        EXPECT_EQ((std::vector<DWORD>{cleared ? 20u : 0xCCCCCCCC, cleared ? 0u : 0xCCCCCCCC, cleared ? 0u : 0xCCCCCCCC}),
                  (std::vector<DWORD>{info.cbSize, info.dwMajorVersion, info.dwPlatformID}));
    }
}

BOOL g_workingSetWorks;
SIZE_T g_heapCompacted, g_minimum, g_maximum;
BOOL WINAPI FakeWorkingSet(HANDLE, SIZE_T minimum, SIZE_T maximum)
{
    g_minimum = minimum;
    g_maximum = maximum;
    ::SetLastError(g_workingSetWorks ? 0 : ERROR_ACCESS_DENIED);
    return g_workingSetWorks;
}
SIZE_T WINAPI FakeHeapCompact(HANDLE, DWORD)
{
    ::SetLastError(g_heapCompacted ? 0 : ERROR_NOT_ENOUGH_MEMORY);
    return g_heapCompacted;
}

TEST(MemoryUtils, ResultsAndTheFirstError)
{
    // Under Wine the heap is never compacted (HeapCompact gives 0), so the real result
    // follows what the system gives; an error is stored exactly when it is 0.
    int compacted = ::HeapCompact(::GetProcessHeap(), 0) > 0 ? 1 : 0;
    DWORD error = 0xDEADBEEF;
    EXPECT_EQ(compacted, MNMemoryUtils::OptimizeMemory(nullptr));
    EXPECT_EQ(compacted, MNMemoryUtils::OptimizeMemory(&error));
    EXPECT_EQ(compacted == 1, error == 0xDEADBEEF);

    ScopedImportHook workingSet(TesvorUtilModule(), "kernel32.dll", "SetProcessWorkingSetSize", &FakeWorkingSet);
    ScopedImportHook heap(TesvorUtilModule(), "KERNEL32.dll", "HeapCompact", &FakeHeapCompact);
    ASSERT_TRUE(workingSet.Hooked() && heap.Hooked());
    // optimize: working set works, heap compacted -> result, error stored, result without a pointer
    const struct {
        BOOL workingSetWorks;
        SIZE_T heapCompacted;
        std::vector<DWORD> results;
    } cases[] = {
        {TRUE, 0x10000, {1, 0xDEADBEEF, 1}},
        {FALSE, 0x10000, {0, ERROR_ACCESS_DENIED, 0}},
        {TRUE, 0, {0, ERROR_NOT_ENOUGH_MEMORY, 0}},
        {FALSE, 0, {0, ERROR_ACCESS_DENIED, 0}},  // the first failure is kept
    };
    for (const auto& c : cases) {
        g_workingSetWorks = c.workingSetWorks;
        g_heapCompacted = c.heapCompacted;
        error = 0xDEADBEEF;
        int result = MNMemoryUtils::OptimizeMemory(&error);
        EXPECT_EQ(c.results, (std::vector<DWORD>{DWORD(result), error, DWORD(MNMemoryUtils::OptimizeMemory(nullptr))}));
        // The trim asks for the largest size.
        EXPECT_EQ((std::vector<SIZE_T>{SIZE_T(-1), SIZE_T(-1)}), (std::vector<SIZE_T>{g_minimum, g_maximum}));
        // HeapCompact alone: 1, or 0 with its error.
        error = 0xDEADBEEF;
        EXPECT_EQ(c.heapCompacted ? 1 : 0, MNMemoryUtils::HeapCompact(0, &error));
        EXPECT_EQ(c.heapCompacted ? 0xDEADBEEF : DWORD(ERROR_NOT_ENOUGH_MEMORY), error);
        EXPECT_EQ(c.heapCompacted ? 1 : 0, MNMemoryUtils::HeapCompact(0, nullptr));
    }
    g_workingSetWorks = TRUE;
    EXPECT_EQ(1, MNMemoryUtils::SetProcessWorkingSetSize(0x100000, 0x400000, nullptr));
    EXPECT_EQ((std::vector<SIZE_T>{0x100000, 0x400000}), (std::vector<SIZE_T>{g_minimum, g_maximum}));
}

DWORD ProtectionOf(const void* address)
{
    MEMORY_BASIC_INFORMATION info = {};
    ::VirtualQuery(address, &info, sizeof(info));
    return info.Protect;
}

TEST(MemoryUtils, SetMemProtectChangesTheWholeRegionAndRestoresIt)
{
    SYSTEM_INFO system;
    ::GetSystemInfo(&system);
    const SIZE_T page = system.dwPageSize;
    BYTE* pages = static_cast<BYTE*>(::VirtualAlloc(NULL, 3 * page, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    ASSERT_NE(nullptr, pages);
    DWORD old = 0;
    ASSERT_TRUE(::VirtualProtect(pages, 1, PAGE_READONLY, &old));

    // The region starts at the queried page and runs over the pages alike.
    MEMORY_BASIC_INFORMATION info = {};
    EXPECT_EQ(DWORD(PAGE_READWRITE), MNMemoryUtils::SetMemProtect(pages + page + 10, PAGE_NOACCESS, &info));
    EXPECT_EQ(pages + page, info.BaseAddress);
    EXPECT_EQ(2 * page, info.RegionSize);
    EXPECT_EQ((std::vector<DWORD>{PAGE_READONLY, PAGE_NOACCESS, PAGE_NOACCESS}),
              (std::vector<DWORD>{ProtectionOf(pages), ProtectionOf(pages + page), ProtectionOf(pages + 2 * page)}));
    // Null: the region already described.
    EXPECT_EQ(DWORD(PAGE_NOACCESS), MNMemoryUtils::SetMemProtect(nullptr, PAGE_READWRITE, &info));
    EXPECT_EQ((std::vector<DWORD>{PAGE_READWRITE, PAGE_READWRITE}),
              (std::vector<DWORD>{ProtectionOf(pages + page), ProtectionOf(pages + 2 * page)}));
    pages[2 * page] = 1;

    // A free region is described but cannot be protected; an address beyond user space
    // cannot even be queried.
    ::VirtualFree(pages, 0, MEM_RELEASE);
    EXPECT_EQ(0xFFFFFFFF, MNMemoryUtils::SetMemProtect(pages, PAGE_READONLY, &info));
    EXPECT_EQ(0xFFFFFFFF, MNMemoryUtils::SetMemProtect(reinterpret_cast<void*>(~ULONG_PTR(0xFFFF)), PAGE_READONLY, &info));
    EXPECT_EQ(0xFFFFFFFF, MNMemoryUtils::SetMemProtect(pages, PAGE_READONLY, nullptr));
}
