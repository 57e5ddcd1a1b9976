#include <gtest/gtest.h>
#include <MNAci.h>
#include <MNSystemAutorityHelper.h>
#include <cstring>
#include <string>
#include <vector>
#include "ScopedImportHook.h"

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
    // Wine's user is an administrator whose name fits.
    EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin());
    EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin());
    wchar_t name[256] = L"";
    DWORD size = 256;
    ASSERT_TRUE(::GetUserNameW(name, &size));
    ASSERT_LT(wcslen(name), 30u);
    EXPECT_EQ(CString(name), MNSystemAutorityHelper::GetProfileName());

    // At most 29 characters are taken (the size asked is 30), cut at the first NUL.
    ScopedImportHook userName(TesvorUtilModule(), "ADVAPI32.dll", "GetUserNameW", &FakeGetUserNameW);
    ASSERT_TRUE(userName.Hooked());
    const std::wstring name29(29, L'n');
    const std::wstring users[][2] = {{L"ann", L"ann"}, {name29, name29}, {name29 + L"x", L""},
                                     {std::wstring(40, L'y'), L""}, {std::wstring(L"ab\0cd", 5), L"ab"}};
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
        EXPECT_EQ(c.admin, MNSystemAutorityHelper::IsAdmin() != 0 ? 1 : 0);
        EXPECT_EQ(c.processCalls, g_processTokenCalls);
        ::RevertToSelf();  // the failure path leaves the thread impersonating
    }
}

namespace {

using MNAci::MCHookProcData;

DWORD WINAPI FixedTick() { return 0x12345678; }
DWORD WINAPI OtherTick() { return 0x0BADF00D; }

// Each call reads the test program's own import entry afresh.
__attribute__((noinline)) DWORD TickThroughImport() { return ::GetTickCount(); }

DWORD ProtectionOf(const void* address)
{
    MEMORY_BASIC_INFORMATION info = {};
    ::VirtualQuery(address, &info, sizeof(info));
    return info.Protect;
}

MCHookProcData Record(DWORD_PTR hook) { return MCHookProcData{0xAAAA, hook, nullptr, FALSE}; }
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
        AddLibrary("fake.dll", {"#5", "", "Alpha", "Beta"});
        AddLibrary("fake.dll", {"Gamma"});
        AddLibrary("ordinal.dll", {"#9"});
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
            ULONGLONG entry = import[0] == '#' ? (IMAGE_ORDINAL_FLAG | std::atoi(import + 1)) : AddText(import, 2);
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

TEST(ImportHook, RedirectsAndRestoresAnImportOfTheProgram)
{
    HMODULE exe = ::GetModuleHandleW(NULL);
    MCHookProcData data = Record(reinterpret_cast<DWORD_PTR>(&FixedTick));
    ASSERT_EQ(1, MNAci::HookImportedProcedureByName(exe, "kernel32.DLL", "gettickcount", &data));
    ASSERT_NE(nullptr, data.pSlot);
    DWORD protection = ProtectionOf(data.pSlot);
    EXPECT_EQ(TRUE, data.bHooked);
    EXPECT_EQ(data.pfnHook, *data.pSlot);
    EXPECT_EQ(0x12345678u, TickThroughImport());
    EXPECT_EQ(protection, ProtectionOf(data.pSlot));

    // The same record again: the entry is reused (no lookup at all) and the first original kept.
    DWORD_PTR original = data.pfnOriginal;
    DWORD_PTR* slot = data.pSlot;
    data.pfnHook = reinterpret_cast<DWORD_PTR>(&OtherTick);
    EXPECT_EQ(1, MNAci::HookImportedProcedureByName(exe, "nosuch.dll", "Nothing", &data));
    EXPECT_TRUE(slot == data.pSlot && original == data.pfnOriginal);
    EXPECT_EQ(0x0BADF00Du, TickThroughImport());

    EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
    EXPECT_TRUE(data.bHooked == FALSE && slot == data.pSlot && original == *slot);
    EXPECT_NE(0x0BADF00Du, TickThroughImport());
    EXPECT_NE(0x12345678u, TickThroughImport());
    EXPECT_EQ(protection, ProtectionOf(slot));

    // Unhooked, or never hooked: nothing to do, nothing changes.
    for (MCHookProcData unhooked : {data, Record(reinterpret_cast<DWORD_PTR>(&FixedTick))}) {
        MCHookProcData before = unhooked;
        EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&unhooked));
        EXPECT_TRUE(SameRecord(before, unhooked));
    }
    EXPECT_EQ(0, MNAci::UnhookImportedProcedure(nullptr));
}

TEST(ImportHook, FindsTheEntryOnlyByNameInTheFirstMatchingLibrary)
{
    FakeImage image;
    const struct {
        const char* dll;
        const char* proc;
        int library;  // -1: not found, the record stays as it was
        int index;
    } cases[] = {
        {"FAKE.DLL", "alpha", 1, 2},
        {"fake.dll", "Beta", 1, 3},
        {"other.dll", "delta", 0, 0},
        {"fake.dll", "Gamma", -1, 0},      // only the first fake.dll is searched
        {"fake.dll", "", -1, 0},           // nameless entries are passed over
        {"fake.dll", "Epsilon", -1, 0},
        {"ordinal.dll", "Nine", -1, 0},    // imported by ordinal only
        {"nolookup.dll", "Alpha", -1, 0},  // no lookup table
        {"missing.dll", "Alpha", -1, 0},
        {"fake", "Alpha", -1, 0},
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
        EXPECT_TRUE(slot == data.pSlot && hooked == 0x5150 && data.pfnOriginal != 0xAAAA);
        EXPECT_EQ(DWORD(PAGE_READONLY), ProtectionOf(slot));
        EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
        EXPECT_EQ(data.pfnOriginal, *slot);
        EXPECT_EQ(0x1000u * (c.library + 1) + c.index, *slot);
        EXPECT_EQ(DWORD(PAGE_READONLY), ProtectionOf(slot));
    }
    // Bad arguments fail and change nothing.
    MCHookProcData data = Record(0x5150), before = data;
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(NULL, "fake.dll", "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), nullptr, "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", nullptr, &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", "Alpha", nullptr));
    EXPECT_TRUE(SameRecord(before, data));
}
