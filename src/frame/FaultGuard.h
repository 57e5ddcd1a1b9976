// Runs code that may touch memory it does not own (a caller's buffer, a window
// object that has gone away) and turns a machine fault inside it into a false
// result instead of the end of the process. C++ catch(...) cannot do this with
// this compiler: its exceptions are not the system's structured exceptions.
#pragma once
#include <windows.h>
#include <utility>

namespace TesvorFaultGuard {
bool RunGuarded(void (*body)(void*), void* context, DWORD* pFaultCode);
// Takes the guard's exception handler and thread slot out of the process; the
// library calls it when it unloads.
void Uninstall();
}

// True when body() ran to its end. False when a machine fault (access violation,
// bad instruction, division by zero...) stopped it; *pFaultCode then holds the
// exception code. Objects that body() had on its own stack are abandoned without
// their destructors, so a guarded body should own nothing that must be released.
// C++ exceptions pass through unchanged.
template <class Body>
bool RunWithFaultGuard(Body&& body, DWORD* pFaultCode = nullptr)
{
    auto call = [](void* p) { (*static_cast<typename std::remove_reference<Body>::type*>(p))(); };
    return TesvorFaultGuard::RunGuarded(call, const_cast<void*>(static_cast<const void*>(&body)), pFaultCode);
}
