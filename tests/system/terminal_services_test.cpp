#include <gtest/gtest.h>
#include <string>
#include "ChildProcess.h"
#include "MCAdvApi32Dll.h"
#include "MCWTSSession.h"
#include "ScopedTestKey.h"

// wts_probe run under emulated Windows versions (Wine takes the version from the
// executable's name), on NT 4 with each kind of "ProductSuite".
TEST(TerminalServices, EmulatedWindowsVersions)
{
    // Name offsets and mutex access with terminal services, and without (prefixes skipped).
    const std::string kept = " 1 1 0 0 0 0 0 0 0 0 0 0 0 - - - open";
    const std::string stripped = " 0 0 7 8 6 0 0 0 7 7 7 6 6 - - - plain";
    const struct {
        const wchar_t* wine;
        DWORD suiteType;  // 0: no "ProductSuite" value
        std::wstring suite;
        std::string expected;
    } cases[] = {
        {L"win98", 0, L"", "9x" + stripped},
        {L"nt40", 0, L"", "4.0" + stripped},
        // Wine's VerifyVersionInfoA reports no terminal suite, so 5.0 answers no.
        {L"win2k", 0, L"", "5.0" + stripped},
        {L"winxp", 0, L"", "5.1" + kept},
        {L"win7", 0, L"", "6.1" + kept},
        {L"nt40", REG_MULTI_SZ, std::wstring(L"Enterprise\0Terminal Server\0\0", 29), "4.0" + kept},
        {L"nt40", REG_MULTI_SZ, std::wstring(L"Terminal Server\0\0", 17), "4.0" + kept},
        {L"nt40", REG_MULTI_SZ, std::wstring(L"Enterprise\0Small Business\0\0", 27), "4.0" + stripped},
        {L"nt40", REG_MULTI_SZ, std::wstring(L"terminal server\0\0", 17), "4.0" + stripped},
        {L"nt40", REG_SZ, std::wstring(L"Terminal Server\0", 16), "4.0" + stripped},
    };
    ScopedValueOverride suite(HKEY_LOCAL_MACHINE, L"System\\CurrentControlSet\\Control\\ProductOptions",
                              L"ProductSuite");
    for (const auto& c : cases) {
        std::wstring program = std::wstring(L"wts_probe_") + c.wine + L".exe";
        ScopedValueOverride version(HKEY_CURRENT_USER, (L"Software\\Wine\\AppDefaults\\" + program).c_str(),
                                    L"Version");
        ASSERT_TRUE(version.Set(REG_SZ, std::wstring(c.wine) + L'\0'));
        if (c.suiteType == 0)
            suite.Remove();
        else
            ASSERT_TRUE(suite.Set(c.suiteType, c.suite));
        ChildProcess probe(program.c_str(), L"");
        EXPECT_EQ(c.expected, probe.ReadLine()) << c.wine << ", suite type " << c.suiteType;
    }
}

namespace {

// A library wrapper with one entry point to bind, counting binder calls.
class OneEntryDll : public MCDll {
public:
    OneEntryDll(const wchar_t* dll, const char* entry) : MCDll(dll), m_entry(entry) { Load(); }
    using MCDll::m_lastError;
    int binds = 0;

protected:
    bool BindEntryPoints() override
    {
        ++binds;
        return m_hDll && ::GetProcAddress(m_hDll, m_entry);
    }

private:
    const char* m_entry;
};

struct InspectedWTSDll : MCWTSDll {
    using MCDll::Free;
    using MCDll::m_lastError;
    bool AllBound() const
    {
        return m_pfnRegisterSessionNotification && m_pfnUnRegisterSessionNotification &&
               m_pfnQuerySessionInformationA && m_pfnQuerySessionInformationW && m_pfnFreeMemory &&
               m_pfnEnumerateSessionsA && m_pfnEnumerateSessionsW;
    }
};
struct InspectedAdvApi32Dll : MCAdvApi32Dll {
    using MCDll::Free;
    using MCDll::m_lastError;
};

}  // namespace

TEST(LateBoundDll, LoadsOnlyWhenEveryEntryPointIsThere)
{
    // loaded, binder calls (also after a failed load), saved error when not loaded
    const struct {
        const wchar_t* dll;
        const char* entry;
        Values expected;
    } cases[] = {
        {L"kernel32.dll", "GetVersion", {1, 1, 0}},
        {L"kernel32.dll", "NoSuchEntryPoint", {0, 1, ERROR_PROC_NOT_FOUND}},
        {L"no_such_library_here.dll", "GetVersion", {0, 1, ERROR_MOD_NOT_FOUND}},
    };
    for (const auto& c : cases) {
        OneEntryDll dll(c.dll, c.entry);
        bool loaded = dll && dll.GetDllHandle() != NULL;
        EXPECT_EQ(c.expected, (Values{loaded, dll.binds, loaded ? 0 : dll.m_lastError})) << c.entry;
    }

    // An incomplete library is released again; copies share one load reference (the copy
    // took none of its own and gave back the original's). hid.dll: nothing else loads it.
    if (::GetModuleHandleW(L"hid.dll"))
        GTEST_SKIP() << "already loaded by the process";
    EXPECT_FALSE(OneEntryDll(L"hid.dll", "NoSuchEntryPoint"));
    EXPECT_EQ(NULL, ::GetModuleHandleW(L"hid.dll"));
    OneEntryDll original(L"hid.dll", "HidD_GetHidGuid");
    ASSERT_TRUE(original);
    EXPECT_EQ(original.GetDllHandle(), OneEntryDll(original).GetDllHandle());
    EXPECT_EQ(NULL, ::GetModuleHandleW(L"hid.dll"));
    EXPECT_TRUE(original);
}

TEST(LateBoundDll, CallsWithoutTheLibrary)
{
    // The security calls pass through and save their error (that they pass their results on,
    // Everyone's identifier among them, shows in the open-access mutexes of wts_probe).
    InspectedAdvApi32Dll advapi;
    ASSERT_TRUE(advapi);
    SID_IDENTIFIER_AUTHORITY world = {SECURITY_WORLD_SID_AUTHORITY};
    void* sid = NULL;
    ::SetLastError(0);
    EXPECT_FALSE(advapi.AllocateAndInitializeSid(&world, 9, 0, 0, 0, 0, 0, 0, 0, 0, &sid));  // too many
    EXPECT_TRUE(advapi.m_lastError != 0 && advapi.m_lastError == ::GetLastError());

    // Loaded, the session library has every entry point bound. Without the library the session
    // calls return 0 and the security calls 1; none of them touches its arguments or saves an error.
    InspectedWTSDll wts;
    EXPECT_TRUE(wts && wts.AllBound());
    wts.Free();
    advapi.Free();
    wts.m_lastError = advapi.m_lastError = 4242;
    LPWSTR wide = NULL;
    LPSTR narrow = NULL;
    WTS_SESSION_INFOW* sessionsW = NULL;
    WTS_SESSION_INFOA* sessionsA = NULL;
    DWORD count = 0;
    HWND window = ::GetDesktopWindow();
    sid = NULL;
    ACL* acl = NULL;
    BYTE descriptor[SECURITY_DESCRIPTOR_MIN_LENGTH] = {};
    EXPECT_EQ((Values{0, 0, 0, 0, 0, 0, 1, 1, 1, 1}),
              (Values{wts.WTSRegisterSessionNotification(window, 0), wts.WTSUnRegisterSessionNotification(window),
                      wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSSessionId, &wide, &count),
                      wts.WTSQuerySessionInformationA(NULL, WTS_CURRENT_SESSION, WTSSessionId, &narrow, &count),
                      wts.WTSEnumerateSessionsW(NULL, 0, 1, &sessionsW, &count),
                      wts.WTSEnumerateSessionsA(NULL, 0, 1, &sessionsA, &count),
                      advapi.AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid),
                      advapi.SetEntriesInAclW(0, NULL, NULL, &acl),
                      advapi.InitializeSecurityDescriptor(descriptor, SECURITY_DESCRIPTOR_REVISION),
                      advapi.SetSecurityDescriptorDacl(descriptor, TRUE, NULL, FALSE)}));
    wts.WTSFreeMemory(NULL);
    EXPECT_EQ((Values{4242, 4242}), (Values{wts.m_lastError, advapi.m_lastError}));
    EXPECT_TRUE(wide == NULL && sessionsW == NULL && sid == NULL && acl == NULL && descriptor[0] == 0);
}

namespace {

// Records which of the listener's slots ran.
struct RecordingListener : MCWTSSession::MIWTSSessionNotify {
    std::string calls;
    bool Ran(const char* slot)
    {
        calls += slot;
        return true;
    }
    bool OnConsoleConnect() override { return Ran("ConsoleConnect "); }
    bool OnConsoleDisconnect() override { return Ran("ConsoleDisconnect "); }
    bool OnSessionLogon() override { return Ran("SessionLogon "); }
    bool OnSessionLogoff() override { return Ran("SessionLogoff "); }
    bool OnRemoteConnect() override { return Ran("RemoteConnect "); }
    bool OnRemoteDisconnect() override { return Ran("RemoteDisconnect "); }
};

}  // namespace

TEST(WTSSession, HiddenWindowTurnsEachCodeIntoItsSlot)
{
    MCWTSSession* session = MCWTSSession::Instance();
    ASSERT_EQ(1, session->Init());
    EXPECT_EQ(1, session->Init()) << "a second Init keeps the registration";
    // The hidden window (the only one of its class: no other program of the test makes one),
    // never shown, points back to the session. Its thread and module are where the messages
    // below and the class's re-registration in InstanceGuard.MultiLocksDetachAndTheSessionHelper
    // need them.
    HWND window = ::FindWindowW(L"vlrwtsseswndclass", NULL);
    ASSERT_NE(HWND(NULL), window);
    EXPECT_EQ((Values{0, LONG_PTR(session)}),
              (Values{::IsWindowVisible(window), ::GetWindowLongPtrW(window, GWLP_USERDATA)}));

    // Codes 0 to 7, with a listener and without.
    RecordingListener listener;
    auto deliverEveryCode = [&] {
        listener.calls.clear();
        for (WPARAM code = 0; code <= 7; ++code) {
            EXPECT_TRUE(::PostMessageW(window, WM_WTSSESSION_CHANGE, code, 1));
            for (MSG message; ::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE);)
                ::DispatchMessageW(&message);
        }
        return listener.calls;
    };
    EXPECT_EQ(NULL, session->SetNotify(&listener));
    EXPECT_EQ("ConsoleConnect ConsoleDisconnect RemoteConnect RemoteDisconnect SessionLogon SessionLogoff ",
              deliverEveryCode());
    EXPECT_EQ(0, ::SendMessageW(window, WM_WTSSESSION_CHANGE, WTS_SESSION_LOGON, 0));
    EXPECT_EQ(&listener, session->SetNotify(NULL));
    EXPECT_EQ("", deliverEveryCode());

    // A listener built against the interface finds its slots by position.
    typedef bool (*Slot)(MCWTSSession::MIWTSSessionNotify*);
    void** vtable = *reinterpret_cast<void***>(static_cast<MCWTSSession::MIWTSSessionNotify*>(&listener));
    for (int slot = 0; slot < 6; ++slot)
        reinterpret_cast<Slot>(vtable[slot])(&listener);
    EXPECT_EQ("ConsoleConnect ConsoleDisconnect SessionLogon SessionLogoff RemoteConnect RemoteDisconnect ",
              listener.calls);

    // Wine 8 answers neither query, so it gets the fail-open values (the failed session number, -1,
    // shows at the end of the local lock names in InstanceGuard.NamesAreSharedWithOtherBuilds).
    EXPECT_TRUE(session->IsSessionConnected());
}
