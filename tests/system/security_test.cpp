#include <gtest/gtest.h>
#include <MNSystemAutorityHelper.h>
#include <string>
#include "ScopedImportHook.h"

namespace {

TEST(SystemAuthority, WineUserIsAnAdministratorWithItsName)
{
    EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin());
    EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin());

    wchar_t name[256] = L"";
    DWORD size = 256;
    ASSERT_TRUE(::GetUserNameW(name, &size));
    ASSERT_LT(wcslen(name), 30u);
    EXPECT_EQ(CString(name), MNSystemAutorityHelper::GetProfileName());
}

// A GetUserNameW for the library that reports a chosen name and what it was asked.
std::wstring g_userName;
DWORD g_sizeAsked;
BOOL WINAPI FakeGetUserNameW(LPWSTR buffer, LPDWORD size)
{
    g_sizeAsked = *size;
    DWORD needed = static_cast<DWORD>(g_userName.size()) + 1;
    if (needed > *size) {
        *size = needed;
        ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    std::wmemcpy(buffer, g_userName.c_str(), needed);
    *size = needed;
    return TRUE;
}

TEST(SystemAuthority, ProfileNameTakesAtMostTwentyNineCharacters)
{
    ScopedImportHook hook(TesvorUtilModule(), "ADVAPI32.dll", "GetUserNameW", &FakeGetUserNameW);
    ASSERT_TRUE(hook.Hooked());
    const std::wstring name29(29, L'n');
    struct Case {
        std::wstring user;
        const wchar_t* expected;
    };
    const Case cases[] = {
        {L"ann", L"ann"},
        {name29, name29.c_str()},
        {name29 + L"x", L""},
        {std::wstring(40, L'y'), L""},
        {std::wstring(L"ab\0cd", 5), L"ab"},  // cut at the first NUL
    };
    for (const Case& c : cases) {
        g_userName = c.user;
        g_sizeAsked = 0;
        EXPECT_EQ(CString(c.expected), MNSystemAutorityHelper::GetProfileName());
        EXPECT_EQ(30u, g_sizeAsked);
    }
}

DWORD g_threadTokenError;
BOOL g_processTokenWorks;
int g_processTokenCalls;
BOOL WINAPI FakeOpenThreadToken(HANDLE, DWORD, BOOL, PHANDLE)
{
    ::SetLastError(g_threadTokenError);
    return FALSE;
}
// The process token as an impersonation token: the access check accepts no other.
BOOL WINAPI FakeOpenProcessToken(HANDLE process, DWORD access, PHANDLE token)
{
    g_processTokenCalls++;
    HANDLE primary = NULL;
    if (!g_processTokenWorks || !::OpenProcessToken(process, access | TOKEN_DUPLICATE, &primary)) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    BOOL ok = ::DuplicateToken(primary, SecurityImpersonation, token);
    ::CloseHandle(primary);
    return ok;
}

TEST(SystemAuthority, IsAdminFallsBackToTheProcessTokenOnlyWithoutThreadToken)
{
    ScopedImportHook thread(TesvorUtilModule(), "ADVAPI32.dll", "OpenThreadToken", &FakeOpenThreadToken);
    ScopedImportHook process(TesvorUtilModule(), "ADVAPI32.dll", "OpenProcessToken", &FakeOpenProcessToken);
    ASSERT_TRUE(thread.Hooked());
    ASSERT_TRUE(process.Hooked());
    struct Case {
        DWORD threadError;
        BOOL processWorks;
        int processCalls;
        int admin;
    };
    const Case cases[] = {
        {ERROR_NO_TOKEN, TRUE, 1, 1},
        {ERROR_NO_TOKEN, FALSE, 1, 0},
        {ERROR_ACCESS_DENIED, TRUE, 0, 0},
    };
    for (const Case& c : cases) {
        g_threadTokenError = c.threadError;
        g_processTokenWorks = c.processWorks;
        g_processTokenCalls = 0;
        EXPECT_EQ(c.admin, MNSystemAutorityHelper::IsAdmin() != 0 ? 1 : 0);
        EXPECT_EQ(c.processCalls, g_processTokenCalls);
        ::RevertToSelf();  // the failure path leaves the thread impersonating
    }
}

}  // namespace
