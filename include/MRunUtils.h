// MRunUtils: starting programs and opening web links through the shell,
// optionally in the browser registered for HTML files.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

namespace MRunUtils {

// Opens program with parameters (shell verb "open", shown normally).
// E_INVALIDARG for an empty program, E_FAIL when the shell refuses.
TESVORUTIL_API HRESULT RunProgram(const CString& program, CString& parameters);

// The browser's path from the quoted command under HKEY_CLASSES_ROOT
// "htmlfile\shell\open\command": the text after the first quote, of length
// (index of the last quote - 1), which is the quoted program when the command
// starts with it. S_OK whenever the key opens, and then the path is unchanged
// when the command has no quotes; E_FAIL when it does not.
TESVORUTIL_API HRESULT GetDefaultIE(CString& browserPath);

// Opens a link, trimmed, with "http://" put in front of anything that is not
// http://, https:// or a network path (\\), other schemes included. With
// useDefaultBrowser the HTML browser is started with the link as its
// parameters, if it is known. E_INVALIDARG for a blank link.
TESVORUTIL_API HRESULT OpenLink(const CString& link, bool useDefaultBrowser);

}  // namespace MRunUtils
