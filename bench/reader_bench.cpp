// Times the UI description reader on generated descriptions:
//   reader_bench DIR COUNT...   reads DIR\controls-COUNT.xml for each COUNT
// and prints, per size, the DOM load (Open), the building of every record
// (GetDialogData, both schema getters, the string table) and their ratio, and
// the linting of the same file (uilint::LintFile) against the DOM load.
// Each figure is the best of several runs: at least kMinRuns, and for the small
// sizes as many more as fit in kMinSeconds, so that a busy machine disturbs the
// short measurements less.
#include <TesvorUtil.h>
#include <UILint.h>
#include <objbase.h>
#include <cstdio>
#include <cwchar>
#include "BenchTiming.h"

namespace {

using bench::Best;
using bench::Seconds;

using FontTable = MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>;
using ControlTable = MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>;
using StringTable = MCOrderedMap<CString, const wchar_t*, CString, CString&>;

const int kMinRuns = 5;
const int kMaxRuns = 100;
const double kMinSeconds = 3.0;

// A caller that expects thousands of entries sizes its hash tables for them.
UINT BucketsFor(int count) { return static_cast<UINT>(count) | 1u; }

bool BuildEverything(MCXMLReader& reader, int count, double& seconds)
{
    MCUIWindowData window;
    FontTable fonts;
    ControlTable buttons;
    StringTable strings;
    fonts.InitHashTable(BucketsFor(count));
    buttons.InitHashTable(BucketsFor(count));
    strings.InitHashTable(BucketsFor(count));

    const double start = Seconds();
    const bool ok = reader.GetDialogData(window) == S_OK && reader.GetAllFontsSchemaData(fonts) == S_OK &&
                    reader.GetAllControlsSchemaDataByType(MEControlTypeButton, buttons) == S_OK &&
                    reader.GetStringTableMap(strings) == S_OK;
    seconds = Seconds() - start;

    const bool complete = window.arrControls.GetSize() == count && fonts.GetCount() == count &&
                          buttons.GetCount() == count && strings.GetCount() == count;
    MDeleteMapValues(fonts);
    MDeleteMapValues(buttons);
    if (!ok || !complete)
        std::fwprintf(stderr, L"reading %d controls failed: %ls\n", count, static_cast<const wchar_t*>(reader.m_strError));
    return ok && complete;
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 3) {
        std::fwprintf(stderr, L"usage: reader_bench DIR COUNT...\n");
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    std::printf("%8s %12s %12s %8s %12s %10s\n", "controls", "load ms", "build ms", "ratio", "lint ms", "lint/load");
    double previousBuild = 0, previousLint = 0;
    int previousCount = 0;
    int status = 0;
    for (int i = 2; i < argc; ++i) {
        const int count = _wtoi(argv[i]);
        CString path;
        path.Format(L"%s\\controls-%d.xml", argv[1], count);
        Best bestLoad, bestBuild, bestLint;
        const double sizeStart = Seconds();
        for (int run = 0; run < kMaxRuns && (run < kMinRuns || Seconds() - sizeStart < kMinSeconds); ++run) {
            MCXMLReader reader;
            double start = Seconds();
            if (reader.Open(path, 0) != S_OK) {
                std::fwprintf(stderr, L"cannot open %ls\n", static_cast<const wchar_t*>(path));
                return 1;
            }
            const double load = Seconds() - start;
            double build = 0;
            if (!BuildEverything(reader, count, build)) {
                status = 1;
                break;
            }
            reader.Close();
            start = Seconds();
            const uilint::Report report = uilint::LintFile(path);
            const double lint = Seconds() - start;
            if (!report.readable) {
                std::fwprintf(stderr, L"cannot lint %ls\n", static_cast<const wchar_t*>(path));
                return 1;
            }
            bestLoad.Keep(load);
            bestBuild.Keep(build);
            bestLint.Keep(lint);
        }
        const double load = bestLoad.seconds, build = bestBuild.seconds, lint = bestLint.seconds;
        std::printf("%8d %12.2f %12.2f %8.2f %12.2f %10.2f", count, load * 1000, build * 1000, build / load,
                    lint * 1000, lint / load);
        if (previousCount > 0)
            std::printf("   build x%.1f, lint x%.1f for x%d controls", build / previousBuild, lint / previousLint,
                        count / previousCount);
        std::printf("\n");
        previousBuild = build;
        previousLint = lint;
        previousCount = count;
    }
    CoUninitialize();
    return status;
}
