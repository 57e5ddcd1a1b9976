// MNOwnerUtils: login identifiers and display names from loose strings.
#pragma once
#include <afx.h>
#include "MCUserNames.h"
#include "TesvorUtilExport.h"

namespace MNOwnerUtils {

// Trims the string in place (the caller's string changes), then tells which
// identifier it is: an e-mail address, a Tesvor ID or a VLR number, tested in
// that order. LoginIDUnknown for an empty string or none of the three.
TESVORUTIL_API MELoginIDType AnalyzeUIDString(CString& strUID);

// The string without spaces, control characters and the given symbols.
TESVORUTIL_API CString CleanStringFromSymbols(const CString& str, const CString& strSymbols);

// The nickname; else the login alias; else the identifier.
TESVORUTIL_API CString FormatDisplayName(const CString& strID, const CString& strNickname,
                                         const CString& strLoginAlias);

}  // namespace MNOwnerUtils
