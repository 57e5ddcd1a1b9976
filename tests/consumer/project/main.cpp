// Uses the library through its umbrella header, the framework and Corvel, as an
// application of the family would; exit code 0 when everything answered.
#include <TesvorUtil.h>
#include <Corvel.h>
#include <cstdio>

int wmain()
{
    MCError error;
    error.m_strError = L"copied";
    MCError copy(error);
    CString text;
    text.Format(L"%s:%d", static_cast<const wchar_t*>(copy.m_strError), IsValidAnchorsRect(CRect(0, 0, 100, 100)));
    MNStringUtils::Trim(text);
    bool ok = MFailed(E_FAIL, L"", __LINE__) && !MFailed(S_OK, L"", __LINE__) && text == L"copied:1";
    std::printf("consumer: %s\n", ok ? "ok" : "failed");
    return ok ? 0 : 1;
}
