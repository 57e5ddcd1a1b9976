// Plays one program of the family at start-up for the guard tests:
//
//   instance_helper main|installer|uninstaller [--timeout N | --impl] [--title] [--hold EVENT]
//   instance_helper own NAME --hold EVENT
//
// --timeout N  checks with MCInstanceResponseImpl(N); --impl with MCTesvorInstanceImpl
//              (3 seconds, bringing a running copy's window kTitle to the front with kCommand).
// --title      owns a hidden top-level window titled kTitle that counts the WM_COMMANDs it
//              receives, as a running copy's main window would.
// --hold       when the program may start, keeps its guard until the named event is set.
// own NAME     only holds the named mutex, as an old build or another session's copy would.
//
// Prints the check as "started {app,lock}", then the milliseconds it took; a holder prints
// "commands last_command" when it stops holding.
#include <afxwin.h>
#include <shellapi.h>
#include <cstdio>
#include <cwchar>
#include <memory>
#include "MCInstanceResponseImpl.h"
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorInstanceImpl.h"
#include "MCTesvorUninstallerInstance.h"

namespace {

const wchar_t kTitle[] = L"Tesvor Guard Test Main Window";
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

HWND CreateMainWindow()
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = MainWindowProc;
    windowClass.hInstance = ::GetModuleHandleW(NULL);
    windowClass.lpszClassName = L"TesvorTestMainWindow";
    ::RegisterClassW(&windowClass);
    return ::CreateWindowExW(0, windowClass.lpszClassName, kTitle, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, NULL, NULL,
                             windowClass.hInstance, NULL);
}

// Runs the window's messages until the event is set (or nothing has happened for a
// minute, so that a forgotten holder does not outlive its test run), then reports the
// commands received.
void HoldUntil(const wchar_t* eventName)
{
    HANDLE quit = eventName ? ::OpenEventW(SYNCHRONIZE, FALSE, eventName) : NULL;
    while (quit && ::MsgWaitForMultipleObjects(1, &quit, FALSE, 60000, QS_ALLINPUT) == WAIT_OBJECT_0 + 1)
        for (MSG message; ::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE);)
            ::DispatchMessageW(&message);
    if (quit)
        ::CloseHandle(quit);
    std::printf("%d %llu\n", g_commands, static_cast<unsigned long long>(g_lastCommand));
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
    const bool ownOnly = argc > 2 && std::wcscmp(argv[1], L"own") == 0;
    bool useImpl = false, withTitle = false;
    UINT timeout = 3;
    const wchar_t* holdEvent = NULL;
    for (int i = ownOnly ? 3 : 2; i < argc; ++i) {
        if (std::wcscmp(argv[i], L"--impl") == 0)
            useImpl = true;
        else if (std::wcscmp(argv[i], L"--title") == 0)
            withTitle = true;
        else if (std::wcscmp(argv[i], L"--timeout") == 0 && i + 1 < argc)
            timeout = static_cast<UINT>(std::wcstoul(argv[++i], NULL, 10));
        else if (std::wcscmp(argv[i], L"--hold") == 0 && i + 1 < argc)
            holdEvent = argv[++i];
        else
            return 2;
    }
    if (ownOnly) {
        HANDLE mutex = ::CreateMutexW(NULL, TRUE, argv[2]);
        std::printf("%d owned\n0\n", mutex ? 1 : 0);
        std::fflush(stdout);
        HoldUntil(holdEvent);
        return 0;
    }
    std::unique_ptr<MCAppInstance> guard(MakeGuard(argc > 1 ? argv[1] : L""));
    if (!guard)
        return 2;
    guard->CanClearWtsSes(TRUE);

    MDCheckInstanceResult result;
    const ULONGLONG start = ::GetTickCount64();
    CString target(kTitle);
    int started = useImpl ? MCTesvorInstanceImpl(kCommand, target).StartCheck(*guard, &result, TRUE)
                          : MCInstanceResponseImpl(timeout).StartCheck(*guard, &result);
    const ULONGLONG elapsed = ::GetTickCount64() - start;
    // The window exists before the result is out, so that a copy started next finds it.
    HWND window = started && withTitle ? CreateMainWindow() : NULL;
    std::printf("%d {%d,%d}\n%llu\n", started, static_cast<int>(result.appID), static_cast<int>(result.lockResult),
                elapsed);
    std::fflush(stdout);
    if (started && holdEvent)
        HoldUntil(holdEvent);
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
