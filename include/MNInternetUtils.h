// MNInternetUtils: dialling the default connection and encoding text for a
// URL query.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

namespace MNInternetUtils {

// Asks the system to dial the default connection (InternetAttemptConnect).
// S_OK when connected; otherwise E_FAIL with the system's error in *error.
TESVORUTIL_API HRESULT OpenDialUp(DWORD* error);

// Encodes each UTF-16 unit on its own: letters and digits of the Latin-1 range
// (ASCII or not) stay, white space of that range becomes "+", and every other
// unit becomes "%" and its value in upper-case hexadecimal, at least two
// digits, so that units above 0xFF give three or four digits and are not
// turned into UTF-8 first ("-", "_", "." and "~" are encoded too).
TESVORUTIL_API CString URLEncode(const CString& text);

}  // namespace MNInternetUtils
