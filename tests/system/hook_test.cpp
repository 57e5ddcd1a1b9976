#include <gtest/gtest.h>
#include <MNAci.h>
#include <cstring>

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

MCHookProcData Record(DWORD_PTR hook)
{
    MCHookProcData data;
    data.pfnOriginal = 0xAAAA;
    data.pfnHook = hook;
    data.pSlot = nullptr;
    data.bHooked = FALSE;
    return data;
}

bool SameRecord(const MCHookProcData& a, const MCHookProcData& b) { return std::memcmp(&a, &b, sizeof(a)) == 0; }

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

    // The same record again: the entry is reused (no lookup at all) and the
    // first original is kept.
    DWORD_PTR original = data.pfnOriginal;
    DWORD_PTR* slot = data.pSlot;
    data.pfnHook = reinterpret_cast<DWORD_PTR>(&OtherTick);
    EXPECT_EQ(1, MNAci::HookImportedProcedureByName(exe, "nosuch.dll", "Nothing", &data));
    EXPECT_EQ(slot, data.pSlot);
    EXPECT_EQ(original, data.pfnOriginal);
    EXPECT_EQ(0x0BADF00Du, TickThroughImport());

    EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
    EXPECT_EQ(FALSE, data.bHooked);
    EXPECT_EQ(slot, data.pSlot);
    EXPECT_EQ(original, *slot);
    EXPECT_NE(0x0BADF00Du, TickThroughImport());
    EXPECT_NE(0x12345678u, TickThroughImport());
    EXPECT_EQ(protection, ProtectionOf(slot));

    // Unhooked: nothing to do, nothing changes.
    MCHookProcData before = data;
    EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
    EXPECT_TRUE(SameRecord(before, data));
}

TEST(ImportHook, UnhookWithoutHookIsDone)
{
    MCHookProcData data = Record(reinterpret_cast<DWORD_PTR>(&FixedTick));
    MCHookProcData before = data;
    EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
    EXPECT_TRUE(SameRecord(before, data));
    EXPECT_EQ(0, MNAci::UnhookImportedProcedure(nullptr));
}

// A module image made by hand, to reach import tables a real build rarely has.
// The address tables lie on the second page, which is read-only.
class FakeImage {
public:
    static const DWORD kPage = 0x1000;

    FakeImage()
    {
        m_base = static_cast<BYTE*>(::VirtualAlloc(NULL, 2 * kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
        auto* dos = At<IMAGE_DOS_HEADER>(0);
        dos->e_magic = IMAGE_DOS_SIGNATURE;
        dos->e_lfanew = 0x40;
        auto* nt = At<IMAGE_NT_HEADERS>(0x40);
        nt->Signature = IMAGE_NT_SIGNATURE;
        nt->OptionalHeader.Magic = IMAGE_NT_OPTIONAL_HDR_MAGIC;
        nt->OptionalHeader.NumberOfRvaAndSizes = IMAGE_NUMBEROF_DIRECTORY_ENTRIES;
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress = kDescriptors;

        // other.dll: Delta. fake.dll: by ordinal, a nameless entry, Alpha, Beta.
        // A second fake.dll (Gamma) is never searched. ordinal.dll: by ordinal
        // only. nolookup.dll: Alpha, but without a lookup table.
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
    // The address table entry of library (in order of addition) and import index.
    DWORD_PTR* Slot(int library, int index) const
    {
        return reinterpret_cast<DWORD_PTR*>(m_base + kPage + library * kTableSize) + index;
    }

private:
    static const DWORD kDescriptors = 0x200;
    static const DWORD kLookupTables = 0x400;
    static const DWORD kTableSize = 0x80;

    template <class T> T* At(DWORD rva) { return reinterpret_cast<T*>(m_base + rva); }

    void AddLibrary(const char* name, std::initializer_list<const char*> imports, bool withLookup = true)
    {
        DWORD lookup = kLookupTables + m_libraries * kTableSize;
        DWORD address = kPage + m_libraries * kTableSize;
        auto* desc = At<IMAGE_IMPORT_DESCRIPTOR>(kDescriptors) + m_libraries;
        desc->Name = AddText(name, 0);
        desc->OriginalFirstThunk = withLookup ? lookup : 0;
        desc->FirstThunk = address;
        int index = 0;
        for (const char* import : imports) {
            ULONGLONG entry = import[0] == '#' ? (IMAGE_ORDINAL_FLAG | std::atoi(import + 1)) : AddText(import, 2);
            At<IMAGE_THUNK_DATA>(lookup)[index].u1.AddressOfData = static_cast<decltype(IMAGE_THUNK_DATA().u1.AddressOfData)>(entry);
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

TEST(ImportHook, FindsTheEntryOnlyByNameInTheFirstMatchingLibrary)
{
    FakeImage image;
    struct Case {
        const char* dll;
        const char* proc;
        int library;  // -1: not found, the record stays as it was
        int index;
    };
    const Case cases[] = {
        {"FAKE.DLL", "alpha", 1, 2},
        {"fake.dll", "Beta", 1, 3},
        {"other.dll", "delta", 0, 0},
        {"fake.dll", "Gamma", -1, 0},       // only the first fake.dll is searched
        {"fake.dll", "", -1, 0},            // nameless entries are passed over
        {"fake.dll", "Epsilon", -1, 0},
        {"ordinal.dll", "Nine", -1, 0},     // imported by ordinal only
        {"nolookup.dll", "Alpha", -1, 0},   // no lookup table
        {"missing.dll", "Alpha", -1, 0},
        {"fake", "Alpha", -1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.dll) + "!" + c.proc);
        MCHookProcData data = Record(0x5150);
        MCHookProcData before = data;
        int result = MNAci::HookImportedProcedureByName(image.Module(), c.dll, c.proc, &data);
        if (c.library < 0) {
            EXPECT_EQ(0, result);
            EXPECT_TRUE(SameRecord(before, data));
            continue;
        }
        DWORD_PTR* slot = image.Slot(c.library, c.index);
        DWORD_PTR original = *slot;
        EXPECT_EQ(1, result);
        EXPECT_EQ(slot, data.pSlot);
        EXPECT_EQ(0x5150u, *slot);
        EXPECT_NE(0xAAAAu, data.pfnOriginal);
        EXPECT_EQ(static_cast<DWORD>(PAGE_READONLY), ProtectionOf(slot));
        EXPECT_EQ(1, MNAci::UnhookImportedProcedure(&data));
        EXPECT_EQ(data.pfnOriginal, *slot);
        EXPECT_NE(original, *slot);  // `original` was read while hooked
        EXPECT_EQ(static_cast<DWORD>(PAGE_READONLY), ProtectionOf(slot));
    }
}

TEST(ImportHook, BadArgumentsFail)
{
    FakeImage image;
    MCHookProcData data = Record(0x5150);
    MCHookProcData before = data;
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(NULL, "fake.dll", "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), nullptr, "Alpha", &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", nullptr, &data));
    EXPECT_EQ(0, MNAci::HookImportedProcedureByName(image.Module(), "fake.dll", "Alpha", nullptr));
    EXPECT_TRUE(SameRecord(before, data));
}

}  // namespace
