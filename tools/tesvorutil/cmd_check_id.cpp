// check-id TEXT...: which kind of login identifier each text is.
#include <afx.h>
#include "Commands.h"
#include "MNOwnerUtils.h"
#include "Output.h"

namespace {

const wchar_t* KindName(MELoginIDType type)
{
    switch (type) {
    case LoginIDVLRNumber: return L"VLR number";
    case LoginIDEmail: return L"e-mail address";
    case LoginIDTesvor: return L"Tesvor ID";
    default: return L"not an identifier";
    }
}

int CheckId(int argc, wchar_t** argv)
{
    if (argc == 0)
        return tesvorutil::UsageError(L"check-id");
    int exitCode = tesvorutil::ExitOk;
    for (int i = 0; i < argc; i++) {
        CString text(argv[i]);
        MELoginIDType type = MNOwnerUtils::AnalyzeUIDString(text);
        tesvorutil::PrintOut(L"%s: %s\n", argv[i], KindName(type));
        if (type == LoginIDUnknown)
            exitCode = tesvorutil::ExitInvalid;
    }
    return exitCode;
}

}  // namespace

TESVOR_REGISTER_COMMAND(checkId, {L"check-id", L"TEXT...",
                                  L"tell whether each text is an e-mail address, a Tesvor ID or a VLR number",
                                  &CheckId})
