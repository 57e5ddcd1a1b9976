// Prints, as key=value lines, what this process's Windows version makes of
// terminal services, kernel-object names and open-access mutexes.
#include <windows.h>
#include <aclapi.h>
#include <cstdio>
#include "KernelObjectNames.h"

namespace {

void PrintName(const char* key, const wchar_t* name)
{
    char narrow[128] = "";
    if (name)
        ::WideCharToMultiByte(CP_UTF8, 0, name, -1, narrow, sizeof(narrow), NULL, NULL);
    std::printf("%s=%s\n", key, name ? narrow : "(null)");
}

// "count:mask" of the first ACE, and whether that ACE is for Everyone.
void PrintMutexDacl(HANDLE mutex)
{
    ACL* dacl = NULL;
    PSECURITY_DESCRIPTOR descriptor = NULL;
    if (!mutex || ::GetSecurityInfo(mutex, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, NULL, NULL,
                                    &dacl, NULL, &descriptor) != ERROR_SUCCESS) {
        std::printf("dacl=error\n");
        return;
    }
    unsigned long mask = 0;
    int everyone = 0;
    ACCESS_ALLOWED_ACE* ace = NULL;
    if (dacl && dacl->AceCount > 0 && ::GetAce(dacl, 0, reinterpret_cast<void**>(&ace))) {
        BYTE sid[SECURITY_MAX_SID_SIZE];
        DWORD size = sizeof(sid);
        ::CreateWellKnownSid(WinWorldSid, NULL, sid, &size);
        mask = ace->Mask;
        everyone = ::EqualSid(&ace->SidStart, sid) ? 1 : 0;
    }
    std::printf("dacl=%u:%08lx:%d\n", dacl ? dacl->AceCount : 0u, mask, everyone);
    ::LocalFree(descriptor);
}

}  // namespace

int main()
{
    std::printf("version=%08lx\n", static_cast<unsigned long>(::GetVersion()));
    std::printf("terminal=%d\n", HasTerminalServices() ? 1 : 0);
    PrintName("global", KernaelObjectName(L"Global\\Foo"));
    PrintName("session", KernaelObjectName(L"Session\\Foo"));
    PrintName("local", KernaelObjectName(L"Local\\Foo"));
    PrintName("lowercase", KernaelObjectName(L"global\\Foo"));
    PrintName("plain", KernaelObjectName(L"Foo"));
    PrintName("globalname", GlobalName(L"Global\\Foo"));
    PrintName("localname", LocalName(L"Local\\Foo"));
    const wchar_t* shortName = L"ab";
    std::printf("globalname_short_offset=%d\n", static_cast<int>(GlobalName(shortName) - shortName));

    wchar_t mutexName[64];
    ::wsprintfW(mutexName, L"TesvorProbeMutex%lu", ::GetCurrentProcessId());
    HANDLE mutex = CreateMutexAllAccess(NULL, FALSE, mutexName);
    PrintMutexDacl(mutex);
    if (mutex)
        ::CloseHandle(mutex);
    std::fflush(stdout);
    return 0;
}
