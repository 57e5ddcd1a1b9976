// Prints on one line what this process's Windows version makes of terminal services: the
// version ("9x" for that family), the test (twice, the second from the cache), how far each
// kernel-object name function moves into its argument ("-" for null), and whether an
// open-access mutex grants Everyone all access and nothing else ("open") or not ("plain").
#include <windows.h>
#include <aclapi.h>
#include <cstdio>
#include "KernelObjectNames.h"

namespace {

const char* MutexAccess()
{
    wchar_t name[64];
    ::wsprintfW(name, L"TesvorProbeMutex%lu", ::GetCurrentProcessId());
    HANDLE mutex = CreateMutexAllAccess(NULL, FALSE, name);
    ACL* dacl = NULL;
    PSECURITY_DESCRIPTOR descriptor = NULL;
    if (!mutex || ::GetSecurityInfo(mutex, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, NULL, NULL, &dacl, NULL,
                                    &descriptor) != ERROR_SUCCESS)
        return "error";
    BYTE everyone[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof(everyone);
    ::CreateWellKnownSid(WinWorldSid, NULL, everyone, &size);
    ACCESS_ALLOWED_ACE* ace = NULL;
    bool open = dacl && dacl->AceCount == 1 && ::GetAce(dacl, 0, reinterpret_cast<void**>(&ace)) &&
                ace->Header.AceType == ACCESS_ALLOWED_ACE_TYPE && ace->Mask == 0x001F0003 &&
                ::EqualSid(&ace->SidStart, everyone);
    ::LocalFree(descriptor);
    ::CloseHandle(mutex);
    return open ? "open" : "plain";
}

}  // namespace

int main()
{
    DWORD version = ::GetVersion();
    if (version & 0x80000000)
        std::printf("9x");
    else
        std::printf("%lu.%lu", version & 0xFF, (version >> 8) & 0xFF);
    std::printf(" %d %d", HasTerminalServices(), HasTerminalServices());
    const struct {
        const wchar_t* (*function)(const wchar_t*);
        const wchar_t* name;
    } calls[] = {
        {KernaelObjectName, L"Global\\Foo"}, {KernaelObjectName, L"Session\\Foo"}, {KernaelObjectName, L"Local\\Foo"},
        {KernaelObjectName, L"global\\Foo"}, {KernaelObjectName, L"Foo"},         {KernaelObjectName, L""},
        {GlobalName, L"Global\\Foo"},        {GlobalName, L"ab"},                  {GlobalName, L""},
        {LocalName, L"Local\\Foo"},          {LocalName, L""},                     {KernaelObjectName, NULL},
        {GlobalName, NULL},                  {LocalName, NULL},
    };
    for (const auto& call : calls) {
        const wchar_t* result = call.function(call.name);
        if (result == NULL)
            std::printf(" -");
        else
            std::printf(" %d", static_cast<int>(result - call.name));
    }
    std::printf(" %s\n", MutexAccess());
    return 0;
}
