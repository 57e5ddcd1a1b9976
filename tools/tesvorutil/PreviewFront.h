// What the show and render commands share: their options, and opening the
// description into a preview window of the asked size.
#pragma once
#include <DialogPreview.h>

namespace tesvorutil {

struct PreviewOptions {
    const wchar_t* file = nullptr;
    const wchar_t* output = nullptr;  // render: -o PREVIEW.png
    bool hasSize = false;             // --size WxH
    CSize size;
    bool outline = false;             // render: --outline
};

// Runs the command `name`: reads its options (FILE [-o PNG] [--size WxH]
// [--outline] for render), opens the description into a preview window of the
// asked size and hands it to `use`, whose result is the exit code. What goes wrong
// is printed to stderr (ExitUsage, ExitInvalid).
int RunPreviewCommand(const wchar_t* name, int argc, wchar_t** argv,
                      int (*use)(const PreviewOptions& options, preview::PreviewWindow& window));

}  // namespace tesvorutil
