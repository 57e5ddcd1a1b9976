// Plays one program of the family at start-up for the guard tests:
//   instance_helper main|installer|uninstaller [--timeout N | --impl] [--title] [--hold EVENT]
//   instance_helper own NAME [--hold EVENT]    (holds only that mutex, as an old build would)
// --timeout checks with MCInstanceResponseImpl(N); --impl with MCTesvorInstanceImpl, which
// brings a running copy's window kTitle to the front with kCommand. --title owns such a
// window, counting the commands it receives. --hold keeps the guard, once the program may
// start, until the event is set. Prints "started {app,lock} milliseconds", and on leaving
// "commands last_command".
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

// Runs the window's messages until the event is set (or nothing has happened for a minute,
// so that a forgotten holder does not outlive its test run).
void HoldUntil(const wchar_t* eventName)
{
    HANDLE quit = eventName ? ::OpenEventW(SYNCHRONIZE, FALSE, eventName) : NULL;
    while (quit && ::MsgWaitForMultipleObjects(1, &quit, FALSE, 60000, QS_ALLINPUT) == WAIT_OBJECT_0 + 1)
        for (MSG message; ::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE);)
            ::DispatchMessageW(&message);
    if (quit)
        ::CloseHandle(quit);
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
    HANDLE mutex = ownOnly ? ::CreateMutexW(NULL, TRUE, argv[2]) : NULL;
    std::unique_ptr<MCAppInstance> guard(ownOnly ? nullptr : MakeGuard(argc > 1 ? argv[1] : L""));
    MDCheckInstanceResult result;
    int started = mutex ? 1 : 0;
    const ULONGLONG start = ::GetTickCount64();
    CString target(kTitle);
    if (guard) {
        guard->CanClearWtsSes(TRUE);
        started = useImpl ? MCTesvorInstanceImpl(kCommand, target).StartCheck(*guard, &result, TRUE)
                          : MCInstanceResponseImpl(timeout).StartCheck(*guard, &result);
    } else if (!ownOnly) {
        return 2;
    }
    const ULONGLONG elapsed = ::GetTickCount64() - start;
    // The window exists before the result is out, so that a copy started next finds it.
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = MainWindowProc;
    windowClass.hInstance = ::GetModuleHandleW(NULL);
    windowClass.lpszClassName = L"TesvorTestMainWindow";
    HWND window = started && withTitle && ::RegisterClassW(&windowClass)
                      ? ::CreateWindowExW(0, windowClass.lpszClassName, kTitle, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                          NULL, NULL, windowClass.hInstance, NULL)
                      : NULL;
    std::printf("%d {%d,%d} %llu\n", started, static_cast<int>(result.appID), static_cast<int>(result.lockResult),
                elapsed);
    std::fflush(stdout);
    if (started)
        HoldUntil(holdEvent);
    std::printf("%d %llu\n", g_commands, static_cast<unsigned long long>(g_lastCommand));
    if (window)
        ::DestroyWindow(window);
    if (guard)
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
