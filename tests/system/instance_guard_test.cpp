#include <gtest/gtest.h>
#include <climits>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include "ChildProcess.h"
#include "KernelObjectNames.h"
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorInstanceImpl.h"
#include "MCTesvorUninstallerInstance.h"
#include "MCWTSSession.h"
#include "frame/Owners.h"

namespace {

// A guard with its names in view: the main application's, or one of this test's own, so
// that in-process locking never meets the programs' names, testing its locks for
// existence only when `multi`.
class TestGuard : public MCAppInstance {
public:
    explicit TestGuard(bool multi = false)
        : MCAppInstance(L"Global\\TesvorTest_G", L"Local\\TesvorTest_L", AppIDInstaller), m_multi(multi) {}
    bool CanLocalMulti() const override { return m_multi; }
    bool CanGlobalMulti() const override { return m_multi; }

private:
    bool m_multi;
};
struct MainGuardNames : MCTesvorInstance {
    CString Local() const { return m_localName; }
    CString Global() const { return m_globalName; }
};

// instance_helper.exe started with these arguments; one that may start keeps running until
// the quit event is set.
std::unique_ptr<ChildProcess> Start(const wchar_t* arguments)
{
    return std::make_unique<ChildProcess>(L"instance_helper.exe", arguments);
}

// A program's start-up check, "started {app,lock}", and the milliseconds it took.
std::string Check(ChildProcess& program, int* elapsedMs = nullptr)
{
    std::string line = program.ReadLine();
    if (elapsedMs)
        *elapsedMs = std::atoi(line.c_str() + line.rfind(' ') + 1);
    return line.substr(0, line.rfind(' '));
}

// The event that lets the holders end.
UniqueHandle QuitEvent() { return UniqueHandle(::CreateEventW(NULL, TRUE, FALSE, L"TesvorGuardTestQuit")); }

}  // namespace

// The main application's machine-wide and legacy names are those the test holds in
// FamilyStart.BesideARunningCopy; its app ID and the installer's are in the results there.
TEST(InstanceGuard, NamesAreSharedWithOtherBuilds)
{
    const wchar_t* const names[][2] = {
        {MCTesvorInstance::sLocalMutex, L"Local\\Tesvor_Local_Mutex"},
        {MCTesvorInstallerInstance::sGlobalMutex, L"Global\\Tesvor_Install_Global_Mutex"},
        {MCTesvorInstallerInstance::sLocalMutex, L"Local\\Tesvor_Install_Local_Mutex"},
        {MCTesvorUninstallerInstance::sGlobalMutex, L"Global\\Tesvor_Uninstall_Global_Mutex"},
        {MCTesvorUninstallerInstance::sLocalMutex, L"Local\\Tesvor_Uninstall_Local_Mutex"},
    };
    for (const auto& name : names)
        EXPECT_STREQ(name[1], name[0]);
    EXPECT_EQ(AppIDUninstaller, MCTesvorUninstallerInstance().GetAppID());

    // The local name carries the session number: under Wine, which does not answer the
    // query, the failure value, -1.
    EXPECT_STREQ(L"Local\\Tesvor_Local_Mutex-1", MainGuardNames().Local());
}

// (Taking over an abandoned lock is played by a killed copy, in FamilyStart.)
TEST(InstanceGuard, MultiLocksDetachAndTheSessionHelper)
{
    MCMutex none;
    EXPECT_FALSE(none.open(L"TesvorTestMutex"));
    EXPECT_TRUE(none.release()) << "nothing held, nothing to fail";
    TestGuard multi(true), secondMulti(true);
    EXPECT_EQ(LockOk, multi.Lock(0));
    EXPECT_EQ(LockBusyLocal, secondMulti.Lock(0)) << "a multi lock is only tested for existence";

    HANDLE global = NULL, local = NULL;
    {
        TestGuard guard;
        EXPECT_FALSE(guard.Detach(global, local));
        ASSERT_EQ(LockOk, guard.Lock(0));
        EXPECT_TRUE(guard.Detach(global, local));
    }
    // Still held by this thread after the guard went.
    TestGuard next;
    std::thread([&next] { EXPECT_EQ(LockBusyLocal, next.Lock(0)); }).join();
    for (HANDLE handle : {local, global}) {
        ::ReleaseMutex(handle);
        ::CloseHandle(handle);
    }

    {
        MCTesvorUninstallerInstance owner;
        ASSERT_NE(nullptr, MCAppInstance::s_pWtsSes);
        owner.CanClearWtsSes(TRUE);
    }
    EXPECT_EQ(nullptr, MCAppInstance::s_pWtsSes);
    MCTesvorUninstallerInstance after;
    EXPECT_EQ(MCWTSSession::Instance(), MCAppInstance::s_pWtsSes);
    // The old hidden window and its class stay behind, so the new helper cannot register
    // the class again; they are cleared away so that later tests start afresh.
    if (HWND leftover = ::FindWindowW(L"vlrwtsseswndclass", NULL)) {
        EXPECT_EQ(0, ::GetWindowLongPtrW(leftover, GWLP_USERDATA));
        EXPECT_EQ(0, MCAppInstance::s_pWtsSes->Init());
        ::DestroyWindow(leftover);
        ::UnregisterClassW(L"vlrwtsseswndclass", ::GetModuleHandleW(NULL));
    }
    EXPECT_EQ(1, MCAppInstance::s_pWtsSes->Init());
}

TEST(InstanceGuard, NoCheckOrBringFrontWithoutWhatTheyNeed)
{
    MCTesvorInstance guard;
    CString title(L"Tesvor Guard Test No Such Window"), empty;
    EXPECT_EQ(0, MCTesvorInstanceImpl(7, title).StartCheck(guard, NULL, TRUE));
    UniqueHandle legacy(::OpenMutexW(SYNCHRONIZE, FALSE, L"Tesvor Mutex"));
    EXPECT_FALSE(legacy) << "a null result makes no check";
    // Without a title, a command or a window of that title nothing is brought to the front.
    CString shown(L"Tesvor Guard Test Front Window");
    HWND window = ::CreateWindowExW(0, L"STATIC", shown, 0, 0, 0, 10, 10, NULL, NULL, NULL, NULL);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 1}),
              (std::vector<int>{MCTesvorInstanceImpl(7, empty).BringFront(),
                                MCTesvorInstanceImpl(0, shown).BringFront(),
                                MCTesvorInstanceImpl(7, title).BringFront(),
                                MCTesvorInstanceImpl(7, shown).BringFront()}));
    ::DestroyWindow(window);
}

// Programs of the family started beside a running one (the holder), each played by
// instance_helper. Programs that start together run side by side.
TEST(FamilyStart, BesideARunningCopy)
{
    enum HolderKind { Running, Killed, HeldHere };
    struct Starter {
        const wchar_t* arguments;
        const char* result;              // started {app,lock}
        int minMs = 0, maxMs = INT_MAX;  // how long its check took
    };
    const struct {
        const char* what;
        const wchar_t* holder;  // its arguments, or the name of a mutex that this process holds
        HolderKind kind;        // killed before the others start, while this process keeps its locks alive
        std::vector<Starter> starts;
        const char* commands;  // what the holder's window received: count, last command
    } scenarios[] = {
        // The legacy name fails at once, and the first copy is brought to the front.
        {"main twice in this session", L"main 0", Running, {{L"main impl", "0 {0,1}", 0, 2500}}, "1 32771"},
        // The installer's own lock is waited on; the main application's installer probe
        // waits the full three seconds, and the installer's window (titled as the main
        // application's) is not brought to the front.
        {"beside the installer",
         L"installer 0",
         Running,
         {{L"installer 1", "0 {1,1}", 900}, {L"main impl", "0 {1,1}", 2900}},
         "0 0"},
        // A copy in another session holds only the machine-wide lock: its local and legacy
        // names live in its own session. The installer and uninstaller are not probed.
        {"copy in another session", L"Global\\Tesvor_Global_Mutex", HeldHere, {{L"main impl", "1 {0,2}", 2900}}, ""},
        {"old build holding the legacy name",
         L"Tesvor Mutex",
         HeldHere,
         {{L"main impl", "0 {0,1}"}, {L"installer 0", "0 {0,1}"}, {L"uninstaller 0", "0 {0,1}"}},
         ""},
        // Its locks are left abandoned, and taken over.
        {"killed copy", L"main 0", Killed, {{L"main 0", "1 {3,0}"}}, ""},
    };
    MainGuardNames names;
    for (const auto& s : scenarios) {
        SCOPED_TRACE(s.what);
        UniqueHandle quit = QuitEvent();
        UniqueHandle heldHere(s.kind == HeldHere ? ::CreateMutexW(NULL, TRUE, s.holder) : NULL);
        std::unique_ptr<ChildProcess> holder = s.kind == HeldHere ? nullptr : Start(s.holder);
        ASSERT_TRUE(heldHere || Check(*holder)[0] == '1');
        UniqueHandle kept[2];
        if (s.kind == Killed) {
            kept[0].reset(::OpenMutexW(SYNCHRONIZE, FALSE, KernaelObjectName(names.Local())));
            kept[1].reset(::OpenMutexW(SYNCHRONIZE, FALSE, KernaelObjectName(names.Global())));
            ASSERT_TRUE(kept[0] && kept[1]);
            holder->Kill();
        }
        std::vector<std::unique_ptr<ChildProcess>> programs;
        for (const Starter& start : s.starts)
            programs.push_back(Start(start.arguments));
        for (size_t i = 0; i < programs.size(); ++i) {
            int elapsedMs = -1;
            EXPECT_EQ(s.starts[i].result, Check(*programs[i], &elapsedMs)) << i;
            EXPECT_TRUE(elapsedMs >= s.starts[i].minMs && elapsedMs <= s.starts[i].maxMs) << i << ": " << elapsedMs;
        }
        ::SetEvent(quit.get());
        EXPECT_EQ(s.commands, holder ? holder->ReadLine() : "");
    }
}

TEST(FamilyStart, OfTwentySimultaneousStartsExactlyOneRuns)
{
    UniqueHandle quit = QuitEvent();
    std::vector<std::unique_ptr<ChildProcess>> programs;
    for (int i = 0; i < 20; ++i)
        programs.push_back(Start(L"main 0"));
    int running = 0;
    for (auto& program : programs) {
        std::string result = Check(*program);
        running += result == "1 {3,0}" ? 1 : 0;
        EXPECT_TRUE(result == "1 {3,0}" || result == "0 {0,1}") << result;
    }
    EXPECT_EQ(1, running);
    ::SetEvent(quit.get());
}
