#include <gtest/gtest.h>
#include <string>
#include "ChildProcess.h"
#include "KernelObjectNames.h"
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
        probe.Wait();
    }
}

TEST(TerminalServices, OpenAccessMutexKeepsTheErrorAndTheCallersAttributes)
{
    HANDLE first = CreateMutexAllAccess(NULL, TRUE, L"Global\\TesvorTestTwiceMutex");
    ASSERT_NE(HANDLE(NULL), first);
    ::SetLastError(0);
    HANDLE second = CreateMutexAllAccess(NULL, FALSE, L"Global\\TesvorTestTwiceMutex");
    EXPECT_EQ(DWORD(ERROR_ALREADY_EXISTS), ::GetLastError());
    EXPECT_NE(HANDLE(NULL), second);
    // The caller's attributes are used as given: here, an inheritable handle.
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), NULL, TRUE};
    HANDLE third = CreateMutexAllAccess(&inheritable, FALSE, L"TesvorTestCallerSecuredMutex");
    DWORD flags = 0;
    EXPECT_TRUE(::GetHandleInformation(third, &flags) && (flags & HANDLE_FLAG_INHERIT));
    for (HANDLE handle : {first, second, third})
        ::CloseHandle(handle);
}

namespace {

// A library wrapper with one entry point to bind, counting binder calls.
class OneEntryDll : public MCDll {
public:
    OneEntryDll(const wchar_t* dll, const char* entry) : MCDll(dll), m_entry(entry) { Load(); }
    DWORD SavedError() const { return m_lastError; }
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
        return m_pfnRegisterSessionNotification && m_pfnUnRegisterSessionNotification && m_pfnQuerySessionInformationA &&
               m_pfnQuerySessionInformationW && m_pfnFreeMemory && m_pfnEnumerateSessionsA && m_pfnEnumerateSessionsW;
    }
};
struct InspectedAdvApi32Dll : MCAdvApi32Dll {
    using MCDll::Free;
    using MCDll::m_lastError;
};

// A system library that nothing else in the suite loads.
const wchar_t kUnusedDll[] = L"hid.dll";

}  // namespace

TEST(LateBoundDll, LoadsOnlyWhenEveryEntryPointIsThere)
{
    const struct {
        const wchar_t* dll;
        const char* entry;
        bool loaded;
        DWORD error;  // saved error when not loaded
    } cases[] = {
        {L"kernel32.dll", "GetVersion", true, 0},
        {L"kernel32.dll", "NoSuchEntryPoint", false, ERROR_PROC_NOT_FOUND},
        {L"no_such_library_here.dll", "GetVersion", false, ERROR_MOD_NOT_FOUND},
    };
    for (const auto& c : cases) {
        OneEntryDll dll(c.dll, c.entry);
        EXPECT_EQ(c.loaded, static_cast<bool>(dll) && dll.GetDllHandle() != NULL) << c.entry;
        EXPECT_EQ(1, dll.binds) << "the binder also runs after a failed load";
        EXPECT_EQ(c.error, c.loaded ? 0 : dll.SavedError()) << c.entry;
    }
    InspectedWTSDll wts;
    EXPECT_TRUE(wts && wts.AllBound());

    // An incomplete library is released again; copies share one load reference (the copy
    // took none of its own and gave back the original's).
    if (::GetModuleHandleW(kUnusedDll))
        GTEST_SKIP() << "already loaded by the process";
    EXPECT_FALSE(OneEntryDll(kUnusedDll, "NoSuchEntryPoint"));
    EXPECT_EQ(NULL, ::GetModuleHandleW(kUnusedDll));
    OneEntryDll original(kUnusedDll, "HidD_GetHidGuid");
    ASSERT_TRUE(original);
    EXPECT_EQ(original.GetDllHandle(), OneEntryDll(original).GetDllHandle());
    EXPECT_EQ(NULL, ::GetModuleHandleW(kUnusedDll));
    EXPECT_TRUE(original);
}

TEST(LateBoundDll, CallsWithoutTheLibrary)
{
    // The session calls return 0 and save nothing.
    InspectedWTSDll wts;
    wts.Free();
    ASSERT_FALSE(wts);
    wts.m_lastError = 4242;
    LPWSTR wide = NULL;
    LPSTR narrow = NULL;
    WTS_SESSION_INFOW* sessionsW = NULL;
    WTS_SESSION_INFOA* sessionsA = NULL;
    DWORD count = 0;
    HWND window = ::GetDesktopWindow();
    EXPECT_EQ(0, wts.WTSRegisterSessionNotification(window, 0) + wts.WTSUnRegisterSessionNotification(window));
    EXPECT_EQ(0, wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSSessionId, &wide, &count) +
                     wts.WTSQuerySessionInformationA(NULL, WTS_CURRENT_SESSION, WTSSessionId, &narrow, &count));
    EXPECT_EQ(0, wts.WTSEnumerateSessionsW(NULL, 0, 1, &sessionsW, &count) +
                     wts.WTSEnumerateSessionsA(NULL, 0, 1, &sessionsA, &count));
    wts.WTSFreeMemory(NULL);
    EXPECT_EQ(4242u, wts.m_lastError);
    EXPECT_TRUE(wide == NULL && sessionsW == NULL);

    // The security calls pass through and save their error; without the library they
    // return 1 and touch nothing.
    InspectedAdvApi32Dll advapi;
    ASSERT_TRUE(advapi);
    SID_IDENTIFIER_AUTHORITY world = {SECURITY_WORLD_SID_AUTHORITY};
    void* sid = NULL;
    ::SetLastError(0);
    EXPECT_FALSE(advapi.AllocateAndInitializeSid(&world, 9, 0, 0, 0, 0, 0, 0, 0, 0, &sid));  // too many
    EXPECT_NE(0u, advapi.m_lastError);
    EXPECT_EQ(::GetLastError(), advapi.m_lastError);
    ASSERT_TRUE(advapi.AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid));
    EXPECT_TRUE(::IsValidSid(sid));
    ::FreeSid(sid);
    advapi.Free();
    sid = NULL;
    ACL* acl = NULL;
    BYTE descriptor[SECURITY_DESCRIPTOR_MIN_LENGTH] = {};
    EXPECT_EQ(1, advapi.AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid));
    EXPECT_EQ(1u, advapi.SetEntriesInAclW(0, NULL, NULL, &acl));
    EXPECT_EQ(1, advapi.InitializeSecurityDescriptor(descriptor, SECURITY_DESCRIPTOR_REVISION));
    EXPECT_EQ(1, advapi.SetSecurityDescriptorDacl(descriptor, TRUE, NULL, FALSE));
    EXPECT_TRUE(sid == NULL && acl == NULL && descriptor[0] == 0);
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
    bool OnConsoleConnect() override { return Ran("ConsoleConnect"); }
    bool OnConsoleDisconnect() override { return Ran("ConsoleDisconnect"); }
    bool OnSessionLogon() override { return Ran("SessionLogon"); }
    bool OnSessionLogoff() override { return Ran("SessionLogoff"); }
    bool OnRemoteConnect() override { return Ran("RemoteConnect"); }
    bool OnRemoteDisconnect() override { return Ran("RemoteDisconnect"); }
};

// The slots that a session change ran.
std::string Deliver(HWND window, RecordingListener& listener, WPARAM code)
{
    listener.calls.clear();
    EXPECT_TRUE(::PostMessageW(window, WM_WTSSESSION_CHANGE, code, 1));
    MSG message;
    while (::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE))
        ::DispatchMessageW(&message);
    return listener.calls;
}

}  // namespace

TEST(WTSSession, HiddenWindowTurnsEachCodeIntoItsSlot)
{
    MCWTSSession* session = MCWTSSession::Instance();
    ASSERT_EQ(1, session->Init());
    EXPECT_EQ(session, MCWTSSession::Instance());
    EXPECT_EQ(1, session->Init()) << "a second Init keeps the registration";
    // This process's hidden window, made on this thread, points back to the session.
    HWND window = NULL;
    for (DWORD process = 0; (window = ::FindWindowExW(NULL, window, L"vlrwtsseswndclass", NULL)) != NULL;) {
        ::GetWindowThreadProcessId(window, &process);
        if (process == ::GetCurrentProcessId())
            break;
    }
    ASSERT_NE(HWND(NULL), window);
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_EQ(::GetCurrentThreadId(), ::GetWindowThreadProcessId(window, NULL));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(session), ::GetWindowLongPtrW(window, GWLP_USERDATA));
    EXPECT_EQ(LONG_PTR(WS_OVERLAPPEDWINDOW), ::GetWindowLongPtrW(window, GWL_STYLE) & WS_OVERLAPPEDWINDOW);
    EXPECT_EQ(ULONG_PTR(CS_CLASSDC), ::GetClassLongPtrW(window, GCL_STYLE));
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(::GetModuleHandleW(NULL)), ::GetClassLongPtrW(window, GCLP_HMODULE));

    RecordingListener listener;
    EXPECT_EQ(NULL, session->SetNotify(&listener));
    const char* slots[] = {"", "ConsoleConnect", "ConsoleDisconnect", "RemoteConnect", "RemoteDisconnect",
                           "SessionLogon", "SessionLogoff", ""};
    for (WPARAM code = 0; code <= 7; ++code)
        EXPECT_EQ(slots[code], Deliver(window, listener, code)) << "code " << code;
    EXPECT_EQ(0, ::SendMessageW(window, WM_WTSSESSION_CHANGE, WTS_SESSION_LOGON, 0));
    // Without a listener nothing is called.
    EXPECT_EQ(&listener, session->SetNotify(NULL));
    for (WPARAM code = 0; code <= 7; ++code)
        EXPECT_EQ("", Deliver(window, listener, code)) << "code " << code;

    // A listener built against the interface finds its slots by position.
    typedef bool (*Slot)(MCWTSSession::MIWTSSessionNotify*);
    void** vtable = *reinterpret_cast<void***>(static_cast<MCWTSSession::MIWTSSessionNotify*>(&listener));
    for (int slot = 0; slot < 6; ++slot)
        reinterpret_cast<Slot>(vtable[slot])(&listener);
    EXPECT_EQ("ConsoleConnectConsoleDisconnectSessionLogonSessionLogoffRemoteConnectRemoteDisconnect", listener.calls);

    // The queries follow what the system answers; Wine 8 answers neither, so the fail-open
    // values are what it gets.
    InspectedWTSDll wts;
    LPWSTR buffer = NULL;
    DWORD bytes = 0, expectedID = 0xFFFFFFFF;
    bool expectedConnected = true;
    if (wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSSessionId, &buffer, &bytes)) {
        expectedID = *reinterpret_cast<DWORD*>(buffer);
        wts.WTSFreeMemory(buffer);
    }
    if (wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSConnectState, &buffer, &bytes)) {
        expectedConnected = *reinterpret_cast<WTS_CONNECTSTATE_CLASS*>(buffer) == WTSActive;
        wts.WTSFreeMemory(buffer);
    }
    EXPECT_EQ(expectedID, session->GetCurrentSessionID());
    EXPECT_EQ(expectedConnected, session->IsSessionConnected());
}
