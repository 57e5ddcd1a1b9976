// Test helper: redirects one function that a loaded module imports, for the
// life of the object, by rewriting the module's import address table. Lets
// tests observe the library's calls to the shell, COM and WinINet without
// their side effects.
#pragma once
#include <windows.h>
#include <cstring>

class ScopedImportPatch {
public:
    ScopedImportPatch(const wchar_t* moduleName, const char* dllName, const char* functionName, void* replacement)
        : m_slot(FindSlot(::GetModuleHandleW(moduleName), dllName, functionName)), m_original(NULL)
    {
        if (m_slot != NULL) {
            m_original = *m_slot;
            Store(replacement);
        }
    }
    ~ScopedImportPatch()
    {
        if (m_slot != NULL)
            Store(m_original);
    }
    ScopedImportPatch(const ScopedImportPatch&) = delete;
    ScopedImportPatch& operator=(const ScopedImportPatch&) = delete;

    bool Installed() const { return m_slot != NULL; }

private:
    static void** FindSlot(HMODULE module, const char* dllName, const char* functionName)
    {
        if (module == NULL)
            return NULL;
        BYTE* base = reinterpret_cast<BYTE*>(module);
        auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
        auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        if (dir.VirtualAddress == 0)
            return NULL;
        for (auto* desc = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress); desc->Name != 0;
             ++desc) {
            if (_stricmp(reinterpret_cast<const char*>(base + desc->Name), dllName) != 0 ||
                desc->OriginalFirstThunk == 0)
                continue;
            auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + desc->OriginalFirstThunk);
            auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + desc->FirstThunk);
            for (; names->u1.AddressOfData != 0; ++names, ++slots) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                    continue;
                auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
                if (std::strcmp(reinterpret_cast<const char*>(byName->Name), functionName) == 0)
                    return reinterpret_cast<void**>(&slots->u1.Function);
            }
        }
        return NULL;
    }

    void Store(void* value)
    {
        DWORD oldProtect = 0;
        ::VirtualProtect(m_slot, sizeof(void*), PAGE_READWRITE, &oldProtect);
        *m_slot = value;
        ::VirtualProtect(m_slot, sizeof(void*), oldProtect, &oldProtect);
    }

    void** m_slot;
    void* m_original;
};
