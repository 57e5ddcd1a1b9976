// tesvorutil render FILE.xml -o PREVIEW.png [--size WxH] [--outline]: draws the
// described dialog, built as a real window off screen, into a PNG picture.
#include "Commands.h"
#include "Output.h"
#include "PreviewFront.h"

namespace {

int Render(const tesvorutil::PreviewOptions& options, preview::PreviewWindow& window)
{
    CString error;
    if (preview::RenderPng(window, options.output, options.outline, error))
        return tesvorutil::ExitOk;
    tesvorutil::PrintErr(L"%s: error: %s\n", options.file, static_cast<const wchar_t*>(error));
    return tesvorutil::ExitInvalid;
}

int RunRender(int argc, wchar_t** argv) { return tesvorutil::RunPreviewCommand(L"render", argc, argv, Render); }

}  // namespace

TESVOR_REGISTER_COMMAND(render, {L"render", L"FILE.xml -o PREVIEW.png [--size WxH] [--outline]",
                                 L"draw the described dialog into a PNG picture (--outline: ids and rectangles)",
                                 RunRender})
