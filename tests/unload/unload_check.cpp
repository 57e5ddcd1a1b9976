// Loads and frees TesvorUtil.dll around a call that runs under the library's fault
// guard, then throws a C++ exception and raises a continuable system exception.
// Exits 0 when all of it survives; prints what went wrong otherwise.
#include <windows.h>
#include <cstdio>
#include <stdexcept>

namespace {

const DWORD kContinuable = 0xE0001234;

class CWnd;
// MUIUtils::IsWindowEnabled(CWnd*, UINT), looked up by its exported (GCC) name.
typedef BOOL (*IsWindowEnabledProc)(CWnd*, UINT);
const char kIsWindowEnabled[] = "_ZN8MUIUtils15IsWindowEnabledEP4CWndj";

int Fail(const char* what)
{
    std::fprintf(stderr, "unload_check: %s\n", what);
    return 1;
}

LONG CALLBACK ContinueOurs(EXCEPTION_POINTERS* info)
{
    return info->ExceptionRecord->ExceptionCode == kContinuable ? EXCEPTION_CONTINUE_EXECUTION
                                                                 : EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

int main()
{
    // The system libraries that the library brings in take their own thread slots
    // once, on a first load; after that the lowest free slot is the one the guard
    // takes, and must give back.
    ::FreeLibrary(::LoadLibraryW(L"TesvorUtil.dll"));
    const DWORD freeSlot = ::TlsAlloc();
    ::TlsFree(freeSlot);

    for (int round = 0; round < 3; ++round) {
        HMODULE library = ::LoadLibraryW(L"TesvorUtil.dll");
        if (library == NULL)
            return Fail("TesvorUtil.dll does not load");
        auto isWindowEnabled = reinterpret_cast<IsWindowEnabledProc>(
            reinterpret_cast<void*>(::GetProcAddress(library, kIsWindowEnabled)));
        if (isWindowEnabled == NULL)
            return Fail("MUIUtils::IsWindowEnabled is not exported under its expected name");
        // A parent that is no longer there: the guard turns the fault into FALSE.
        if (isWindowEnabled(reinterpret_cast<CWnd*>(static_cast<ULONG_PTR>(0x10)), 1) != FALSE)
            return Fail("a control of a vanished parent counts as enabled");
        ::FreeLibrary(library);
        if (::GetModuleHandleW(L"TesvorUtil.dll") != NULL)
            return Fail("TesvorUtil.dll stays loaded after FreeLibrary");
    }

    const DWORD slot = ::TlsAlloc();
    if (slot != freeSlot)
        return Fail("the fault guard's thread-local slot is still taken after the unload");
    ::TlsFree(slot);

    try {
        throw std::runtime_error("after unload");
    } catch (const std::runtime_error&) {
    }

    PVOID handler = ::AddVectoredExceptionHandler(0, ContinueOurs);
    ::RaiseException(kContinuable, 0, 0, NULL);
    ::RemoveVectoredExceptionHandler(handler);
    return 0;
}
