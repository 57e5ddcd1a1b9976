#include <gtest/gtest.h>
#include <KernelObjectNames.h>
#include <MCModuleVersion.h>
#include <MNAci.h>
#include <MNMemoryUtils.h>
#include <MNSystemAutorityHelper.h>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>
#include "ScopedImportHook.h"
#include "TestSupport.h"
#include "frame/Owners.h"

namespace {

// "result: signature file-version product-version file-type language code-page value",
// where value tells what GetValue answers for any name: none, or the root (fixed) block.
std::string ReadVersions(const std::vector<const wchar_t*>& files)
{
    MCModuleVersion version;
    int result = 0;
    for (const wchar_t* file : files)
        result = version.GetFileVersionInfoW(file ? ProgramFolderPath(file).GetString() : nullptr);
    const wchar_t* value = version.GetValue(L"FileVersion");
    bool root = value && reinterpret_cast<const VS_FIXEDFILEINFO*>(value)->dwSignature == 0xFEEF04BD &&
                version.GetValue(L"NoSuchValue") == value && version.GetValue(L"ProductName") == value;
    const char* kind = value == nullptr ? "none" : root ? "root" : "other";
    char text[128];
    std::snprintf(text, sizeof(text), "%d: %lx %lx.%lx %lx.%lx %lu %x %u %s", result, version.dwSignature,
                  version.dwFileVersionMS, version.dwFileVersionLS, version.dwProductVersionMS,
                  version.dwProductVersionLS, version.dwFileType, version.m_wLanguage, version.m_wCodePage, kind);
    return text;
}

}  // namespace

TEST(ModuleVersion, ReadsTheFixedBlockAndTheFirstTranslation)
{
    const wchar_t* library = L"TesvorUtil.dll";
    EXPECT_EQ("0: 0 0.0 0.0 0 0 0 none", ReadVersions({}));
    EXPECT_EQ("1: feef04bd 10000.0 10000.0 2 409 1200 root", ReadVersions({library}));
    // Without a translation table the defaults stay, also after a file that had one.
    EXPECT_EQ("1: feef04bd 20003.40005 60007.80009 2 0 1252 root", ReadVersions({library, L"TesvorNoTranslation.dll"}));
    // Without a resource (or a name) the fixed block is cleared; a block read earlier stays and still answers.
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 none", ReadVersions({L"TesvorNoVersion.dll"}));
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 root", ReadVersions({library, L"TesvorNoVersion.dll"}));
    EXPECT_EQ("0: 0 0.0 0.0 0 0 1252 root", ReadVersions({library, nullptr}));

    // DllGetVersion looks up "D" (the wide name taken as narrow) and never calls it; only a
    // library exporting D has the record cleared, with its size set.
    for (const wchar_t* file : {library, L"TesvorNoTranslation.dll", L"NoSuchFile.dll"}) {
        DLLVERSIONINFO info;
        ::FillMemory(&info, sizeof(info), 0xCC);
        EXPECT_EQ(0, MCModuleVersion::DllGetVersion(ProgramFolderPath(file), info));
        bool cleared = file && std::wcscmp(file, L"TesvorNoTranslation.dll") == 0;
        EXPECT_EQ(cleared ? (Values{20, 0, 0}) : (Values{0xCCCCCCCC, 0xCCCCCCCC, 0xCCCCCCCC}),
                  (Values{info.cbSize, info.dwMajorVersion, info.dwPlatformID}));
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
    ScopedImportHook workingSet(TesvorUtilModule(), "kernel32.dll", "SetProcessWorkingSetSize", &FakeWorkingSet);
    ScopedImportHook heap(TesvorUtilModule(), "KERNEL32.dll", "HeapCompact", &FakeHeapCompact);
    ASSERT_TRUE(workingSet.Hooked() && heap.Hooked());
    // OptimizeMemory: result, error stored, result without a pointer (the first failure's error
    // is kept); HeapCompact alone: result, error stored. The trim asks for the largest size.
    const struct {
        BOOL workingSetWorks;
        SIZE_T heapCompacted;
        Values results;
    } cases[] = {{TRUE, 0x10000, {1, 0xDEADBEEF, 1, 1, 0xDEADBEEF}},
                 {FALSE, 0x10000, {0, ERROR_ACCESS_DENIED, 0, 1, 0xDEADBEEF}},
                 {TRUE, 0, {0, ERROR_NOT_ENOUGH_MEMORY, 0, 0, ERROR_NOT_ENOUGH_MEMORY}},
                 {FALSE, 0, {0, ERROR_ACCESS_DENIED, 0, 0, ERROR_NOT_ENOUGH_MEMORY}}};
    for (const auto& c : cases) {
        g_workingSetWorks = c.workingSetWorks;
        g_heapCompacted = c.heapCompacted;
        DWORD optimizeError = 0xDEADBEEF, heapError = 0xDEADBEEF;
        int optimized = MNMemoryUtils::OptimizeMemory(&optimizeError);
        int compacted = MNMemoryUtils::HeapCompact(0, &heapError);
        EXPECT_EQ(c.results,
                  (Values{optimized, optimizeError, MNMemoryUtils::OptimizeMemory(nullptr), compacted, heapError}));
        EXPECT_EQ((Values{compacted, -1, -1}),
                  (Values{MNMemoryUtils::HeapCompact(0, nullptr), LONG_PTR(g_minimum), LONG_PTR(g_maximum)}));
    }
    g_workingSetWorks = TRUE;
    EXPECT_EQ(1, MNMemoryUtils::SetProcessWorkingSetSize(0x100000, 0x400000, nullptr));
    EXPECT_EQ((Values{0x100000, 0x400000}), (Values{LONG_PTR(g_minimum), LONG_PTR(g_maximum)}));
}

DWORD ProtectionOf(const void* address)
{
    MEMORY_BASIC_INFORMATION info = {};
    ::VirtualQuery(address, &info, sizeof(info));
    return info.Protect;
}

TEST(MemoryUtils, SetMemProtectChangesTheWholeRegionAndRestoresIt)
{
    const SIZE_T page = 0x1000;  // the page size of x86 and x64 Windows alike
    BYTE* pages = static_cast<BYTE*>(::VirtualAlloc(NULL, 3 * page, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    ASSERT_NE(nullptr, pages);
    DWORD old = 0;
    ASSERT_TRUE(::VirtualProtect(pages, 1, PAGE_READONLY, &old));

    // The region starts at the queried page and runs over the pages alike. (Restoring it from
    // the record, with a null address, is how the import hooks in ImportHook put theirs back.)
    MEMORY_BASIC_INFORMATION info = {};
    EXPECT_EQ(DWORD(PAGE_READWRITE), MNMemoryUtils::SetMemProtect(pages + page + 10, PAGE_NOACCESS, &info));
    EXPECT_EQ(pages + page, info.BaseAddress);
    EXPECT_EQ(2 * page, info.RegionSize);
    EXPECT_EQ((Values{PAGE_READONLY, PAGE_NOACCESS, PAGE_NOACCESS}),
              (Values{ProtectionOf(pages), ProtectionOf(pages + page), ProtectionOf(pages + 2 * page)}));
    // Without a record to describe it, a region is not touched; a free region is described
    // but cannot be protected; an address beyond user space cannot even be queried.
    EXPECT_EQ(0xFFFFFFFF, MNMemoryUtils::SetMemProtect(pages + page, PAGE_READONLY, nullptr));
    EXPECT_EQ(DWORD(PAGE_NOACCESS), ProtectionOf(pages + page));
    ::VirtualFree(pages, 0, MEM_RELEASE);
    void* beyond = reinterpret_cast<void*>(~ULONG_PTR(0xFFFF));
    EXPECT_EQ((Values{0xFFFFFFFF, 0xFFFFFFFF}),
              (Values{MNMemoryUtils::SetMemProtect(pages, PAGE_READONLY, &info),
                      MNMemoryUtils::SetMemProtect(beyond, PAGE_READONLY, &info)}));
}

namespace {

// A GetUserNameW that reports a chosen name and the size it was asked for.
std::wstring g_userName;
DWORD g_sizeAsked;
BOOL WINAPI FakeGetUserNameW(LPWSTR buffer, LPDWORD size)
{
    g_sizeAsked = *size;
    DWORD needed = static_cast<DWORD>(g_userName.size()) + 1;
    bool fits = needed <= *size;
    if (fits)
        std::wmemcpy(buffer, g_userName.c_str(), needed);
    *size = needed;
    ::SetLastError(fits ? 0 : ERROR_INSUFFICIENT_BUFFER);
    return fits;
}

// Token openers: the thread has none (or fails otherwise); the process token is given as
// an impersonation token, the only kind the access check accepts.
DWORD g_threadTokenError;
BOOL g_processTokenWorks;
int g_processTokenCalls;
BOOL WINAPI FakeOpenThreadToken(HANDLE, DWORD, BOOL, PHANDLE)
{
    ::SetLastError(g_threadTokenError);
    return FALSE;
}
BOOL WINAPI FakeOpenProcessToken(HANDLE process, DWORD access, PHANDLE token)
{
    g_processTokenCalls++;
    HANDLE primary = NULL;
    if (!g_processTokenWorks || !::OpenProcessToken(process, access | TOKEN_DUPLICATE, &primary)) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    BOOL ok = ::DuplicateToken(primary, SecurityImpersonation, token);
    ::CloseHandle(primary);
    return ok;
}

}  // namespace

TEST(SystemAuthority, AdministratorAndProfileName)
{
    // At most 29 characters are taken (the size asked is 30), cut at the first NUL.
    ScopedImportHook userName(TesvorUtilModule(), "ADVAPI32.dll", "GetUserNameW", &FakeGetUserNameW);
    ASSERT_TRUE(userName.Hooked());
    const std::wstring name29(29, L'n');
    const std::wstring users[][2] = {{L"ann", L"ann"},
                                     {name29, name29},
                                     {name29 + L"x", L""},
                                     {std::wstring(L"ab\0cd", 5), L"ab"}};
    for (const auto& user : users) {
        g_userName = user[0];
        EXPECT_EQ(CString(user[1].c_str()), MNSystemAutorityHelper::GetProfileName());
        EXPECT_EQ(30u, g_sizeAsked);
    }

    // The process token is asked for only when the thread has none.
    ScopedImportHook thread(TesvorUtilModule(), "ADVAPI32.dll", "OpenThreadToken", &FakeOpenThreadToken);
    ScopedImportHook process(TesvorUtilModule(), "ADVAPI32.dll", "OpenProcessToken", &FakeOpenProcessToken);
    ASSERT_TRUE(thread.Hooked() && process.Hooked());
    const struct {
        DWORD threadError;
        BOOL processWorks;
        int processCalls, admin;
    } tokens[] = {{ERROR_NO_TOKEN, TRUE, 1, 1}, {ERROR_NO_TOKEN, FALSE, 1, 0}, {ERROR_ACCESS_DENIED, TRUE, 0, 0}};
    for (const auto& c : tokens) {
        g_threadTokenError = c.threadError;
        g_processTokenWorks = c.processWorks;
        g_processTokenCalls = 0;
        bool admin = MNSystemAutorityHelper::IsAdmin() != 0;
        EXPECT_EQ((Values{c.admin, c.processCalls}), (Values{admin, g_processTokenCalls}));
        ::RevertToSelf();  // the failure path leaves the thread impersonating
    }
}

namespace {

// Every fixed block the library asks LocalAlloc for gets a guard zone behind it and is kept
// until the test looks at it, so that a write past the size asked for shows as a changed zone.
const SIZE_T kGuardSize = 64;
const BYTE kGuardByte = 0xA5;
std::vector<std::pair<BYTE*, SIZE_T>> g_guardedBlocks;

HLOCAL WINAPI GuardedLocalAlloc(UINT flags, SIZE_T size)
{
    if (flags & LMEM_MOVEABLE)
        return ::LocalAlloc(flags, size);
    BYTE* data = static_cast<BYTE*>(::LocalAlloc(flags, size + kGuardSize));
    if (data != NULL) {
        std::memset(data + size, kGuardByte, kGuardSize);
        g_guardedBlocks.emplace_back(data, size);
    }
    return data;
}
HLOCAL WINAPI KeptLocalFree(HLOCAL) { return NULL; }

}  // namespace

// The security helpers size system structures that are larger on the 64-bit build. An
// open-access mutex keeps the system's error, and the caller's attributes are used as given.
TEST(SystemAuthority, NoWritePastAnAllocatedBlockAndOpenAccessMutexes)
{
    UniqueHandle first;
    {
        ScopedImportHook alloc(TesvorUtilModule(), "KERNEL32.dll", "LocalAlloc", &GuardedLocalAlloc);
        ScopedImportHook release(TesvorUtilModule(), "KERNEL32.dll", "LocalFree", &KeptLocalFree);
        ASSERT_TRUE(alloc.Hooked() && release.Hooked());
        EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin());
        first.reset(CreateMutexAllAccess(NULL, TRUE, L"Global\\TesvorTestTwiceMutex"));
    }
    ::SetLastError(0);
    UniqueHandle second(CreateMutexAllAccess(NULL, FALSE, L"Global\\TesvorTestTwiceMutex"));
    EXPECT_TRUE(first && second && ::GetLastError() == ERROR_ALREADY_EXISTS) << ::GetLastError();
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), NULL, TRUE};
    UniqueHandle third(CreateMutexAllAccess(&inheritable, FALSE, L"TesvorTestCallerSecuredMutex"));
    DWORD flags = 0;
    EXPECT_TRUE(::GetHandleInformation(third.get(), &flags) && (flags & HANDLE_FLAG_INHERIT));
    EXPECT_LE(3u, g_guardedBlocks.size());  // two descriptors and an access list at least
    for (const auto& block : g_guardedBlocks) {
        const BYTE* zone = block.first + block.second;
        EXPECT_TRUE(std::all_of(zone, zone + kGuardSize, [](BYTE b) { return b == kGuardByte; }))
            << "written past a block of " << block.second << " bytes";
        ::LocalFree(block.first);
    }
}

namespace {

using MNAci::MCHookProcData;

MCHookProcData Record(DWORD_PTR hook)
{
    return MCHookProcData{0xAAAA, hook, nullptr, FALSE};
}
bool SameRecord(const MCHookProcData& a, const MCHookProcData& b) { return std::memcmp(&a, &b, sizeof(a)) == 0; }

// A module image made by hand, to reach import tables a real build rarely has: other.dll
// imports Delta; fake.dll one by ordinal, a nameless one, Alpha and Beta; a second fake.dll
// (never searched) Gamma; ordinal.dll only by ordinal; nolookup.dll Alpha without a lookup
// table. The address tables lie on the second page, which is read-only.
class FakeImage {
public:
    FakeImage() : m_base(static_cast<BYTE*>(::VirtualAlloc(NULL, 2 * kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)))
    {
        At<IMAGE_DOS_HEADER>(0)->e_magic = IMAGE_DOS_SIGNATURE;
        At<IMAGE_DOS_HEADER>(0)->e_lfanew = 0x40;
        auto* nt = At<IMAGE_NT_HEADERS>(0x40);
        nt->Signature = IMAGE_NT_SIGNATURE;
        nt->OptionalHeader.Magic = IMAGE_NT_OPTIONAL_HDR_MAGIC;
        nt->OptionalHeader.NumberOfRvaAndSizes = IMAGE_NUMBEROF_DIRECTORY_ENTRIES;
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress = kDescriptors;
        AddLibrary("other.dll", {"Delta"});
        AddLibrary("fake.dll", {"#Alpha", "", "Alpha", "Beta"});
        AddLibrary("fake.dll", {"Gamma"});
        AddLibrary("ordinal.dll", {"#Nine"});
        AddLibrary("nolookup.dll", {"Alpha"}, false);
        DWORD old = 0;
        ::VirtualProtect(m_base + kPage, kPage, PAGE_READONLY, &old);
    }
    ~FakeImage() { ::VirtualFree(m_base, 0, MEM_RELEASE); }
    FakeImage(const FakeImage&) = delete;
    FakeImage& operator=(const FakeImage&) = delete;

    HINSTANCE Module() const { return reinterpret_cast<HINSTANCE>(m_base); }
    // The address table entry of a library (in order of addition) and import index.
    DWORD_PTR* Slot(int library, int index) const
    {
        return reinterpret_cast<DWORD_PTR*>(m_base + kPage + library * kTableSize) + index;
    }

private:
    static const DWORD kPage = 0x1000, kDescriptors = 0x200, kLookupTables = 0x400, kTableSize = 0x80;

    template <class T> T* At(DWORD rva) { return reinterpret_cast<T*>(m_base + rva); }

    void AddLibrary(const char* name, std::initializer_list<const char*> imports, bool withLookup = true)
    {
        DWORD lookup = kLookupTables + m_libraries * kTableSize, address = kPage + m_libraries * kTableSize;
        auto* descriptor = At<IMAGE_IMPORT_DESCRIPTOR>(kDescriptors) + m_libraries;
        descriptor->Name = AddText(name, 0);
        descriptor->OriginalFirstThunk = withLookup ? lookup : 0;
        descriptor->FirstThunk = address;
        int index = 0;
        for (const char* import : imports) {
            // By ordinal ("#"), a number that would also be the place of the name if read as one.
            ULONGLONG entry = import[0] == '#' ? (IMAGE_ORDINAL_FLAG | AddText(import + 1, 2)) : AddText(import, 2);
            At<IMAGE_THUNK_DATA>(lookup)[index].u1.AddressOfData = static_cast<ULONG_PTR>(entry);
            At<IMAGE_THUNK_DATA>(address)[index].u1.Function = 0x1000 * (m_libraries + 1) + index;
            index++;
        }
        m_libraries++;
    }

    // Text after `prefix` zero bytes (the hint of an import by name).
    DWORD AddText(const char* text, DWORD prefix)
    {
        DWORD rva = m_nextText;
        std::memcpy(m_base + rva + prefix, text, std::strlen(text) + 1);
        m_nextText += prefix + static_cast<DWORD>(std::strlen(text)) + 1;
        return rva;
    }

    BYTE* m_base;
    int m_libraries = 0;
    DWORD m_nextText = 0xA00;
};

}  // namespace

TEST(ImportHook, FindsTheEntryOnlyByNameInTheFirstMatchingLibrary)
{
    FakeImage image;
    const struct {
        const char* dll;
        const char* proc;
        int library;  // -1: not found, the record stays as it was
        int index;
    } cases[] = {
        {"FAKE.DLL", "alpha", 1, 2},      {"fake.dll", "Beta", 1, 3},
        {"other.dll", "delta", 0, 0},     {"fake.dll", "Gamma", -1, 0},    // only the first fake.dll is searched
        {"fake.dll", "", -1, 0},                                           // nameless entries are passed over
        {"fake.dll", "Epsilon", -1, 0},   {"ordinal.dll", "Nine", -1, 0},  // imported by ordinal only
        {"nolookup.dll", "Alpha", -1, 0},                                  // no lookup table
        {"missing.dll", "Alpha", -1, 0},  {"fake", "Alpha", -1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.dll) + "!" + c.proc);
        MCHookProcData data = Record(0x5150), before = data;
        int result = MNAci::HookImportedProcedureByName(image.Module(), c.dll, c.proc, &data);
        if (c.library < 0) {
            EXPECT_EQ(0, result);
            EXPECT_TRUE(SameRecord(before, data));
            continue;
        }
        DWORD_PTR* slot = image.Slot(c.library, c.index);
        DWORD_PTR hooked = *slot;
        EXPECT_EQ(1, result);
        EXPECT_TRUE(slot == data.pSlot && hooked == 0x5150 && data.bHooked == TRUE);
        EXPECT_EQ(DWORD(PAGE_READONLY), ProtectionOf(slot));
        EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
        EXPECT_TRUE(data.bHooked == FALSE && slot == data.pSlot && data.pfnOriginal == *slot);
        EXPECT_EQ(0x1000u * (c.library + 1) + c.index, *slot);
        EXPECT_EQ(DWORD(PAGE_READONLY), ProtectionOf(slot));
    }

    // The same record again: its entry is reused without a lookup, and the first original kept.
    MCHookProcData data = Record(0x5150);
    ASSERT_EQ(1, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", "Beta", &data));
    data.pfnHook = 0x6160;
    EXPECT_EQ(1, MNAci::HookImportedProcedureByName(image.Module(), "nosuch.dll", "Nothing", &data));
    EXPECT_TRUE(image.Slot(1, 3) == data.pSlot && 0x2003 == data.pfnOriginal && 0x6160 == *data.pSlot);
    EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
    // Unhooked, or never hooked: nothing to do, nothing changes.
    for (MCHookProcData unhooked : {data, Record(0x5150)}) {
        MCHookProcData before = unhooked;
        EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&unhooked));
        EXPECT_TRUE(SameRecord(before, unhooked));
    }
    EXPECT_EQ(0, MNAci::UnhookImportedProcedure(nullptr));
    // Bad arguments fail and change nothing.
    MCHookProcData before = data = Record(0x5150);
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(NULL, "fake.dll", "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), nullptr, "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", nullptr, &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", "Alpha", nullptr));
    EXPECT_TRUE(SameRecord(before, data));
}
