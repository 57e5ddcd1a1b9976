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
        // Only the Latin-1 range is classified: the encoding was fixed with the
        // "C" locale's table, under which every unit above 0xFF is encoded.
        if (unit <= 0xFF && std::iswalnum(unit))
            encoded += unit;
        else if (unit <= 0xFF && std::iswspace(unit))
            encoded += L'+';
        else
            encoded.AppendFormat(L"%%%02X", static_cast<unsigned>(unit));
    }
    return encoded;
}

}  // namespace MNInternetUtils
