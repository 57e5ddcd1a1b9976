// Plays one program of the family at start-up for the guard tests:
//
//   instance_helper main|installer|uninstaller [--timeout N | --impl]
//                   [--target TITLE --cmd ID] [--title TITLE] [--hold EVENT]
//
// --timeout N  checks with MCInstanceResponseImpl(N); --impl with
//              MCTesvorInstanceImpl (3 seconds, bringing a running copy to the
//              front: the window titled --target gets command --cmd).
// --title      owns a hidden top-level window with that title that counts the
//              WM_COMMANDs it receives, as a running copy's main window would.
// --hold       when the program may start, keeps its guard until the named
//              event is set, then reports the commands its window received.
//
// Reports "key=value" lines on standard output: started, app, lock and
// elapsed_ms after the check; commands and last_command when it stops holding.
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

int g_commands = 0;
WPARAM g_lastCommand = 0;

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND) {
        ++g_commands;
        g_lastCommand = wParam;
        return 0;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateMainWindow(const wchar_t* title)
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = MainWindowProc;
    windowClass.hInstance = ::GetModuleHandleW(NULL);
    windowClass.lpszClassName = L"TesvorTestMainWindow";
    ::RegisterClassW(&windowClass);
    return ::CreateWindowExW(0, windowClass.lpszClassName, title, WS_OVERLAPPEDWINDOW, 0, 0, 100,
                             100, NULL, NULL, windowClass.hInstance, NULL);
}

// Runs the window's messages until the event is set (or a minute has passed,
// so that a forgotten holder does not outlive its test run).
void HoldUntil(const wchar_t* eventName)
{
    HANDLE quit = ::OpenEventW(SYNCHRONIZE, FALSE, eventName);
    if (!quit)
        return;
    const ULONGLONG deadline = ::GetTickCount64() + 60000;
    for (;;) {
        ULONGLONG now = ::GetTickCount64();
        if (now >= deadline)
            break;
        DWORD woken = ::MsgWaitForMultipleObjects(1, &quit, FALSE, static_cast<DWORD>(deadline - now),
                                                  QS_ALLINPUT);
        if (woken != WAIT_OBJECT_0 + 1)
            break;
        MSG message;
        while (::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
    }
    ::CloseHandle(quit);
}

std::unique_ptr<MCAppInstance> MakeGuard(const wchar_t* role)
{
    if (std::wcscmp(role, L"main") == 0)
        return std::unique_ptr<MCAppInstance>(new MCTesvorInstance);
    if (std::wcscmp(role, L"installer") == 0)
        return std::unique_ptr<MCAppInstance>(new MCTesvorInstallerInstance);
    if (std::wcscmp(role, L"uninstaller") == 0)
        return std::unique_ptr<MCAppInstance>(new MCTesvorUninstallerInstance);
    return nullptr;
}

int Run(int argc, wchar_t** argv)
{
    if (argc < 2)
        return 2;
    std::unique_ptr<MCAppInstance> guard = MakeGuard(argv[1]);
    if (!guard)
        return 2;
    guard->CanClearWtsSes(TRUE);

    bool useImpl = false;
    UINT timeout = 3;
    UINT command = 0;
    CString target;
    const wchar_t* title = NULL;
    const wchar_t* holdEvent = NULL;
    for (int i = 2; i < argc; ++i) {
        bool hasValue = i + 1 < argc;
        if (std::wcscmp(argv[i], L"--impl") == 0)
            useImpl = true;
        else if (std::wcscmp(argv[i], L"--timeout") == 0 && hasValue)
            timeout = static_cast<UINT>(std::wcstoul(argv[++i], NULL, 10));
        else if (std::wcscmp(argv[i], L"--cmd") == 0 && hasValue)
            command = static_cast<UINT>(std::wcstoul(argv[++i], NULL, 10));
        else if (std::wcscmp(argv[i], L"--target") == 0 && hasValue)
            target = argv[++i];
        else if (std::wcscmp(argv[i], L"--title") == 0 && hasValue)
            title = argv[++i];
        else if (std::wcscmp(argv[i], L"--hold") == 0 && hasValue)
            holdEvent = argv[++i];
        else
            return 2;
    }

    MDCheckInstanceResult result;
    const ULONGLONG start = ::GetTickCount64();
    int started;
    if (useImpl)
        started = MCTesvorInstanceImpl(command, target).StartCheck(*guard, &result, TRUE);
    else
        started = MCInstanceResponseImpl(timeout).StartCheck(*guard, &result);
    const ULONGLONG elapsed = ::GetTickCount64() - start;

    HWND window = started && title ? CreateMainWindow(title) : NULL;
    std::printf("started=%d\napp=%d\nlock=%d\nelapsed_ms=%llu\n", started,
                static_cast<int>(result.appID), static_cast<int>(result.lockResult), elapsed);
    std::fflush(stdout);

    if (started && holdEvent) {
        HoldUntil(holdEvent);
        std::printf("commands=%d\nlast_command=%llu\n", g_commands,
                    static_cast<unsigned long long>(g_lastCommand));
        std::fflush(stdout);
    }
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
