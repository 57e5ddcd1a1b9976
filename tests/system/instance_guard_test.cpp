#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include "ChildProcess.h"
#include "KernelObjectNames.h"
#include "MCInstanceResponseImpl.h"
#include "MCTesvorInstallerInstance.h"
#include "MCTesvorInstanceImpl.h"
#include "MCTesvorUninstallerInstance.h"
#include "MCWTSSession.h"

namespace {

// The main application's guard with its names in view.
class InspectedMainGuard : public MCTesvorInstance {
public:
    CString LocalName() const { return m_localName; }
    CString GlobalName() const { return m_globalName; }
};

// A guard of this test's own, so that in-process locking never meets the
// programs' names, optionally testing its locks for existence only.
class TestGuard : public MCAppInstance {
public:
    TestGuard(const wchar_t* tag, bool multi = false)
        : MCAppInstance((std::wstring(L"Global\\TesvorTest_G_") + tag).c_str(),
                        (std::wstring(L"Local\\TesvorTest_L_") + tag).c_str(), AppIDInstaller),
          m_multi(multi)
    {
    }
    bool CanLocalMulti() const override { return m_multi; }
    bool CanGlobalMulti() const override { return m_multi; }
    CString LocalName() const { return m_localName; }
    CString GlobalName() const { return m_globalName; }

private:
    bool m_multi;
};

// Holds a mutex on a thread of its own, as another copy would.
class ForeignOwner {
public:
    explicit ForeignOwner(const wchar_t* name)
        : m_ready(::CreateEventW(NULL, TRUE, FALSE, NULL)), m_quit(::CreateEventW(NULL, TRUE, FALSE, NULL))
    {
        std::wstring mutexName(name);
        m_thread = std::thread([this, mutexName] {
            HANDLE mutex = ::CreateMutexW(NULL, TRUE, mutexName.c_str());
            ::SetEvent(m_ready);
            ::WaitForSingleObject(m_quit, INFINITE);
            ::ReleaseMutex(mutex);
            ::CloseHandle(mutex);
        });
        ::WaitForSingleObject(m_ready, INFINITE);
    }
    ~ForeignOwner()
    {
        ::SetEvent(m_quit);
        m_thread.join();
        ::CloseHandle(m_ready);
        ::CloseHandle(m_quit);
    }

private:
    HANDLE m_ready;
    HANDLE m_quit;
    std::thread m_thread;
};

class QuitEvent {
public:
    explicit QuitEvent(const wchar_t* name) : m_name(name), m_event(::CreateEventW(NULL, TRUE, FALSE, name)) {}
    ~QuitEvent() { ::CloseHandle(m_event); }
    void Set() { ::SetEvent(m_event); }
    std::wstring Arg() const { return L" --hold " + m_name; }

private:
    std::wstring m_name;
    HANDLE m_event;
};

// One run of instance_helper.exe.
class FamilyProgram {
public:
    explicit FamilyProgram(const std::wstring& arguments)
    {
        m_started = m_process.Start(L"instance_helper.exe", arguments);
    }
    // The result of its start-up check: started, app, lock, elapsed_ms.
    std::map<std::string, std::string>& Check()
    {
        std::string line;
        while (m_started && m_check.count("elapsed_ms") == 0 && m_process.ReadLine(line)) {
            size_t equals = line.find('=');
            if (equals != std::string::npos)
                m_check[line.substr(0, equals)] = line.substr(equals + 1);
        }
        return m_check;
    }
    std::string Result() { return Check()["started"] + " {" + m_check["app"] + "," + m_check["lock"] + "}"; }
    int ElapsedMs() { return std::atoi(Check()["elapsed_ms"].c_str()); }
    // What a holder reports after its quit event is set.
    std::map<std::string, std::string> Finish()
    {
        Check();
        std::map<std::string, std::string> rest = m_process.ReadValues();
        m_process.Wait();
        return rest;
    }
    void Kill() { m_process.Kill(); }

private:
    ChildProcess m_process;
    bool m_started;
    std::map<std::string, std::string> m_check;
};

const wchar_t kMainTitle[] = L"Tesvor Guard Test Main Window";

std::wstring TargetArgs(UINT command)
{
    return std::wstring(L" --target \"") + kMainTitle + L"\" --cmd " + std::to_wstring(command);
}

std::wstring TitleArg()
{
    return std::wstring(L" --title \"") + kMainTitle + L"\"";
}

}  // namespace

TEST(InstanceGuard, NamesAreSharedWithOtherBuilds)
{
    const struct {
        const wchar_t* constant;
        const wchar_t* expected;
    } names[] = {
        {MCTesvorInstance::sGlobalMutex, L"Global\\Tesvor_Global_Mutex"},
        {MCTesvorInstance::sLocalMutex, L"Local\\Tesvor_Local_Mutex"},
        {MCTesvorInstance::sLegacyMutexName, L"Tesvor Mutex"},
        {MCTesvorInstallerInstance::sGlobalMutex, L"Global\\Tesvor_Install_Global_Mutex"},
        {MCTesvorInstallerInstance::sLocalMutex, L"Local\\Tesvor_Install_Local_Mutex"},
        {MCTesvorUninstallerInstance::sGlobalMutex, L"Global\\Tesvor_Uninstall_Global_Mutex"},
        {MCTesvorUninstallerInstance::sLocalMutex, L"Local\\Tesvor_Uninstall_Local_Mutex"},
    };
    for (const auto& name : names)
        EXPECT_STREQ(name.expected, name.constant);

    MDCheckInstanceResult result;
    EXPECT_EQ(AppIDNone, result.appID);
    EXPECT_EQ(LockOk, result.lockResult);
    EXPECT_EQ(AppIDMain, MCTesvorInstance().GetAppID());
    EXPECT_EQ(AppIDInstaller, MCTesvorInstallerInstance().GetAppID());
    EXPECT_EQ(AppIDUninstaller, MCTesvorUninstallerInstance().GetAppID());
}

TEST(InstanceGuard, LocalNameCarriesTheSessionNumber)
{
    InspectedMainGuard guard;
    ASSERT_TRUE(HasTerminalServices());
    ASSERT_NE(nullptr, MCAppInstance::s_pWtsSes);
    // Wine does not answer the session query, so the number is the failure value.
    DWORD session = MCAppInstance::s_pWtsSes->GetCurrentSessionID();
    CString expected;
    expected.Format(L"Local\\Tesvor_Local_Mutex%d", static_cast<int>(session));
    EXPECT_STREQ(expected, guard.LocalName());
    if (session == 0xFFFFFFFF) {
        EXPECT_STREQ(L"Local\\Tesvor_Local_Mutex-1", guard.LocalName());
    }
    EXPECT_STREQ(L"Global\\Tesvor_Global_Mutex", guard.GlobalName());
}

TEST(InstanceGuard, AbandonedMutexIsTakenOver)
{
    MCMutex mutex;
    EXPECT_FALSE(mutex.open(L"TesvorTestAbandoned"));
    EXPECT_TRUE(mutex.release()) << "nothing held, nothing to fail";
    ASSERT_TRUE(mutex.create(L"TesvorTestAbandoned", FALSE));
    std::thread([] {
        HANDLE own = ::OpenMutexW(MUTEX_ALL_ACCESS, FALSE, L"TesvorTestAbandoned");
        ::WaitForSingleObject(own, INFINITE);
        ::CloseHandle(own);  // the thread ends owning it
    }).join();
    EXPECT_EQ(static_cast<DWORD>(WAIT_OBJECT_0), mutex.wait(0));
    MCMutex other;
    EXPECT_TRUE(other.open(L"TesvorTestAbandoned"));
    HANDLE handle = other.detach();
    EXPECT_TRUE(other.empty());
    EXPECT_NE(HANDLE(NULL), handle);
    ::CloseHandle(handle);
}

TEST(InstanceGuard, BusyLocksTellTheirScope)
{
    {
        TestGuard guard(L"Free");
        EXPECT_EQ(LockOk, guard.Lock(0));
    }
    {
        ForeignOwner local(KernaelObjectName(TestGuard(L"Local").LocalName()));
        TestGuard guard(L"Local");
        EXPECT_EQ(LockBusyLocal, guard.Lock(0));
    }
    {
        ForeignOwner global(KernaelObjectName(TestGuard(L"Global").GlobalName()));
        TestGuard guard(L"Global");
        EXPECT_EQ(LockBusyGlobal, guard.Lock(0));
    }
}

TEST(InstanceGuard, MultiLocksAreOnlyTestedForExistence)
{
    TestGuard first(L"Multi", true);
    EXPECT_EQ(LockOk, first.Lock(0));
    TestGuard second(L"Multi", true);
    EXPECT_EQ(LockBusyLocal, second.Lock(0));
}

TEST(InstanceGuard, DetachHandsOverBothLocks)
{
    HANDLE global = NULL;
    HANDLE local = NULL;
    {
        TestGuard guard(L"Detach");
        EXPECT_FALSE(guard.Detach(global, local));
        ASSERT_EQ(LockOk, guard.Lock(0));
        EXPECT_TRUE(guard.Detach(global, local));
    }
    // Still held by this thread after the guard went.
    TestGuard next(L"Detach");
    std::thread([&next] { EXPECT_EQ(LockBusyLocal, next.Lock(0)); }).join();
    ::ReleaseMutex(local);
    ::ReleaseMutex(global);
    ::CloseHandle(local);
    ::CloseHandle(global);
}

TEST(InstanceGuard, NullResultMakesNoCheck)
{
    MCTesvorInstance guard;
    CString title(kMainTitle);
    EXPECT_EQ(0, MCTesvorInstanceImpl(7, title).StartCheck(guard, NULL, TRUE));
    HANDLE legacy = ::OpenMutexW(SYNCHRONIZE, FALSE, L"Tesvor Mutex");
    EXPECT_EQ(HANDLE(NULL), legacy);
    if (legacy)
        ::CloseHandle(legacy);
}

TEST(InstanceGuard, GuardThatOwnsTheSessionHelperDeletesIt)
{
    {
        MCTesvorUninstallerInstance guard;
        ASSERT_NE(nullptr, MCAppInstance::s_pWtsSes);
        guard.CanClearWtsSes(TRUE);
    }
    EXPECT_EQ(nullptr, MCAppInstance::s_pWtsSes);
    MCTesvorUninstallerInstance next;
    EXPECT_EQ(MCWTSSession::Instance(), MCAppInstance::s_pWtsSes);

    // The old hidden window and its class stay behind, so the new helper cannot
    // register the class again.
    HWND leftover = ::FindWindowW(L"vlrwtsseswndclass", NULL);
    if (leftover) {
        EXPECT_EQ(0, ::GetWindowLongPtrW(leftover, GWLP_USERDATA));
        EXPECT_EQ(0, MCAppInstance::s_pWtsSes->Init());
        // Clear them away so that later tests of this process start afresh.
        ::DestroyWindow(leftover);
        ::UnregisterClassW(L"vlrwtsseswndclass", ::GetModuleHandleW(NULL));
    }
    EXPECT_EQ(1, MCAppInstance::s_pWtsSes->Init());
}

TEST(InstanceGuard, BringFrontNeedsCommandTitleAndWindow)
{
    CString empty;
    CString missing(L"Tesvor Guard Test No Such Window");
    EXPECT_EQ(0, MCTesvorInstanceImpl(7, empty).BringFront());
    EXPECT_EQ(0, MCTesvorInstanceImpl(0, missing).BringFront());
    EXPECT_EQ(0, MCTesvorInstanceImpl(7, missing).BringFront());
}

// Processes of the family started one beside the other.

TEST(FamilyStart, SecondMainApplicationBringsTheFirstToFront)
{
    QuitEvent quit(L"TesvorGuardTestQuitSecondMain");
    FamilyProgram first(L"main --timeout 0" + TitleArg() + quit.Arg());
    ASSERT_EQ("1 {3,0}", first.Result());

    FamilyProgram second(L"main --impl" + TargetArgs(32771));
    EXPECT_EQ("0 {0,1}", second.Result());
    EXPECT_LT(second.ElapsedMs(), 2500) << "the legacy name fails at once, without a wait";

    quit.Set();
    std::map<std::string, std::string> held = first.Finish();
    EXPECT_EQ("1", held["commands"]);
    EXPECT_EQ("32771", held["last_command"]);
}

TEST(FamilyStart, StartsBesideARunningInstallerWait)
{
    QuitEvent quit(L"TesvorGuardTestQuitInstaller");
    // The installer's window carries the main title, to catch a wrong bring-front.
    FamilyProgram installer(L"installer --timeout 0" + TitleArg() + quit.Arg());
    ASSERT_EQ("1 {3,0}", installer.Result());

    // Independent of each other, so they wait side by side.
    FamilyProgram secondInstaller(L"installer --timeout 1");
    FamilyProgram main(L"main --impl" + TargetArgs(32771));
    EXPECT_EQ("0 {1,1}", secondInstaller.Result());
    EXPECT_GE(secondInstaller.ElapsedMs(), 900);
    EXPECT_EQ("0 {1,1}", main.Result());
    EXPECT_GE(main.ElapsedMs(), 2900) << "the installer probe waits the full three seconds";

    quit.Set();
    EXPECT_EQ("0", installer.Finish()["commands"]);
}

TEST(FamilyStart, CopyInAnotherSessionDoesNotStopTheMainApplication)
{
    // Another session's copy holds only the machine-wide lock: its local and
    // legacy names live in its own session.
    ForeignOwner otherSession(KernaelObjectName(MCTesvorInstance::sGlobalMutex));
    FamilyProgram main(L"main --impl" + TargetArgs(32771));
    EXPECT_EQ("1 {0,2}", main.Result());
    EXPECT_GE(main.ElapsedMs(), 2900);
}

TEST(FamilyStart, OldBuildHoldingTheLegacyNameStopsEveryProgram)
{
    HANDLE oldBuild = ::CreateMutexW(NULL, FALSE, L"Tesvor Mutex");
    ASSERT_NE(HANDLE(NULL), oldBuild);
    FamilyProgram main(L"main --impl" + TargetArgs(32771));
    FamilyProgram installer(L"installer --timeout 0");
    FamilyProgram uninstaller(L"uninstaller --timeout 0");
    EXPECT_EQ("0 {0,1}", main.Result());
    EXPECT_EQ("0 {0,1}", installer.Result());
    EXPECT_EQ("0 {0,1}", uninstaller.Result());
    ::CloseHandle(oldBuild);
}

TEST(FamilyStart, KilledHolderLeavesAnAbandonedLockThatTheNextStartTakes)
{
    InspectedMainGuard names;
    QuitEvent quit(L"TesvorGuardTestQuitKilled");
    FamilyProgram holder(L"main --timeout 0" + quit.Arg());
    ASSERT_EQ("1 {3,0}", holder.Result());
    // Handles of this process keep both locks alive, abandoned, past the kill.
    HANDLE local = ::OpenMutexW(SYNCHRONIZE, FALSE, KernaelObjectName(names.LocalName()));
    HANDLE global = ::OpenMutexW(SYNCHRONIZE, FALSE, KernaelObjectName(names.GlobalName()));
    ASSERT_NE(HANDLE(NULL), local);
    ASSERT_NE(HANDLE(NULL), global);
    holder.Kill();

    FamilyProgram next(L"main --timeout 0");
    EXPECT_EQ("1 {3,0}", next.Result());
    next.Finish();
    ::CloseHandle(local);
    ::CloseHandle(global);
}

TEST(FamilyStart, OfTwentySimultaneousStartsExactlyOneRuns)
{
    QuitEvent quit(L"TesvorGuardTestQuitTwenty");
    std::vector<std::unique_ptr<FamilyProgram>> programs;
    for (int i = 0; i < 20; ++i)
        programs.emplace_back(new FamilyProgram(L"main --timeout 0" + quit.Arg()));
    int running = 0;
    for (auto& program : programs) {
        std::string result = program->Result();
        if (result == "1 {3,0}")
            ++running;
        else
            EXPECT_EQ("0 {0,1}", result);
    }
    EXPECT_EQ(1, running);
    quit.Set();
    for (auto& program : programs)
        program->Finish();
}
