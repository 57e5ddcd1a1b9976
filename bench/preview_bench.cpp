// Times the dialog preview against the reader's DOM load of the same description:
//   preview_bench FILE.xml OUT.png
// prints the DOM load (Open), the reading of the records the preview needs, and
// the rendering: building the window of real controls (create), printing it into a
// surface and writing the PNG (picture). Each figure is the best of kRuns runs; the
// processor time the process spent in the best render is shown beside it, so that
// the rest, the time spent waiting (mostly on the Wine server), shows too. Then the
// render's time by control type: the same dialog with the controls of one type
// only.
#include <DialogPreview.h>
#include <objbase.h>
#include <algorithm>
#include <cstdio>
#include "BenchTiming.h"

namespace {

using bench::Best;
using bench::Seconds;

const int kRuns = 5;

// User and kernel time of the whole process so far.
double ProcessorSeconds()
{
    FILETIME created, exited, kernel, user;
    ::GetProcessTimes(::GetCurrentProcess(), &created, &exited, &kernel, &user);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<double>((static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
    };
    return (ticks(kernel) + ticks(user)) / 1e7;
}

// Builds `window` of `model` and writes its picture to `png`: the seconds each took
// (the window is destroyed by the caller, outside the time taken).
bool Render(preview::PreviewWindow& window, const preview::DialogModel& model, const wchar_t* png, double& create,
            double& picture, CString& error)
{
    const double start = Seconds();
    if (!window.Create(model, error))
        return false;
    const double built = Seconds();
    if (!preview::RenderPng(window, png, false, error))
        return false;
    create = built - start;
    picture = Seconds() - built;
    return true;
}

// Renders `model` with only the controls of each type in turn, best of kRuns.
void RenderByType(preview::DialogModel& model, const wchar_t* png)
{
    const std::vector<preview::PreviewControl> all = model.controls;
    std::vector<MEControlType> types;
    for (const preview::PreviewControl& control : all) {
        if (std::find(types.begin(), types.end(), control.record->eType) == types.end())
            types.push_back(control.record->eType);
    }
    std::printf("%12s %8s %10s %10s\n", "type", "controls", "create ms", "picture ms");
    for (MEControlType type : types) {
        model.controls.clear();
        std::copy_if(all.begin(), all.end(), std::back_inserter(model.controls),
                     [type](const preview::PreviewControl& control) { return control.record->eType == type; });
        Best create, picture;
        CString error;
        for (int run = 0; run < kRuns; ++run) {
            preview::PreviewWindow window;
            double created, pictured;
            if (!Render(window, model, png, created, pictured, error))
                return;
            create.Keep(created);
            picture.Keep(pictured);
        }
        std::printf("%12ls %8zu %10.1f %10.1f\n", static_cast<const wchar_t*>(preview::TypeName(type)),
                    model.controls.size(), create.seconds * 1000, picture.seconds * 1000);
    }
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 3) {
        std::fwprintf(stderr, L"usage: preview_bench FILE.xml OUT.png\n");
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Best load, records, create, picture, render;
    double renderProcessor = 0;
    size_t controls = 0;
    int status = 0;
    for (int run = 0; run < kRuns && status == 0; ++run) {
        MCXMLReader reader;
        preview::DialogModel model;
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
        const double processor = ProcessorSeconds();
        preview::PreviewWindow window;
        double created, pictured;
        if (!Render(window, model, argv[2], created, pictured, error)) {
            std::fwprintf(stderr, L"cannot render: %ls\n", static_cast<const wchar_t*>(error));
            status = 1;
            break;
        }
        controls = model.controls.size();
        load.Keep(loaded - start);
        records.Keep(read - loaded);
        create.Keep(created);
        picture.Keep(pictured);
        if (created + pictured < render.seconds)
            renderProcessor = ProcessorSeconds() - processor;
        render.Keep(created + pictured);
    }
    if (status == 0) {
        std::printf("%8s %10s %10s %10s %10s %10s %10s %7s\n", "controls", "load ms", "records ms", "create ms",
                    "picture ms", "render ms", "(cpu ms)", "ratio");
        std::printf("%8zu %10.1f %10.1f %10.1f %10.1f %10.1f %10.1f %7.2f   render / load\n", controls,
                    load.seconds * 1000, records.seconds * 1000, create.seconds * 1000, picture.seconds * 1000,
                    render.seconds * 1000, renderProcessor * 1000, render.seconds / load.seconds);
        MCXMLReader reader;
        preview::DialogModel model;
        if (reader.Open(argv[1], 0) == S_OK && model.Read(reader) == S_OK)
            RenderByType(model, argv[2]);
    }
    CoUninitialize();
    return status;
}
