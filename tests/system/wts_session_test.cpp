#include <gtest/gtest.h>
#include <vector>
#include "MCWTSSession.h"

namespace {

// Records the order of the listener's slots that ran.
class RecordingListener : public MCWTSSession::MIWTSSessionNotify {
public:
    bool OnConsoleConnect() override { return Ran("OnConsoleConnect"); }
    bool OnConsoleDisconnect() override { return Ran("OnConsoleDisconnect"); }
    bool OnSessionLogon() override { return Ran("OnSessionLogon"); }
    bool OnSessionLogoff() override { return Ran("OnSessionLogoff"); }
    bool OnRemoteConnect() override { return Ran("OnRemoteConnect"); }
    bool OnRemoteDisconnect() override { return Ran("OnRemoteDisconnect"); }

    std::vector<std::string> calls;

private:
    bool Ran(const char* slot)
    {
        calls.push_back(slot);
        return true;
    }
};

// The hidden notification window of this process.
HWND FindNotifyWindow()
{
    HWND window = NULL;
    while ((window = ::FindWindowExW(NULL, window, L"vlrwtsseswndclass", NULL)) != NULL) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        if (process == ::GetCurrentProcessId())
            return window;
    }
    return NULL;
}

void DeliverSessionChange(HWND window, WPARAM code)
{
    ASSERT_TRUE(::PostMessageW(window, WM_WTSSESSION_CHANGE, code, 1));
    MSG message;
    while (::PeekMessageW(&message, NULL, 0, 0, PM_REMOVE))
        ::DispatchMessageW(&message);
}

class WTSSessionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        session = MCWTSSession::Instance();
        ASSERT_EQ(1, session->Init());
        window = FindNotifyWindow();
        ASSERT_NE(HWND(NULL), window);
    }
    void TearDown() override
    {
        if (session)
            session->SetNotify(NULL);
    }

    MCWTSSession* session = NULL;
    HWND window = NULL;
};

}  // namespace

TEST_F(WTSSessionTest, HiddenWindowPointsBackToTheSession)
{
    EXPECT_EQ(session, MCWTSSession::Instance());
    EXPECT_EQ(1, session->Init()) << "a second Init keeps the registration";
    EXPECT_EQ(window, FindNotifyWindow());
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_EQ(::GetCurrentThreadId(), ::GetWindowThreadProcessId(window, NULL));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(session), ::GetWindowLongPtrW(window, GWLP_USERDATA));
    EXPECT_EQ(static_cast<LONG_PTR>(WS_OVERLAPPEDWINDOW),
              ::GetWindowLongPtrW(window, GWL_STYLE) & WS_OVERLAPPEDWINDOW);
    EXPECT_EQ(static_cast<ULONG_PTR>(CS_CLASSDC), ::GetClassLongPtrW(window, GCL_STYLE));
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(::GetModuleHandleW(NULL)),
              ::GetClassLongPtrW(window, GCLP_HMODULE));
}

TEST_F(WTSSessionTest, EachCodeReachesItsSlot)
{
    RecordingListener listener;
    EXPECT_EQ(NULL, session->SetNotify(&listener));
    const struct {
        WPARAM code;
        const char* slot;  // null: nothing runs
    } cases[] = {
        {0, NULL},
        {WTS_CONSOLE_CONNECT, "OnConsoleConnect"},
        {WTS_CONSOLE_DISCONNECT, "OnConsoleDisconnect"},
        {WTS_REMOTE_CONNECT, "OnRemoteConnect"},
        {WTS_REMOTE_DISCONNECT, "OnRemoteDisconnect"},
        {WTS_SESSION_LOGON, "OnSessionLogon"},
        {WTS_SESSION_LOGOFF, "OnSessionLogoff"},
        {7, NULL},
    };
    for (const auto& c : cases) {
        listener.calls.clear();
        DeliverSessionChange(window, c.code);
        if (c.slot)
            EXPECT_EQ(std::vector<std::string>{c.slot}, listener.calls) << "code " << c.code;
        else
            EXPECT_TRUE(listener.calls.empty()) << "code " << c.code;
    }
    EXPECT_EQ(0, ::SendMessageW(window, WM_WTSSESSION_CHANGE, WTS_SESSION_LOGON, 0));
}

TEST_F(WTSSessionTest, WithoutListenerNothingIsCalled)
{
    RecordingListener listener;
    session->SetNotify(&listener);
    EXPECT_EQ(&listener, session->SetNotify(NULL));
    for (WPARAM code = 0; code <= 7; ++code)
        DeliverSessionChange(window, code);
    EXPECT_TRUE(listener.calls.empty());
}

// A listener built against the interface finds its slots by position.
TEST(WTSSessionListener, SlotOrderIsTheInterfaceOrder)
{
    RecordingListener listener;
    typedef bool (*Slot)(MCWTSSession::MIWTSSessionNotify*);
    void** vtable = *reinterpret_cast<void***>(static_cast<MCWTSSession::MIWTSSessionNotify*>(&listener));
    const char* expected[] = {"OnConsoleConnect", "OnConsoleDisconnect", "OnSessionLogon",
                              "OnSessionLogoff",  "OnRemoteConnect",     "OnRemoteDisconnect"};
    for (int slot = 0; slot < 6; ++slot) {
        listener.calls.clear();
        reinterpret_cast<Slot>(vtable[slot])(&listener);
        EXPECT_EQ(std::vector<std::string>{expected[slot]}, listener.calls) << "slot " << slot;
    }
}

TEST(WTSSessionQueries, FollowWhatTheSystemAnswers)
{
    MCWTSSession* session = MCWTSSession::Instance();
    MCWTSDll wts;
    ASSERT_TRUE(wts);
    LPWSTR buffer = NULL;
    DWORD bytes = 0;
    DWORD expectedID = 0xFFFFFFFF;
    if (wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSSessionId, &buffer, &bytes)) {
        expectedID = *reinterpret_cast<DWORD*>(buffer);
        wts.WTSFreeMemory(buffer);
    }
    // Wine 8 answers neither query, so the fail-open values are what it gets.
    EXPECT_EQ(expectedID, session->GetCurrentSessionID());
    bool expectedConnected = true;
    if (wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSConnectState, &buffer, &bytes)) {
        expectedConnected = *reinterpret_cast<WTS_CONNECTSTATE_CLASS*>(buffer) == WTSActive;
        wts.WTSFreeMemory(buffer);
    }
    EXPECT_EQ(expectedConnected, session->IsSessionConnected());
}
