// tesvorutil show FILE.xml [--size WxH]: opens the described dialog as a live,
// resizable window until it is closed.
#include "Commands.h"
#include "PreviewFront.h"

namespace {

int Show(const tesvorutil::PreviewOptions&, preview::PreviewWindow& window) { return window.RunUntilClosed(); }

int RunShow(int argc, wchar_t** argv) { return tesvorutil::RunPreviewCommand(L"show", argc, argv, Show); }

}  // namespace

TESVOR_REGISTER_COMMAND(show, {L"show", L"FILE.xml [--size WxH]",
                               L"open the described dialog as a live window until it is closed", RunShow})
