// Plays one program of the family at start-up for the guard tests:
//   instance_helper main|installer|uninstaller impl|TIMEOUT
// TIMEOUT checks with MCInstanceResponseImpl(TIMEOUT); impl with MCTesvorInstanceImpl, which
// brings a running copy's window kTitle to the front with kCommand. Prints "started {app,lock}
// milliseconds". A program that may start owns such a window, counting the commands it
// receives, and keeps its guard until the event kQuitEvent is set (when the test made one);
// on leaving it prints "commands last_command".
#include <afxwin.h>
#include <shellapi.h>
#include <cstdio>
#include <cwchar>
#include <memory>
#include "MCInstanceResponseImpl.h"
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorInstanceImpl.h"
#include "MCTesvorUninstallerInstance.h"
#include "frame/Owners.h"

namespace {

const wchar_t kTitle[] = L"Tesvor Guard Test Main Window";
const wchar_t kQuitEvent[] = L"TesvorGuardTestQuit";
const UINT kCommand = 32771;
int g_commands = 0;
WPARAM g_lastCommand = 0;

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_COMMAND)
        return ::DefWindowProcW(window, message, wParam, lParam);
    ++g_commands;
    g_lastCommand = wParam;
    return 0;
}

// Runs the window's messages until the event is set (or nothing has happened for a minute,
// so that a forgotten holder does not outlive its test run).
void HoldUntilQuit()
{
    const UniqueHandle quit(::OpenEventW(SYNCHRONIZE, FALSE, kQuitEvent));
    HANDLE waited = quit.get();
    while (quit && ::MsgWaitForMultipleObjects(1, &waited, FALSE, 60000, QS_ALLINPUT) == WAIT_OBJECT_0 + 1)
        for (MSG message; ::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE);)
            ::DispatchMessageW(&message);
}

MCAppInstance* MakeGuard(const wchar_t* role)
{
    if (std::wcscmp(role, L"main") == 0)
        return new MCTesvorInstance;
    if (std::wcscmp(role, L"installer") == 0)
        return new MCTesvorInstallerInstance;
    return std::wcscmp(role, L"uninstaller") == 0 ? new MCTesvorUninstallerInstance : nullptr;
}

int Run(int argc, wchar_t** argv)
{
    std::unique_ptr<MCAppInstance> guard(argc == 3 ? MakeGuard(argv[1]) : nullptr);
    if (!guard)
        return 2;
    guard->CanClearWtsSes(TRUE);
    MDCheckInstanceResult result;
    CString target(kTitle);
    const ULONGLONG start = ::GetTickCount64();
    const int started =
        std::wcscmp(argv[2], L"impl") == 0
            ? MCTesvorInstanceImpl(kCommand, target).StartCheck(*guard, &result, TRUE)
            : MCInstanceResponseImpl(std::wcstoul(argv[2], NULL, 10)).StartCheck(*guard, &result);
    const ULONGLONG elapsed = ::GetTickCount64() - start;
    // The window exists before the result is out, so that a copy started next finds it.
    HWND window = started ? ::CreateWindowExW(0, L"STATIC", kTitle, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, NULL,
                                              NULL, NULL, NULL)
                          : NULL;
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&MainWindowProc));
    std::printf("%d {%d,%d} %llu\n", started, static_cast<int>(result.appID), static_cast<int>(result.lockResult),
                elapsed);
    std::fflush(stdout);
    if (started)
        HoldUntilQuit();
    std::printf("%d %llu\n", g_commands, static_cast<unsigned long long>(g_lastCommand));
    if (window)
        ::DestroyWindow(window);
    guard->Unlock();
    return 0;
}

}  // namespace

int main()
{
    int argc = 0;
    wchar_t** argv = ::CommandLineToArgvW(::GetCommandLineW(), &argc);
    int code = argv ? Run(argc, argv) : 2;
    ::LocalFree(argv);
    return code;
}
