// Points one import of a module at a test replacement for the life of the object.
#pragma once
#include <MNAci.h>

class ScopedImportHook {
public:
    template <class F>
    ScopedImportHook(HMODULE module, const char* dllName, const char* procName, F* replacement)
    {
        m_data.pfnHook = reinterpret_cast<DWORD_PTR>(replacement);
        m_hooked = MNAci::HookImportedProcedureByName(module, dllName, procName, &m_data) == 1;
    }
    ~ScopedImportHook() { MNAci::UnhookImportedProcedure(&m_data); }
    ScopedImportHook(const ScopedImportHook&) = delete;
    ScopedImportHook& operator=(const ScopedImportHook&) = delete;

    bool Hooked() const { return m_hooked; }

private:
    MNAci::MCHookProcData m_data = {};
    bool m_hooked = false;
};

inline HMODULE TesvorUtilModule() { return ::GetModuleHandleW(L"TesvorUtil.dll"); }
