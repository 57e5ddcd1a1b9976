#include <gtest/gtest.h>
#include "MCAdvApi32Dll.h"
#include "MCWTSDll.h"

namespace {

// A library wrapper with one entry point to bind, counting binder calls.
class OneEntryDll : public MCDll {
public:
    OneEntryDll(const wchar_t* dll, const char* entry) : MCDll(dll), m_entry(entry), m_binds(0)
    {
        Load();
    }
    DWORD SavedError() const { return m_lastError; }
    int Binds() const { return m_binds; }

protected:
    bool BindEntryPoints() override
    {
        ++m_binds;
        return m_hDll && ::GetProcAddress(m_hDll, m_entry);
    }

private:
    const char* m_entry;
    int m_binds;
};

// The wrappers with their library dropped, as on a system without it.
class UnloadedWTSDll : public MCWTSDll {
public:
    UnloadedWTSDll() { Free(); }
    DWORD SavedError() const { return m_lastError; }
    void SetSavedError(DWORD error) { m_lastError = error; }
};

class InspectedAdvApi32Dll : public MCAdvApi32Dll {
public:
    DWORD SavedError() const { return m_lastError; }
    void Unload() { Free(); }
};

class InspectedWTSDll : public MCWTSDll {
public:
    DWORD SavedError() const { return m_lastError; }
    bool AllBound() const
    {
        return m_pfnRegisterSessionNotification && m_pfnUnRegisterSessionNotification &&
               m_pfnQuerySessionInformationA && m_pfnQuerySessionInformationW && m_pfnFreeMemory &&
               m_pfnEnumerateSessionsA && m_pfnEnumerateSessionsW;
    }
};

// A system library that nothing else in the suite loads.
const wchar_t kUnusedDll[] = L"hid.dll";

}  // namespace

TEST(LateBoundDll, LoadsOnlyWhenEveryEntryPointIsThere)
{
    struct Case {
        const wchar_t* dll;
        const char* entry;
        bool loaded;
        DWORD error;  // saved error when not loaded
    } cases[] = {
        {L"kernel32.dll", "GetVersion", true, 0},
        {L"kernel32.dll", "NoSuchEntryPoint", false, ERROR_PROC_NOT_FOUND},
        {L"no_such_library_here.dll", "GetVersion", false, ERROR_MOD_NOT_FOUND},
    };
    for (const Case& c : cases) {
        OneEntryDll dll(c.dll, c.entry);
        EXPECT_EQ(c.loaded, static_cast<bool>(dll)) << c.entry;
        EXPECT_EQ(c.loaded, dll.GetDllHandle() != NULL) << c.entry;
        EXPECT_EQ(1, dll.Binds()) << "the binder also runs after a failed load";
        if (!c.loaded) {
            EXPECT_EQ(c.error, dll.SavedError()) << c.entry;
        }
    }
}

TEST(LateBoundDll, IncompleteLibraryIsReleasedAgain)
{
    if (::GetModuleHandleW(kUnusedDll))
        GTEST_SKIP() << "already loaded by the process";
    OneEntryDll dll(kUnusedDll, "NoSuchEntryPoint");
    EXPECT_FALSE(dll);
    EXPECT_EQ(NULL, ::GetModuleHandleW(kUnusedDll));
}

TEST(LateBoundDll, CopiesShareOneLoadReference)
{
    if (::GetModuleHandleW(kUnusedDll))
        GTEST_SKIP() << "already loaded by the process";
    OneEntryDll original(kUnusedDll, "HidD_GetHidGuid");
    ASSERT_TRUE(original);
    {
        OneEntryDll copy(original);
        EXPECT_EQ(original.GetDllHandle(), copy.GetDllHandle());
    }
    // The copy took no reference of its own and gave back the original's.
    EXPECT_EQ(NULL, ::GetModuleHandleW(kUnusedDll));
    EXPECT_TRUE(original);
}

TEST(LateBoundDll, SessionLibraryBindsAllSevenEntryPoints)
{
    InspectedWTSDll wts;
    ASSERT_TRUE(wts);
    EXPECT_TRUE(wts.AllBound());
}

TEST(LateBoundDll, SessionCallsWithoutLibraryReturnZeroAndSaveNothing)
{
    UnloadedWTSDll wts;
    ASSERT_FALSE(wts);
    wts.SetSavedError(4242);
    LPWSTR wide = NULL;
    LPSTR narrow = NULL;
    WTS_SESSION_INFOW* sessionsW = NULL;
    WTS_SESSION_INFOA* sessionsA = NULL;
    DWORD count = 0;
    HWND window = ::GetDesktopWindow();
    EXPECT_EQ(0, wts.WTSRegisterSessionNotification(window, 0));
    EXPECT_EQ(0, wts.WTSUnRegisterSessionNotification(window));
    EXPECT_EQ(0, wts.WTSQuerySessionInformationW(NULL, WTS_CURRENT_SESSION, WTSSessionId, &wide, &count));
    EXPECT_EQ(0, wts.WTSQuerySessionInformationA(NULL, WTS_CURRENT_SESSION, WTSSessionId, &narrow, &count));
    EXPECT_EQ(0, wts.WTSEnumerateSessionsW(NULL, 0, 1, &sessionsW, &count));
    EXPECT_EQ(0, wts.WTSEnumerateSessionsA(NULL, 0, 1, &sessionsA, &count));
    wts.WTSFreeMemory(NULL);
    EXPECT_EQ(4242u, wts.SavedError());
    EXPECT_EQ(NULL, wide);
    EXPECT_EQ(NULL, sessionsW);
}

TEST(LateBoundDll, SecurityCallsWithoutLibraryReturnOneAndTouchNothing)
{
    InspectedAdvApi32Dll advapi;
    ASSERT_TRUE(advapi);
    advapi.Unload();
    SID_IDENTIFIER_AUTHORITY world = {SECURITY_WORLD_SID_AUTHORITY};
    void* sid = NULL;
    ACL* acl = NULL;
    BYTE descriptor[SECURITY_DESCRIPTOR_MIN_LENGTH] = {};
    EXPECT_EQ(1, advapi.AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid));
    EXPECT_EQ(1u, advapi.SetEntriesInAclW(0, NULL, NULL, &acl));
    EXPECT_EQ(1, advapi.InitializeSecurityDescriptor(descriptor, SECURITY_DESCRIPTOR_REVISION));
    EXPECT_EQ(1, advapi.SetSecurityDescriptorDacl(descriptor, TRUE, NULL, FALSE));
    EXPECT_EQ(NULL, sid);
    EXPECT_EQ(NULL, acl);
    EXPECT_EQ(0, descriptor[0]) << "the descriptor was not initialised";
}

TEST(LateBoundDll, SecurityCallsSaveTheirLastError)
{
    InspectedAdvApi32Dll advapi;
    ASSERT_TRUE(advapi);
    SID_IDENTIFIER_AUTHORITY world = {SECURITY_WORLD_SID_AUTHORITY};
    void* sid = NULL;
    // Nine sub-authorities are more than a SID made this way can take.
    ::SetLastError(0);
    EXPECT_FALSE(advapi.AllocateAndInitializeSid(&world, 9, 0, 0, 0, 0, 0, 0, 0, 0, &sid));
    EXPECT_NE(0u, advapi.SavedError());
    EXPECT_EQ(::GetLastError(), advapi.SavedError());
    ASSERT_TRUE(advapi.AllocateAndInitializeSid(&world, 1, 0, 0, 0, 0, 0, 0, 0, 0, &sid));
    EXPECT_TRUE(::IsValidSid(sid));
    ::FreeSid(sid);
}
