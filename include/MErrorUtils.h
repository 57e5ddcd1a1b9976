// MErrorUtils: validators for what a user types as an identifier: the numeric
// VLR number, the alphanumeric Tesvor ID and an e-mail address. Pure functions:
// no state, no messages, nothing thrown.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

namespace MErrorUtils {

// VLR numbers run from 10000 to 2147483646.
const UINT kMinVLRNumber = 10000;
const UINT kMaxVLRNumber = 0x7FFFFFFE;

// ASCII letters only; the second argument is ignored.
TESVORUTIL_API bool IsAlpha(wchar_t c, const wchar_t* pszExtra);
// ASCII letters and digits only; the second argument is ignored.
TESVORUTIL_API bool IsAlphaNum(wchar_t c, const wchar_t* pszExtra);

TESVORUTIL_API bool IsValidVLRNumber(UINT nNumber);
// The number wcstoul reads (leading white space, a sign and trailing text are
// tolerated) if it is a valid VLR number, else 0. 0 for an unreadable pointer.
TESVORUTIL_API UINT ConvertStringToVLRNumber(const wchar_t* pszNumber);
// Strict: decimal digits only (no white space, no sign), in the valid range.
TESVORUTIL_API bool IsValidVLRNumber(const wchar_t* pszNumber);

// 3 to 16 ASCII letters and digits, the first not a digit. Case is kept.
TESVORUTIL_API bool IsValidTesvorID(const CString& strID);

// Runs MCEmailAddressChecker over the address; the result code (0 when valid)
// goes to *pdwError when the pointer is not null.
TESVORUTIL_API bool IsValidEmail(const wchar_t* pszEmail, DWORD* pdwError);

}  // namespace MErrorUtils
