// MCAdvApi32Dll: the access-control entry points of "Advapi32.dll" bound at run
// time. When the library is not loaded every call returns 1 without doing
// anything (not 0 as the session calls do): test operator bool first.
#pragma once
#include "MCDll.h"
#include <aclapi.h>

class TESVORUTIL_API MCAdvApi32Dll : public MCDll {
public:
    typedef BOOL(WINAPI* PFNAllocateAndInitializeSid)(SID_IDENTIFIER_AUTHORITY*, BYTE, DWORD, DWORD,
                                                      DWORD, DWORD, DWORD, DWORD, DWORD, DWORD,
                                                      void**);
    typedef DWORD(WINAPI* PFNSetEntriesInAclW)(ULONG, EXPLICIT_ACCESS_W*, ACL*, ACL**);
    typedef BOOL(WINAPI* PFNInitializeSecurityDescriptor)(void*, DWORD);
    typedef BOOL(WINAPI* PFNSetSecurityDescriptorDacl)(void*, BOOL, ACL*, BOOL);

    MCAdvApi32Dll();
    MCAdvApi32Dll(const MCAdvApi32Dll& other);
    MCAdvApi32Dll& operator=(const MCAdvApi32Dll& other);
    virtual ~MCAdvApi32Dll();

    BOOL AllocateAndInitializeSid(SID_IDENTIFIER_AUTHORITY* authority, BYTE count, DWORD sub0,
                                  DWORD sub1, DWORD sub2, DWORD sub3, DWORD sub4, DWORD sub5,
                                  DWORD sub6, DWORD sub7, void** sid);
    DWORD SetEntriesInAclW(ULONG count, EXPLICIT_ACCESS_W* entries, ACL* oldAcl, ACL** newAcl);
    BOOL InitializeSecurityDescriptor(void* descriptor, DWORD revision);
    BOOL SetSecurityDescriptorDacl(void* descriptor, BOOL present, ACL* acl, BOOL defaulted);

protected:
    virtual bool BindEntryPoints();

    PFNAllocateAndInitializeSid m_pfnAllocateAndInitializeSid;
    PFNSetEntriesInAclW m_pfnSetEntriesInAclW;
    PFNInitializeSecurityDescriptor m_pfnInitializeSecurityDescriptor;
    PFNSetSecurityDescriptorDacl m_pfnSetSecurityDescriptorDacl;
};
