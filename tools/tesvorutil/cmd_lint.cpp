// tesvorutil lint FILE... [--format=text|json|sarif]: checks UI descriptions
// and prints what the reader would make of each mistake, one finding per line
// as compilers print them (or as JSON, or as a SARIF log). Exit code 0 when
// nothing was found, 1 for errors or warnings, 2 for a usage error or a file
// that cannot be read.
#include "Commands.h"
#include "Output.h"
#include <UILint.h>
#include <cwchar>

namespace {

int RunLint(int argc, wchar_t** argv)
{
    uilint::OutputFormat format = uilint::OutputText;
    std::vector<const wchar_t*> files;
    for (int i = 0; i < argc; ++i) {
        const wchar_t* argument = argv[i];
        if (wcscmp(argument, L"--format=text") == 0)
            format = uilint::OutputText;
        else if (wcscmp(argument, L"--format=json") == 0)
            format = uilint::OutputJson;
        else if (wcscmp(argument, L"--format=sarif") == 0)
            format = uilint::OutputSarif;
        else if (argument[0] == L'-' && argument[1] != L'\0')
            return tesvorutil::UsageError(L"lint");
        else
            files.push_back(argument);
    }
    if (files.empty())
        return tesvorutil::UsageError(L"lint");

    std::vector<uilint::Report> reports;
    int exitCode = tesvorutil::ExitOk;
    for (const wchar_t* file : files) {
        uilint::Report report = uilint::LintFile(file);
        if (!report.readable) {
            tesvorutil::PrintErr(L"%s: error: %s\n", file, report.failure.c_str());
            exitCode = tesvorutil::ExitUsage;
            continue;
        }
        if (report.HasErrorsOrWarnings() && exitCode == tesvorutil::ExitOk)
            exitCode = tesvorutil::ExitInvalid;
        reports.push_back(std::move(report));
    }
    tesvorutil::WriteOut(uilint::FormatReports(reports, format).c_str());
    return exitCode;
}

}  // namespace

TESVOR_REGISTER_COMMAND(lint, {L"lint", L"FILE... [--format=text|json|sarif]",
                               L"check UI descriptions: FILE:LINE:COL: level: message [rule]", RunLint})
