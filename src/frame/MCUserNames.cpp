#include "MCUserNames.h"

namespace {
const wchar_t kExternalSuffix[] = L"#ext";
const int kExternalSuffixLength = 4;

// The first of the two that is not empty.
const CString& FirstNonEmpty(const CString& preferred, const CString& fallback)
{
    return preferred.IsEmpty() ? fallback : preferred;
}
}  // namespace

MCUserNames::MCUserNames() {}

MCUserNames::MCUserNames(const MCUserNames& other)
    : m_strDisplayName(other.m_strDisplayName), m_strID(other.m_strID), m_strNickname(other.m_strNickname),
      m_strFirstName(other.m_strFirstName), m_strLastName(other.m_strLastName),
      m_strLoginAlias(other.m_strLoginAlias)
{
}

MCUserNames& MCUserNames::operator=(const MCUserNames& other)
{
    m_strDisplayName = other.m_strDisplayName;
    m_strID = other.m_strID;
    m_strNickname = other.m_strNickname;
    m_strFirstName = other.m_strFirstName;
    m_strLastName = other.m_strLastName;
    m_strLoginAlias = other.m_strLoginAlias;
    return *this;
}

MCUserNames::~MCUserNames() {}

bool MCUserNames::IsExternalID(CString strID)
{
    strID.MakeLower();
    return strID.GetLength() >= kExternalSuffixLength && strID.Right(kExternalSuffixLength) == kExternalSuffix;
}

CString MCUserNames::FormatFullName()
{
    if (!m_strDisplayName.IsEmpty() && !IsExternalID(m_strDisplayName))
        return m_strDisplayName;

    CString strResult = m_strFirstName;
    if (!m_strLastName.IsEmpty()) {
        if (!strResult.IsEmpty())
            strResult += L' ';
        strResult += m_strLastName;
    }
    if (strResult.IsEmpty())
        strResult = FirstNonEmpty(m_strNickname, m_strID);
    return strResult;
}

CString MCUserNames::FormatDisplayName()
{
    return FirstNonEmpty(m_strDisplayName, FirstNonEmpty(m_strNickname, m_strID));
}

CString MCUserNames::FormatDisplayNameForLogin()
{
    return FirstNonEmpty(m_strNickname, FirstNonEmpty(m_strLoginAlias, m_strID));
}
