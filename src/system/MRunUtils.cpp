#include "MRunUtils.h"

#include <shellapi.h>
#include "Corvel.h"
#include "MCRegistry.h"

namespace {

HRESULT ShellOpen(const wchar_t* file, const wchar_t* parameters)
{
    HINSTANCE result = ::ShellExecuteW(NULL, L"open", file, parameters, NULL, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > 32 ? S_OK : E_FAIL;
}

bool StartsWith(const CString& text, const wchar_t* prefix)
{
    return wcsncmp(text, prefix, wcslen(prefix)) == 0;
}

}  // namespace

namespace MRunUtils {

HRESULT RunProgram(const CString& program, CString& parameters)
{
    if (program.IsEmpty())
        return E_INVALIDARG;
    return ShellOpen(program, parameters);
}

HRESULT GetDefaultIE(CString& browserPath)
{
    MCRegistry registry;
    if (!registry.Open(HKEY_CLASSES_ROOT, L"htmlfile\\shell\\open\\command"))
        return E_FAIL;
    CString command;
    registry.Read(CString(), command);
    registry.Close();

    int firstQuote = command.Find(L'"');
    int lastQuote = command.ReverseFind(L'"');
    // The length counts from the start of the command, which is where its
    // quoted program begins.
    if (firstQuote != -1 && lastQuote != -1)
        browserPath = command.Mid(firstQuote + 1, lastQuote - 1);
    return S_OK;
}

HRESULT OpenLink(const CString& link, bool useDefaultBrowser)
{
    CString target(link);
    MNStringUtils::Trim(target);
    if (target.IsEmpty())
        return E_INVALIDARG;

    CString lower(target);
    lower.MakeLower();
    if (!StartsWith(lower, L"http://") && !StartsWith(lower, L"https://") && !StartsWith(lower, L"\\\\"))
        target = L"http://" + target;

    CString browser;
    if (useDefaultBrowser && GetDefaultIE(browser) == S_OK)
        return ShellOpen(browser, target);
    return ShellOpen(target, NULL);
}

}  // namespace MRunUtils
