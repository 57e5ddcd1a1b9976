#include "MCEmailAddressChecker.h"
#include "MErrorUtils.h"

MCEmailAddressChecker::MCEmailAddressChecker() {}

MCEmailAddressChecker::MCEmailAddressChecker(const wchar_t* pszEmail)
{
    if (AfxIsValidString(pszEmail, -1)) {
        m_strAddress = pszEmail;
        m_strAddress.TrimLeft();
        m_strAddress.TrimRight();
    }
}

MCEmailAddressChecker::MCEmailAddressChecker(const MCEmailAddressChecker& other)
    : m_strAddress(other.m_strAddress), m_strName(other.m_strName), m_strDomain(other.m_strDomain),
      m_strExtension(other.m_strExtension)
{
}

MCEmailAddressChecker& MCEmailAddressChecker::operator=(const MCEmailAddressChecker& other)
{
    m_strAddress = other.m_strAddress;
    m_strName = other.m_strName;
    m_strDomain = other.m_strDomain;
    m_strExtension = other.m_strExtension;
    return *this;
}

MCEmailAddressChecker::~MCEmailAddressChecker() {}

CString MCEmailAddressChecker::GetName() { return m_strName; }
CString MCEmailAddressChecker::GetDomain() { return m_strDomain; }
CString MCEmailAddressChecker::GetExtension() { return m_strExtension; }

DWORD MCEmailAddressChecker::Normalize(CString&) { return 0; }

// A part that the address does not have keeps its previous value: the name when
// the address starts with "@", the extension when it holds no ".".
void MCEmailAddressChecker::ParseEmail()
{
    m_strAddress.MakeLower();

    int at = -1;
    if (!m_strAddress.IsEmpty())
        at = m_strAddress.Find(L'@');
    if (at > 0)
        m_strName = m_strAddress.Left(at);

    int end = m_strAddress.GetLength();
    int dot = m_strAddress.ReverseFind(L'.');
    if (dot >= 0) {
        m_strExtension = m_strAddress.Mid(dot + 1);
        end = dot;
    }

    // A dot before the "@" leaves a negative count, and so an empty domain.
    m_strDomain = m_strAddress.Mid(at + 1, end - at - 1);
}

// The name takes any character but a space, the domain letters, digits, "_",
// "-" and ".", the extension letters only. The order of the checks decides
// which code a character gets.
DWORD MCEmailAddressChecker::TestValidChars(const CString& str, DWORD dwPart)
{
    for (int i = 0; i < str.GetLength(); i++) {
        wchar_t c = str[i];
        if (dwPart == kPartDomain && c == L'@')
            return kPartDomain | kFaultForbiddenChar;
        if (dwPart == kPartExtension && !MErrorUtils::IsAlpha(c, NULL))
            return kPartExtension | kFaultForbiddenChar;
        if (!MErrorUtils::IsAlphaNum(c, NULL) && c != L'_' && c != L'-' && dwPart == kPartDomain && c != L'.')
            return kPartDomain | kFaultInvalidChar;
        if (c == L' ')
            return dwPart | kFaultSpace;
    }
    return 0;
}

DWORD MCEmailAddressChecker::TestCommonTests(const CString& str, DWORD dwPart)
{
    if (str.IsEmpty())
        return dwPart | kFaultEmpty;
    return TestValidChars(str, dwPart);
}

DWORD MCEmailAddressChecker::TestName() { return TestCommonTests(m_strName, kPartName); }

DWORD MCEmailAddressChecker::TestDomain() { return TestCommonTests(m_strDomain, kPartDomain); }

DWORD MCEmailAddressChecker::TestExtension()
{
    DWORD dwResult = TestCommonTests(m_strExtension, kPartExtension);
    if (dwResult == 0 && m_strExtension.GetLength() > kMaxExtensionLength)
        dwResult = kPartExtension | kFaultTooLong;
    return dwResult;
}

DWORD MCEmailAddressChecker::Test()
{
    if (m_strAddress.IsEmpty())
        return kFaultEmpty;
    ParseEmail();
    DWORD dwResult = TestName();
    if (dwResult == 0)
        dwResult = TestDomain();
    if (dwResult == 0)
        dwResult = TestExtension();
    return dwResult;
}
