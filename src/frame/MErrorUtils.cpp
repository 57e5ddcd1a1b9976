#include "MErrorUtils.h"
#include <cwctype>
#include <cwchar>
#include "MCEmailAddressChecker.h"

namespace {
const int kMinTesvorIDLength = 3;
const int kMaxTesvorIDLength = 16;
}  // namespace

bool MErrorUtils::IsAlpha(wchar_t c, const wchar_t*)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

bool MErrorUtils::IsAlphaNum(wchar_t c, const wchar_t* pszExtra)
{
    return (c >= L'0' && c <= L'9') || IsAlpha(c, pszExtra);
}

bool MErrorUtils::IsValidVLRNumber(UINT nNumber) { return nNumber >= kMinVLRNumber && nNumber <= kMaxVLRNumber; }

UINT MErrorUtils::ConvertStringToVLRNumber(const wchar_t* pszNumber)
{
    if (!AfxIsValidString(pszNumber, -1))
        return 0;
    UINT nNumber = static_cast<UINT>(wcstoul(pszNumber, NULL, 10));
    return IsValidVLRNumber(nNumber) ? nNumber : 0;
}

bool MErrorUtils::IsValidVLRNumber(const wchar_t* pszNumber)
{
    if (!AfxIsValidString(pszNumber, -1) || *pszNumber == L'\0')
        return false;
    for (const wchar_t* p = pszNumber; *p != L'\0'; p++) {
        if (!iswdigit(*p))
            return false;
    }
    // Eleven digits and more saturate the conversion, which then fails the range.
    return IsValidVLRNumber(static_cast<UINT>(wcstoul(pszNumber, NULL, 10)));
}

bool MErrorUtils::IsValidTesvorID(const CString& strID)
{
    int nLength = strID.GetLength();
    if (nLength < kMinTesvorIDLength || nLength > kMaxTesvorIDLength)
        return false;
    if (iswdigit(strID[0]))
        return false;
    for (int i = 0; i < nLength; i++) {
        if (!IsAlphaNum(strID[i], NULL))
            return false;
    }
    return true;
}

bool MErrorUtils::IsValidEmail(const wchar_t* pszEmail, DWORD* pdwError)
{
    MCEmailAddressChecker checker(pszEmail);
    DWORD dwError = checker.Test();
    if (pdwError != NULL)
        *pdwError = dwError;
    return dwError == 0;
}
