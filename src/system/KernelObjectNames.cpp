#include "KernelObjectNames.h"
#include <cwchar>
#include "MCAdvApi32Dll.h"
#include "frame/Owners.h"
#include "system/ProcBinding.h"

namespace {

// -1 until the first test, then 0 or 1 for the life of the process.
LONG g_terminalServices = -1;

// NT 4 tells Terminal Server editions only by the product suite list.
bool ProductSuiteHasTerminalServer()
{
    UniqueHKey key;
    if (::RegOpenKeyA(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\ProductOptions", key.put()) !=
        ERROR_SUCCESS)
        return false;
    DWORD type = 0;
    DWORD size = 0;
    if (::RegQueryValueExA(key.get(), "ProductSuite", NULL, &type, NULL, &size) != ERROR_SUCCESS || size == 0)
        return false;
    // Two spare zero bytes end the list even when the stored value lacks its
    // terminators.
    UniqueHLocal<char> suites(static_cast<char*>(::LocalAlloc(LPTR, size + 2)));
    if (!suites ||
        ::RegQueryValueExA(key.get(), "ProductSuite", NULL, &type, reinterpret_cast<BYTE*>(suites.get()), &size) !=
            ERROR_SUCCESS ||
        type != REG_MULTI_SZ || suites.get()[0] == '\0')
        return false;
    for (const char* suite = suites.get(); *suite; suite += ::lstrlenA(suite) + 1) {
        if (::lstrcmpA(suite, "Terminal Server") == 0)
            return true;
    }
    return false;
}

// Windows 2000 has the suite test, but not every system this library runs
// on exports it, so both functions are taken at run time.
bool VersionHasTerminalSuite()
{
    typedef ULONGLONG(WINAPI * PFNVerSetConditionMask)(ULONGLONG, DWORD, BYTE);
    typedef BOOL(WINAPI * PFNVerifyVersionInfoA)(OSVERSIONINFOEXA*, DWORD, DWORDLONG);
    PFNVerSetConditionMask setConditionMask;
    PFNVerifyVersionInfoA verifyVersionInfo;
    if (!BindProc(::GetModuleHandleA("ntdll.dll"), "VerSetConditionMask", setConditionMask) ||
        !BindProc(::GetModuleHandleA("KERNEL32.DLL"), "VerifyVersionInfoA", verifyVersionInfo))
        return false;
    OSVERSIONINFOEXA version;
    ::ZeroMemory(&version, sizeof(version));
    version.dwOSVersionInfoSize = sizeof(version);
    version.wSuiteMask = VER_SUITE_TERMINAL;
    ULONGLONG mask = setConditionMask(0, VER_SUITENAME, VER_AND);
    return verifyVersionInfo(&version, VER_SUITENAME, mask) != 0;
}

bool TestTerminalServices()
{
    DWORD version = ::GetVersion();
    if (version & 0x80000000)
        return false;  // the 9x family
    BYTE major = LOBYTE(LOWORD(version));
    BYTE minor = HIBYTE(LOWORD(version));
    if (major <= 4)
        return ProductSuiteHasTerminalServer();
    if (minor >= 1)
        return true;  // 5.1 and later always have them
    return VersionHasTerminalSuite();
}

bool StartsWith(const wchar_t* name, const wchar_t* prefix, size_t length)
{
    return std::wcsncmp(name, prefix, length) == 0;
}

const wchar_t* SkipPrefixWithoutTerminalServices(const wchar_t* name, size_t length)
{
    if (!name)
        return NULL;
    return HasTerminalServices() ? name : name + length;
}

// SIDs, the ACL and the descriptor of one secure creation, freed when it ends
// (the SIDs first, then the ACL and the descriptor).
struct OpenAccessMutexParts {
    UniqueHLocal<> descriptor;
    UniqueHLocal<ACL> acl;
    UniqueSid administrators;
    UniqueSid everyone;

    HANDLE Create(MCAdvApi32Dll& advapi, BOOL initialOwner, const wchar_t* name)
    {
        // Event all-access; it includes every mutex right, and other builds
        // of the programs create the same mutexes with this value.
        const DWORD kAccess = 0x001F0003;

        SID_IDENTIFIER_AUTHORITY worldAuthority = {SECURITY_WORLD_SID_AUTHORITY};
        if (!advapi.AllocateAndInitializeSid(&worldAuthority, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0,
                                             everyone.put()))
            return NULL;
        EXPLICIT_ACCESS_W entries[2];
        ::ZeroMemory(entries, sizeof(entries));
        entries[0].grfAccessPermissions = kAccess;
        entries[0].grfAccessMode = GRANT_ACCESS;
        entries[0].grfInheritance = NO_INHERITANCE;
        entries[0].Trustee.TrusteeForm = TRUSTEE_IS_SID;
        entries[0].Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
        entries[0].Trustee.ptstrName = static_cast<LPWSTR>(everyone.get());

        // The administrators' entry is prepared but, with an entry count of
        // one, never enters the ACL; the mutexes other builds make have only
        // the Everyone entry, and the two must match.
        SID_IDENTIFIER_AUTHORITY ntAuthority = {SECURITY_NT_AUTHORITY};
        if (!advapi.AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS,
                                             0, 0, 0, 0, 0, 0, administrators.put()))
            return NULL;
        entries[1].grfAccessPermissions = kAccess;
        entries[1].grfAccessMode = SET_ACCESS;
        entries[1].grfInheritance = NO_INHERITANCE;
        entries[1].Trustee.TrusteeForm = TRUSTEE_IS_SID;
        entries[1].Trustee.TrusteeType = TRUSTEE_IS_GROUP;
        entries[1].Trustee.ptstrName = static_cast<LPWSTR>(administrators.get());

        if (advapi.SetEntriesInAclW(1, entries, NULL, acl.put()) != ERROR_SUCCESS)
            return NULL;
        // The minimum length is 20 bytes in 32-bit processes and larger in
        // 64-bit ones, where the descriptor holds pointers.
        descriptor.reset(::LocalAlloc(LPTR, SECURITY_DESCRIPTOR_MIN_LENGTH));
        if (!descriptor || !advapi.InitializeSecurityDescriptor(descriptor.get(), SECURITY_DESCRIPTOR_REVISION) ||
            !advapi.SetSecurityDescriptorDacl(descriptor.get(), TRUE, acl.get(), FALSE))
            return NULL;
        SECURITY_ATTRIBUTES attributes;
        attributes.nLength = sizeof(attributes);
        attributes.lpSecurityDescriptor = descriptor.get();
        attributes.bInheritHandle = FALSE;
        return ::CreateMutexW(&attributes, initialOwner, name);
    }
};

}  // namespace

bool HasTerminalServices()
{
    if (g_terminalServices == -1)
        g_terminalServices = TestTerminalServices() ? 1 : 0;
    return g_terminalServices != 0;
}

const wchar_t* KernaelObjectName(const wchar_t* name)
{
    if (!name)
        return NULL;
    static const struct {
        const wchar_t* text;
        size_t length;
    } kPrefixes[] = {{L"Global\\", 7}, {L"Session\\", 8}, {L"Local\\", 6}};
    for (const auto& prefix : kPrefixes) {
        if (StartsWith(name, prefix.text, prefix.length))
            return HasTerminalServices() ? name : name + prefix.length;
    }
    return name;
}

const wchar_t* GlobalName(const wchar_t* name)
{
    return SkipPrefixWithoutTerminalServices(name, 7);
}

const wchar_t* LocalName(const wchar_t* name)
{
    return SkipPrefixWithoutTerminalServices(name, 6);
}

HANDLE CreateMutexAllAccess(SECURITY_ATTRIBUTES* sa, BOOL initialOwner, const wchar_t* name)
{
    MCAdvApi32Dll advapi;
    if (sa || !HasTerminalServices() || !advapi)
        return ::CreateMutexW(sa, initialOwner, name);
    HANDLE mutex = NULL;
    DWORD error = 0;
    {
        OpenAccessMutexParts parts;
        mutex = parts.Create(advapi, initialOwner, name);
        error = ::GetLastError();
    }
    ::SetLastError(error);
    return mutex;
}
