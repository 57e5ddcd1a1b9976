// Typed look-up of an entry point by name, for the late-bound system calls.
#pragma once
#include <windows.h>

template <typename Pointer>
bool BindProc(HMODULE module, const char* name, Pointer& pointer)
{
    pointer = module ? reinterpret_cast<Pointer>(reinterpret_cast<void*>(::GetProcAddress(module, name)))
                     : NULL;
    return pointer != NULL;
}
