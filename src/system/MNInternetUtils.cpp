#include "MNInternetUtils.h"

#include <wininet.h>
#include <cwctype>

namespace MNInternetUtils {

HRESULT OpenDialUp(DWORD* error)
{
    DWORD result = ::InternetAttemptConnect(0);
    if (result == ERROR_SUCCESS)
        return S_OK;
    if (error != NULL)
        *error = result;
    return E_FAIL;
}

CString URLEncode(const CString& text)
{
    CString encoded;
    for (int i = 0; i < text.GetLength(); ++i) {
        wchar_t unit = text[i];
        // Letters and digits are kept only in the Latin-1 range (U+0100 has
        // always been "%100"); white space is "+" wherever it is in Unicode.
        if (unit <= 0xFF && std::iswalnum(unit))
            encoded += unit;
        else if (std::iswspace(unit))
            encoded += L'+';
        else
            encoded.AppendFormat(L"%%%02X", static_cast<unsigned>(unit));
    }
    return encoded;
}

}  // namespace MNInternetUtils
