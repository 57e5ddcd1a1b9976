// The fault guard works with a vectored exception handler and a per-thread jump
// target instead of compiler-level __try/__except, which GCC does not provide
// (MinGW's __try1 macros break under optimisation and differ between x86 and x64).
//
// When a machine fault occurs on a thread that is inside a guard, the handler
// does not jump away from the dispatcher's own frames: it rewrites the faulting
// context so that the thread resumes in LandAfterFault on a clean part of its
// stack, and lets the system finish dispatching normally (CONTINUE_EXECUTION).
// LandAfterFault then returns to the guard with __builtin_longjmp, which restores
// the guard's frame without unwinding through the abandoned frames.
//
// Vectored handlers run before frame-based ones, so inside a guard the guard also
// sees faults that system code would have handled itself (IsBadReadPtr and its
// kin). Guarded bodies therefore stay small: a copy, a window call.
#include "FaultGuard.h"

namespace {

struct GuardFrame {
    void* jumpBuffer[5];  // __builtin_setjmp's layout: frame, resume address, stack
    DWORD faultCode;
    GuardFrame* outer;
};

DWORD g_tlsIndex = TLS_OUT_OF_INDEXES;
PVOID g_handler = NULL;
INIT_ONCE g_initOnce = INIT_ONCE_STATIC_INIT;

bool IsMachineFault(DWORD code)
{
    switch (code) {
    case EXCEPTION_ACCESS_VIOLATION:
    case EXCEPTION_IN_PAGE_ERROR:
    case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_PRIV_INSTRUCTION:
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_INT_OVERFLOW:
    case EXCEPTION_ARRAY_BOUNDS_EXCEEDED:
    case EXCEPTION_DATATYPE_MISALIGNMENT:
        return true;
    default:
        return false;
    }
}

[[noreturn]] void LandAfterFault()
{
    GuardFrame* frame = static_cast<GuardFrame*>(::TlsGetValue(g_tlsIndex));
    __builtin_longjmp(frame->jumpBuffer, 1);
}

LONG CALLBACK OnException(EXCEPTION_POINTERS* info)
{
    if (!IsMachineFault(info->ExceptionRecord->ExceptionCode))
        return EXCEPTION_CONTINUE_SEARCH;
    GuardFrame* frame = static_cast<GuardFrame*>(::TlsGetValue(g_tlsIndex));
    if (frame == NULL)
        return EXCEPTION_CONTINUE_SEARCH;
    frame->faultCode = info->ExceptionRecord->ExceptionCode;

    // Resume below the faulting frame, 16-byte aligned as at a function's entry
    // (just after a call pushed its return address).
    CONTEXT* ctx = info->ContextRecord;
#if defined(_WIN64)
    ULONG_PTR sp = ((ctx->Rsp - 1024) & ~static_cast<ULONG_PTR>(15)) - sizeof(void*);
    ctx->Rsp = sp;
    ctx->Rip = reinterpret_cast<ULONG_PTR>(&LandAfterFault);
#else
    ULONG_PTR sp = ((ctx->Esp - 1024) & ~static_cast<ULONG_PTR>(15)) - sizeof(void*);
    ctx->Esp = static_cast<DWORD>(sp);
    ctx->Eip = reinterpret_cast<DWORD>(&LandAfterFault);
#endif
    return EXCEPTION_CONTINUE_EXECUTION;
}

BOOL CALLBACK InstallHandler(PINIT_ONCE, PVOID, PVOID*)
{
    g_tlsIndex = ::TlsAlloc();
    if (g_tlsIndex == TLS_OUT_OF_INDEXES)
        return FALSE;
    // First in the chain, so that a fault inside a guard is ours before anyone
    // else's; Uninstall takes it out again when the library unloads.
    g_handler = ::AddVectoredExceptionHandler(1, OnException);
    if (g_handler != NULL)
        return TRUE;
    ::TlsFree(g_tlsIndex);
    g_tlsIndex = TLS_OUT_OF_INDEXES;
    return FALSE;
}

// Kept out of line so that the jump target's frame is exactly this function's.
__attribute__((noinline)) bool RunInFrame(GuardFrame* frame, void (*body)(void*), void* context)
{
    if (__builtin_setjmp(frame->jumpBuffer) != 0)
        return false;
    body(context);
    return true;
}

}  // namespace

bool TesvorFaultGuard::RunGuarded(void (*body)(void*), void* context, DWORD* pFaultCode)
{
    if (pFaultCode != NULL)
        *pFaultCode = 0;
    if (!::InitOnceExecuteOnce(&g_initOnce, InstallHandler, NULL, NULL)) {
        body(context);  // no guard to be had; run as plain code
        return true;
    }

    // The thread's innermost guard is this one until the body returns, faults or
    // throws; the restorer runs on all three paths.
    struct Enter {
        GuardFrame frame = {};
        Enter()
        {
            frame.outer = static_cast<GuardFrame*>(::TlsGetValue(g_tlsIndex));
            ::TlsSetValue(g_tlsIndex, &frame);
        }
        ~Enter() { ::TlsSetValue(g_tlsIndex, frame.outer); }
        Enter(const Enter&) = delete;
        Enter& operator=(const Enter&) = delete;
    } guard;
    GuardFrame& frame = guard.frame;
    bool completed = RunInFrame(&frame, body, context);
    if (!completed && pFaultCode != NULL)
        *pFaultCode = frame.faultCode;
    return completed;
}

void TesvorFaultGuard::Uninstall()
{
    // A handler left behind would point into unloaded code, and the next
    // exception anywhere in the process (any C++ throw on x64) would run it.
    if (g_handler != NULL) {
        ::RemoveVectoredExceptionHandler(g_handler);
        g_handler = NULL;
    }
    if (g_tlsIndex != TLS_OUT_OF_INDEXES) {
        ::TlsFree(g_tlsIndex);
        g_tlsIndex = TLS_OUT_OF_INDEXES;
    }
}
