// check-email ADDRESS...: the e-mail checker's verdict on each address.
#include <afx.h>
#include "Commands.h"
#include "MCEmailAddressChecker.h"
#include "MErrorUtils.h"
#include "Output.h"

namespace {

const wchar_t* PartName(DWORD code)
{
    switch (code & MCEmailAddressChecker::kPartMask) {
    case 0: return L"address";
    case MCEmailAddressChecker::kPartName: return L"name";
    case MCEmailAddressChecker::kPartDomain: return L"domain";
    case MCEmailAddressChecker::kPartExtension: return L"extension";
    default: return L"unknown part";
    }
}

const wchar_t* FaultName(DWORD code)
{
    switch (code & ~MCEmailAddressChecker::kPartMask) {
    case MCEmailAddressChecker::kFaultEmpty: return L"empty";
    case MCEmailAddressChecker::kFaultInvalidChar: return L"invalid character";
    case MCEmailAddressChecker::kFaultTooLong: return L"too long";
    case MCEmailAddressChecker::kFaultForbiddenChar: return L"forbidden character";
    case MCEmailAddressChecker::kFaultSpace: return L"space";
    default: return L"unknown fault";
    }
}

int CheckEmail(int argc, wchar_t** argv)
{
    if (argc == 0)
        return tesvorutil::UsageError(L"check-email");
    int exitCode = tesvorutil::ExitOk;
    for (int i = 0; i < argc; i++) {
        DWORD code = 0;
        if (MErrorUtils::IsValidEmail(argv[i], &code)) {
            tesvorutil::PrintOut(L"%s: valid\n", argv[i]);
        } else {
            tesvorutil::PrintOut(L"%s: 0x%08X (%s: %s)\n", argv[i], code, PartName(code), FaultName(code));
            exitCode = tesvorutil::ExitInvalid;
        }
    }
    return exitCode;
}

}  // namespace

TESVOR_REGISTER_COMMAND(checkEmail, {L"check-email", L"ADDRESS...",
                                     L"check e-mail addresses; a fault is shown as its code, part and kind",
                                     &CheckEmail})
