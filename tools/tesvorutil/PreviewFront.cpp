#include "PreviewFront.h"
#include "Commands.h"
#include "Description.h"
#include "Output.h"
#include <cwchar>

namespace tesvorutil {
namespace {

// WIDTHxHEIGHT, nothing else; the numbers are checked later.
bool ParseSize(const wchar_t* text, CSize& size)
{
    int width = 0, height = 0, used = 0;
    if (swscanf(text, L"%dx%d%n", &width, &height, &used) != 2 || text[used] != L'\0')
        return false;
    size = CSize(width, height);
    return true;
}

bool ParsePreviewOptions(int argc, wchar_t** argv, bool render, PreviewOptions& options)
{
    for (int i = 0; i < argc; ++i) {
        const wchar_t* argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (wcscmp(argument, L"--size") == 0 && hasValue) {
            if (!ParseSize(argv[++i], options.size))
                return false;
            options.hasSize = true;
        } else if (render && wcscmp(argument, L"-o") == 0 && hasValue) {
            options.output = argv[++i];
        } else if (render && wcscmp(argument, L"--outline") == 0) {
            options.outline = true;
        } else if (options.file == nullptr && argument[0] != L'-') {
            options.file = argument;
        } else {
            return false;
        }
    }
    return options.file != nullptr && (!render || options.output != nullptr);
}

// Reads the description and builds its window at the asked size.
int BuildPreview(const PreviewOptions& options, preview::DialogModel& model, preview::PreviewWindow& window)
{
    const wchar_t* file = options.file;
    CString error;
    if (options.hasSize && !preview::CheckSize(options.size, error)) {
        PrintErr(L"%s: error: --size %dx%d: %s\n", file, options.size.cx, options.size.cy,
                 static_cast<const wchar_t*>(error));
        return ExitInvalid;
    }
    MCXMLReader reader;
    if (!OpenDescription(reader, file))
        return ExitInvalid;
    const HRESULT hr = model.Read(reader, file);
    if (FAILED(hr)) {
        PrintErr(L"%s: error: the description cannot be read (0x%08lX) %s\n", file, static_cast<unsigned long>(hr),
                 static_cast<const wchar_t*>(reader.m_strError));
        return ExitInvalid;
    }
    if (hr == S_FALSE) {
        PrintErr(L"%s: error: the description has no window (root/window)\n", file);
        return ExitInvalid;
    }
    reader.Close();
    for (const CString& warning : model.warnings)
        PrintErr(L"%s: warning: %s\n", file, static_cast<const wchar_t*>(warning));
    if (!window.Create(model, error)) {
        PrintErr(L"%s: error: %s\n", file, static_cast<const wchar_t*>(error));
        return ExitInvalid;
    }
    if (options.hasSize) {
        const CSize given = window.Resize(options.size);
        if (given != options.size)
            PrintErr(L"%s: warning: --size %dx%d is outside the window's size limits; shown at %dx%d\n", file,
                     options.size.cx, options.size.cy, given.cx, given.cy);
    }
    return ExitOk;
}

}  // namespace

int RunPreviewCommand(const wchar_t* name, int argc, wchar_t** argv,
                      int (*use)(const PreviewOptions& options, preview::PreviewWindow& window))
{
    PreviewOptions options;
    if (!ParsePreviewOptions(argc, argv, wcscmp(name, L"render") == 0, options))
        return UsageError(name);
    ComApartment apartment;
    preview::DialogModel model;
    preview::PreviewWindow window;
    const int built = BuildPreview(options, model, window);
    return built != ExitOk ? built : use(options, window);
}

}  // namespace tesvorutil
