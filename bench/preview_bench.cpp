// Times the dialog preview against the reader's DOM load of the same description:
//   preview_bench FILE.xml OUT.png
// prints the DOM load (Open), the reading of the records the preview needs, and
// the rendering: building the window of real controls, printing it into a
// surface and writing the PNG. Each figure is the best of kRuns runs.
#include <DialogPreview.h>
#include <objbase.h>
#include <chrono>
#include <cstdio>

namespace {

const int kRuns = 5;

double Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 3) {
        std::fwprintf(stderr, L"usage: preview_bench FILE.xml OUT.png\n");
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    double bestLoad = 1e9, bestRead = 1e9, bestRender = 1e9;
    size_t controls = 0;
    int status = 0;
    for (int run = 0; run < kRuns && status == 0; ++run) {
        MCXMLReader reader;
        preview::DialogModel model;
        preview::PreviewWindow window;
        CString error;
        const double start = Seconds();
        if (reader.Open(argv[1], 0) != S_OK) {
            std::fwprintf(stderr, L"cannot open %ls\n", argv[1]);
            status = 1;
            break;
        }
        const double loaded = Seconds();
        if (model.Read(reader) != S_OK) {
            std::fwprintf(stderr, L"cannot read %ls\n", argv[1]);
            status = 1;
            break;
        }
        const double read = Seconds();
        if (!window.Create(model, error) || !preview::RenderPng(window, argv[2], false, error)) {
            std::fwprintf(stderr, L"cannot render: %ls\n", static_cast<const wchar_t*>(error));
            status = 1;
            break;
        }
        const double rendered = Seconds();
        controls = model.controls.size();
        bestLoad = loaded - start < bestLoad ? loaded - start : bestLoad;
        bestRead = read - loaded < bestRead ? read - loaded : bestRead;
        bestRender = rendered - read < bestRender ? rendered - read : bestRender;
    }
    if (status == 0) {
        std::printf("%8s %12s %12s %12s %8s\n", "controls", "load ms", "records ms", "render ms", "ratio");
        std::printf("%8zu %12.2f %12.2f %12.2f %8.2f   render / load\n", controls, bestLoad * 1000, bestRead * 1000,
                    bestRender * 1000, bestRender / bestLoad);
    }
    CoUninitialize();
    return status;
}
