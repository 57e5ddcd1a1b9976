// urlencode TEXT: the text as the library encodes it for a URL query.
// path FULLPATH SELECTOR: the parts of a path that a selector names.
#include <afx.h>
#include <cwchar>
#include "Commands.h"
#include "MNInternetUtils.h"
#include "NMFileUtils.h"
#include "Output.h"

namespace {

int UrlEncode(int argc, wchar_t** argv)
{
    if (argc != 1)
        return tesvorutil::UsageError(L"urlencode");
    tesvorutil::PrintOut(L"%s\n", MNInternetUtils::URLEncode(argv[0]).GetString());
    return tesvorutil::ExitOk;
}

// A selector is a decimal number from 0 to 255.
bool ParseSelector(const wchar_t* text, BYTE& selector)
{
    if (*text == L'\0' || wcslen(text) > 3 || wcsspn(text, L"0123456789") != wcslen(text))
        return false;
    unsigned long value = wcstoul(text, NULL, 10);
    if (value > 255)
        return false;
    selector = static_cast<BYTE>(value);
    return true;
}

int PathPart(int argc, wchar_t** argv)
{
    BYTE selector = 0;
    if (argc != 2 || !ParseSelector(argv[1], selector))
        return tesvorutil::UsageError(L"path");
    CString part = NMFileUtils::ReturnFromFullPath(argv[0], selector);
    tesvorutil::PrintOut(L"%s\n", part.GetString());
    // Nothing selected: an unknown selector, or a path without that part.
    return part.IsEmpty() ? tesvorutil::ExitInvalid : tesvorutil::ExitOk;
}

}  // namespace

TESVOR_REGISTER_COMMAND(urlEncode, {L"urlencode", L"TEXT",
                                    L"encode a text for a URL query as the library does (%XX per UTF-16 unit)",
                                    &UrlEncode})
TESVOR_REGISTER_COMMAND(pathPart, {L"path", L"FULLPATH SELECTOR",
                                   L"print the path parts a selector names: 1 drive, 2 folder, 3 name, "
                                   L"4 extension, 10, 12, 23, 34, 40, 120, 123, 234 (exit 1 when empty)",
                                   &PathPart})
