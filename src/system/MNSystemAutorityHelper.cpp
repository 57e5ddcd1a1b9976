#include "MNSystemAutorityHelper.h"
#include "frame/Owners.h"

namespace {

const DWORD kAccessRead = 1;
const DWORD kAccessWrite = 2;
// The system structures at their real sizes: 20 bytes each on the 32-bit build, as
// callers have always passed them; the descriptor holds pointers and is 40 bytes on
// the 64-bit build.
const DWORD kPrivilegeSetSize = sizeof(PRIVILEGE_SET);
const DWORD kSecurityDescriptorSize = SECURITY_DESCRIPTOR_MIN_LENGTH;
// An ACL header and one access-allowed entry without its SID: 16 bytes on either build.
const DWORD kAclOverhead = sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) - sizeof(DWORD);
#if !defined(_WIN64)
static_assert(kPrivilegeSetSize == 20 && kSecurityDescriptorSize == 20, "32-bit structure sizes");
#endif
static_assert(kAclOverhead == 16, "ACL overhead");

struct AccessCheckFailed {};

HANDLE OpenQueryToken()
{
    HANDLE hToken = NULL;
    if (::OpenThreadToken(::GetCurrentThread(), TOKEN_QUERY, FALSE, &hToken))
        return hToken;
    if (::GetLastError() != ERROR_NO_TOKEN)
        throw AccessCheckFailed();
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &hToken))
        throw AccessCheckFailed();
    return hToken;
}

}  // namespace

// An access check against a descriptor that grants access to Administrators only.
// The failure path frees what it made but stays impersonating. Callers have
// always seen that, and the resources the success path keeps (below).
int MNSystemAutorityHelper::IsAdmin()
{
    UniqueSid administrators;
    UniqueHLocal<> descriptor;
    UniqueHLocal<ACL> acl;
    try {
        ::ImpersonateSelf(SecurityImpersonation);
        // Never closed, on either path: callers have always seen the token stay open.
        HANDLE hToken = OpenQueryToken();

        SID_IDENTIFIER_AUTHORITY ntAuthority = SECURITY_NT_AUTHORITY;
        if (!::AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID,
                                        DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0, administrators.put()))
            throw AccessCheckFailed();

        descriptor.reset(::LocalAlloc(LPTR, kSecurityDescriptorSize));
        if (!descriptor || !::InitializeSecurityDescriptor(descriptor.get(), SECURITY_DESCRIPTOR_REVISION))
            throw AccessCheckFailed();

        DWORD aclSize = ::GetLengthSid(administrators.get()) + kAclOverhead;
        acl.reset(static_cast<PACL>(::LocalAlloc(LPTR, aclSize)));
        if (!acl || !::InitializeAcl(acl.get(), aclSize, ACL_REVISION2) ||
            !::AddAccessAllowedAce(acl.get(), ACL_REVISION2, kAccessRead | kAccessWrite, administrators.get()) ||
            !::SetSecurityDescriptorDacl(descriptor.get(), TRUE, acl.get(), FALSE))
            throw AccessCheckFailed();
        ::SetSecurityDescriptorGroup(descriptor.get(), administrators.get(), FALSE);
        ::SetSecurityDescriptorOwner(descriptor.get(), administrators.get(), FALSE);
        if (!::IsValidSecurityDescriptor(descriptor.get()))
            throw AccessCheckFailed();

        GENERIC_MAPPING mapping = {kAccessRead, kAccessWrite, 0, kAccessRead | kAccessWrite};
        BYTE privileges[kPrivilegeSetSize] = {};
        DWORD privilegesSize = kPrivilegeSetSize;
        DWORD granted = 0;
        BOOL status = FALSE;
        if (!::AccessCheck(descriptor.get(), hToken, kAccessRead, &mapping,
                           reinterpret_cast<PPRIVILEGE_SET>(privileges), &privilegesSize, &granted,
                           &status))
            throw AccessCheckFailed();

        ::RevertToSelf();
        // Kept, not freed, as callers have always seen: the descriptor, ACL and SID.
        descriptor.release();
        acl.release();
        administrators.release();
        return status;
    } catch (const AccessCheckFailed&) {
        return 0;
    }
}

CString MNSystemAutorityHelper::GetProfileName()
{
    // Room for 32 characters, but GetUserNameW is told 30: a name of 30 or more
    // characters does not fit and gives an empty result.
    CString name;
    DWORD size = 30;
    if (!::GetUserNameW(name.GetBuffer(32), &size)) {
        name.ReleaseBuffer(0);
        return CString();
    }
    name.ReleaseBuffer();
    return name;
}
