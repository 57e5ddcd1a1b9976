#include "MCAdvApi32Dll.h"
#include "system/ProcBinding.h"

MCAdvApi32Dll::MCAdvApi32Dll()
    : MCDll(L"Advapi32.dll"),
      m_pfnAllocateAndInitializeSid(NULL),
      m_pfnSetEntriesInAclW(NULL),
      m_pfnInitializeSecurityDescriptor(NULL),
      m_pfnSetSecurityDescriptorDacl(NULL)
{
    Load();
}

MCAdvApi32Dll::MCAdvApi32Dll(const MCAdvApi32Dll& other)
    : MCDll(other),
      m_pfnAllocateAndInitializeSid(other.m_pfnAllocateAndInitializeSid),
      m_pfnSetEntriesInAclW(other.m_pfnSetEntriesInAclW),
      m_pfnInitializeSecurityDescriptor(other.m_pfnInitializeSecurityDescriptor),
      m_pfnSetSecurityDescriptorDacl(other.m_pfnSetSecurityDescriptorDacl)
{
}

MCAdvApi32Dll& MCAdvApi32Dll::operator=(const MCAdvApi32Dll& other)
{
    MCDll::operator=(other);
    m_pfnAllocateAndInitializeSid = other.m_pfnAllocateAndInitializeSid;
    m_pfnSetEntriesInAclW = other.m_pfnSetEntriesInAclW;
    m_pfnInitializeSecurityDescriptor = other.m_pfnInitializeSecurityDescriptor;
    m_pfnSetSecurityDescriptorDacl = other.m_pfnSetSecurityDescriptorDacl;
    return *this;
}

MCAdvApi32Dll::~MCAdvApi32Dll() {}

bool MCAdvApi32Dll::BindEntryPoints()
{
    if (!m_hDll)
        return false;
    return BindProc(m_hDll, "AllocateAndInitializeSid", m_pfnAllocateAndInitializeSid) &&
           BindProc(m_hDll, "InitializeSecurityDescriptor", m_pfnInitializeSecurityDescriptor) &&
           BindProc(m_hDll, "SetSecurityDescriptorDacl", m_pfnSetSecurityDescriptorDacl) &&
           BindProc(m_hDll, "SetEntriesInAclW", m_pfnSetEntriesInAclW);
}

BOOL MCAdvApi32Dll::AllocateAndInitializeSid(SID_IDENTIFIER_AUTHORITY* authority, BYTE count,
                                             DWORD sub0, DWORD sub1, DWORD sub2, DWORD sub3,
                                             DWORD sub4, DWORD sub5, DWORD sub6, DWORD sub7,
                                             void** sid)
{
    if (!m_hDll || !m_pfnAllocateAndInitializeSid)
        return TRUE;
    BOOL result = m_pfnAllocateAndInitializeSid(authority, count, sub0, sub1, sub2, sub3, sub4,
                                                sub5, sub6, sub7, sid);
    SaveLastError();
    return result;
}

DWORD MCAdvApi32Dll::SetEntriesInAclW(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldAcl,
                                      ACL** newAcl)
{
    if (!m_hDll || !m_pfnSetEntriesInAclW)
        return 1;
    DWORD result = m_pfnSetEntriesInAclW(count, entries, oldAcl, newAcl);
    SaveLastError();
    return result;
}

BOOL MCAdvApi32Dll::InitializeSecurityDescriptor(void* descriptor, DWORD revision)
{
    if (!m_hDll || !m_pfnInitializeSecurityDescriptor)
        return TRUE;
    BOOL result = m_pfnInitializeSecurityDescriptor(descriptor, revision);
    SaveLastError();
    return result;
}

BOOL MCAdvApi32Dll::SetSecurityDescriptorDacl(void* descriptor, BOOL present, ACL* acl,
                                              BOOL defaulted)
{
    if (!m_hDll || !m_pfnSetSecurityDescriptorDacl)
        return TRUE;
    BOOL result = m_pfnSetSecurityDescriptorDacl(descriptor, present, acl, defaulted);
    SaveLastError();
    return result;
}
