#include "MNOwnerUtils.h"
#include <Corvel.h>
#include "MErrorUtils.h"

MELoginIDType MNOwnerUtils::AnalyzeUIDString(CString& strUID)
{
    if (strUID.IsEmpty())
        return LoginIDUnknown;
    MNStringUtils::Trim(strUID);
    if (MErrorUtils::IsValidEmail(strUID, NULL))
        return LoginIDEmail;
    if (MErrorUtils::IsValidTesvorID(strUID))
        return LoginIDTesvor;
    if (MErrorUtils::IsValidVLRNumber(static_cast<const wchar_t*>(strUID)))
        return LoginIDVLRNumber;
    return LoginIDUnknown;
}

CString MNOwnerUtils::CleanStringFromSymbols(const CString& str, const CString& strSymbols)
{
    CString strResult;
    strResult.Preallocate(str.GetLength());
    for (int i = 0; i < str.GetLength(); i++) {
        wchar_t c = str[i];
        if (c > L' ' && strSymbols.Find(c) < 0)
            strResult += c;
    }
    return strResult;
}

CString MNOwnerUtils::FormatDisplayName(const CString& strID, const CString& strNickname,
                                        const CString& strLoginAlias)
{
    MCUserNames names;
    names.m_strID = strID;
    names.m_strNickname = strNickname;
    names.m_strLoginAlias = strLoginAlias;
    return names.FormatDisplayNameForLogin();
}
