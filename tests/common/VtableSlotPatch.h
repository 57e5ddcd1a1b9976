// Swaps one slot of a COM object's function table for the length of a scope, so
// that a test can watch or fail calls into a real platform component.
#pragma once
#include <windows.h>
#include <gtest/gtest.h>

class VtableSlotPatch {
public:
    VtableSlotPatch(IUnknown* object, size_t slot, void* replacement)
        : m_entry(*reinterpret_cast<void***>(object) + slot)
    {
        m_original = Write(replacement);
    }
    ~VtableSlotPatch() { Write(m_original); }
    VtableSlotPatch(const VtableSlotPatch&) = delete;
    VtableSlotPatch& operator=(const VtableSlotPatch&) = delete;

    void* Original() const { return m_original; }

private:
    void* Write(void* value)
    {
        DWORD protection = 0;
        EXPECT_TRUE(VirtualProtect(m_entry, sizeof(void*), PAGE_READWRITE, &protection));
        void* previous = *m_entry;
        *m_entry = value;
        VirtualProtect(m_entry, sizeof(void*), protection, &protection);
        return previous;
    }

    void** m_entry;
    void* m_original;
};
