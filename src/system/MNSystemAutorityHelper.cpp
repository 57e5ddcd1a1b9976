#include "MNSystemAutorityHelper.h"

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
// The token stays open and the success path keeps its descriptor, ACL and SID;
// the failure path frees them but stays impersonating. Callers have always seen
// these effects, so they are kept.
int MNSystemAutorityHelper::IsAdmin()
{
    PSID pAdministrators = NULL;
    PSECURITY_DESCRIPTOR pDescriptor = NULL;
    PACL pAcl = NULL;
    try {
        ::ImpersonateSelf(SecurityImpersonation);
        HANDLE hToken = OpenQueryToken();

        SID_IDENTIFIER_AUTHORITY ntAuthority = SECURITY_NT_AUTHORITY;
        if (!::AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID,
                                        DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0, &pAdministrators))
            throw AccessCheckFailed();

        pDescriptor = ::LocalAlloc(LPTR, kSecurityDescriptorSize);
        if (pDescriptor == NULL ||
            !::InitializeSecurityDescriptor(pDescriptor, SECURITY_DESCRIPTOR_REVISION))
            throw AccessCheckFailed();

        DWORD aclSize = ::GetLengthSid(pAdministrators) + kAclOverhead;
        pAcl = static_cast<PACL>(::LocalAlloc(LPTR, aclSize));
        if (pAcl == NULL || !::InitializeAcl(pAcl, aclSize, ACL_REVISION2) ||
            !::AddAccessAllowedAce(pAcl, ACL_REVISION2, kAccessRead | kAccessWrite, pAdministrators) ||
            !::SetSecurityDescriptorDacl(pDescriptor, TRUE, pAcl, FALSE))
            throw AccessCheckFailed();
        ::SetSecurityDescriptorGroup(pDescriptor, pAdministrators, FALSE);
        ::SetSecurityDescriptorOwner(pDescriptor, pAdministrators, FALSE);
        if (!::IsValidSecurityDescriptor(pDescriptor))
            throw AccessCheckFailed();

        GENERIC_MAPPING mapping = {kAccessRead, kAccessWrite, 0, kAccessRead | kAccessWrite};
        BYTE privileges[kPrivilegeSetSize] = {};
        DWORD privilegesSize = kPrivilegeSetSize;
        DWORD granted = 0;
        BOOL status = FALSE;
        if (!::AccessCheck(pDescriptor, hToken, kAccessRead, &mapping,
                           reinterpret_cast<PPRIVILEGE_SET>(privileges), &privilegesSize, &granted,
                           &status))
            throw AccessCheckFailed();

        ::RevertToSelf();
        return status;
    } catch (const AccessCheckFailed&) {
        if (pAcl != NULL)
            ::LocalFree(pAcl);
        if (pDescriptor != NULL)
            ::LocalFree(pDescriptor);
        if (pAdministrators != NULL)
            ::FreeSid(pAdministrators);
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
