#include "MNAci.h"
#include "MNMemoryUtils.h"

namespace {

const DWORD kProtectFailed = 0xFFFFFFFF;

template <class T> T* AtRva(HINSTANCE module, DWORD rva)
{
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + rva);
}

const IMAGE_IMPORT_DESCRIPTOR* FindImportedLibrary(HINSTANCE module, const char* dllName)
{
    const IMAGE_DOS_HEADER* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    if (pDos->e_magic != IMAGE_DOS_SIGNATURE)
        return NULL;
    const IMAGE_NT_HEADERS* pNt = AtRva<const IMAGE_NT_HEADERS>(module, static_cast<DWORD>(pDos->e_lfanew));
    if (pNt->Signature != IMAGE_NT_SIGNATURE ||
        pNt->OptionalHeader.NumberOfRvaAndSizes <= IMAGE_DIRECTORY_ENTRY_IMPORT)
        return NULL;
    DWORD importRva = pNt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (importRva == 0)
        return NULL;
    for (const IMAGE_IMPORT_DESCRIPTOR* pDesc = AtRva<const IMAGE_IMPORT_DESCRIPTOR>(module, importRva);
         pDesc->Name != 0; pDesc++) {
        if (::lstrcmpiA(AtRva<const char>(module, pDesc->Name), dllName) == 0)
            return pDesc;
    }
    return NULL;
}

// The address table entry of procName, found through the lookup table; imports
// by ordinal and nameless entries are passed over.
DWORD_PTR* FindImportSlot(HINSTANCE module, const char* dllName, const char* procName)
{
    const IMAGE_IMPORT_DESCRIPTOR* pDesc = FindImportedLibrary(module, dllName);
    if (pDesc == NULL || pDesc->OriginalFirstThunk == 0)
        return NULL;
    const IMAGE_THUNK_DATA* pLookup = AtRva<const IMAGE_THUNK_DATA>(module, pDesc->OriginalFirstThunk);
    IMAGE_THUNK_DATA* pAddress = AtRva<IMAGE_THUNK_DATA>(module, pDesc->FirstThunk);
    for (; pLookup->u1.AddressOfData != 0; pLookup++, pAddress++) {
        if (IMAGE_SNAP_BY_ORDINAL(pLookup->u1.Ordinal))
            continue;
        const IMAGE_IMPORT_BY_NAME* pName =
            AtRva<const IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(pLookup->u1.AddressOfData));
        const char* name = reinterpret_cast<const char*>(pName->Name);
        if (name[0] != '\0' && ::lstrcmpiA(name, procName) == 0)
            return reinterpret_cast<DWORD_PTR*>(&pAddress->u1.Function);
    }
    return NULL;
}

// Writes value into the entry while its pages are writable; the swap is atomic so
// that a thread calling through the entry sees either address, never a mix.
bool ExchangeSlot(DWORD_PTR* pSlot, DWORD_PTR value, DWORD_PTR* pOldValue)
{
    MEMORY_BASIC_INFORMATION info;
    DWORD previous = MNMemoryUtils::SetMemProtect(pSlot, PAGE_READWRITE, &info);
    if (previous == kProtectFailed)
        return false;
    PVOID old = ::InterlockedExchangePointer(reinterpret_cast<PVOID volatile*>(pSlot),
                                             reinterpret_cast<PVOID>(value));
    *pOldValue = reinterpret_cast<DWORD_PTR>(old);
    MNMemoryUtils::SetMemProtect(NULL, previous, &info);
    return true;
}

}  // namespace

int MNAci::HookImportedProcedureByName(HINSTANCE module, const char* dllName, const char* procName,
                                       MCHookProcData* data)
{
    if (data == NULL)
        return 0;
    DWORD_PTR* pSlot = data->pSlot;
    bool found = false;
    if (pSlot == NULL) {
        if (module == NULL || dllName == NULL || procName == NULL)
            return 0;
        pSlot = FindImportSlot(module, dllName, procName);
        if (pSlot == NULL)
            return 0;
        found = true;
    }

    DWORD_PTR old = 0;
    if (!ExchangeSlot(pSlot, data->pfnHook, &old))
        return 0;
    // A preset entry keeps the original saved by the first hook.
    if (found) {
        data->pSlot = pSlot;
        data->pfnOriginal = old;
    }
    data->bHooked = TRUE;
    return 1;
}

int MNAci::UnhookImportedProcedure(MCHookProcData* data)
{
    if (data == NULL)
        return 0;
    if (!data->bHooked)
        return 1;
    DWORD_PTR replaced = 0;
    if (data->pSlot == NULL || !ExchangeSlot(data->pSlot, data->pfnOriginal, &replaced))
        return 0;
    data->bHooked = FALSE;
    return 1;
}
