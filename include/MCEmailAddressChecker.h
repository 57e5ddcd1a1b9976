// MCEmailAddressChecker: splits an e-mail address into name, domain and
// extension and tests each part. The result code is 0 for a valid address;
// otherwise its high bits name the part and its low bits the fault.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCEmailAddressChecker {
public:
    // Parts of an address.
    static constexpr DWORD kPartName = 0x10000000;
    static constexpr DWORD kPartDomain = 0x20000000;
    static constexpr DWORD kPartExtension = 0x40000000;
    static constexpr DWORD kPartMask = 0xF0000000;
    // Faults of a part, or of the whole address when no part bit is set.
    static constexpr DWORD kFaultEmpty = 0x02;
    static constexpr DWORD kFaultInvalidChar = 0x10;
    static constexpr DWORD kFaultTooLong = 0x20;
    static constexpr DWORD kFaultForbiddenChar = 0x40;
    static constexpr DWORD kFaultSpace = 0x80;
    // The longest extension that passes.
    static constexpr int kMaxExtensionLength = 4;

    MCEmailAddressChecker();
    // Keeps the address with surrounding white space removed; nothing is split yet.
    explicit MCEmailAddressChecker(const wchar_t* pszEmail);
    MCEmailAddressChecker(const MCEmailAddressChecker& other);
    MCEmailAddressChecker& operator=(const MCEmailAddressChecker& other);
    ~MCEmailAddressChecker();

    // Lower-cases the address, splits it and tests the parts in order.
    DWORD Test();

    // The parts as the last Test left them.
    CString GetName();
    CString GetDomain();
    CString GetExtension();

    // A hook for callers: changes nothing and returns 0.
    DWORD Normalize(CString& str);

protected:
    void ParseEmail();
    DWORD TestValidChars(const CString& str, DWORD dwPart);
    DWORD TestCommonTests(const CString& str, DWORD dwPart);
    DWORD TestName();
    DWORD TestDomain();
    DWORD TestExtension();

    CString m_strAddress;
    CString m_strName;
    CString m_strDomain;
    CString m_strExtension;
};
