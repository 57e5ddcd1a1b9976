// afxlite: support for extension DLLs. AFX_EXTENSION_MODULE, CDynLinkLibrary,
// AfxInitExtensionModule and AfxTermExtensionModule come with afxwin.h; an
// extension DLL includes this header in the file that holds its DllMain.
#pragma once
#include "afxwin.h"
