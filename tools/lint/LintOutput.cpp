// The three forms of the linter's output: lines as compilers print them, a
// plain JSON list, and a SARIF 2.1.0 log for code-scanning services.
#include "UILint.h"
#include "TreeWriter.h"
#include <windows.h>
#include <cwctype>

namespace uilint {
namespace {

using tesvorutil::JsonWriter;

std::wstring TextLines(const std::vector<Report>& reports)
{
    std::wstring text;
    for (const Report& report : reports) {
        for (const Finding& finding : report.findings) {
            const Rule& rule = GetRule(finding.rule);
            text += report.file + L":" + std::to_wstring(finding.line) + L":" + std::to_wstring(finding.column) +
                    L": " + LevelName(rule.level) + L": " + finding.message + L" [" + rule.id + L"]\n";
        }
    }
    return text;
}

std::wstring JsonList(const std::vector<Report>& reports)
{
    JsonWriter out;
    out.Begin(nullptr, true);
    for (const Report& report : reports) {
        for (const Finding& finding : report.findings) {
            const Rule& rule = GetRule(finding.rule);
            out.Begin(nullptr, false);
            out.String(L"file", report.file.c_str());
            out.Number(L"line", finding.line);
            out.Number(L"column", finding.column);
            out.String(L"level", LevelName(rule.level));
            out.String(L"rule", rule.id);
            out.String(L"message", finding.message.c_str());
            out.End(false);
        }
    }
    out.End(true);
    return out.Text();
}

// A path as a URI reference: "file:///C:/dir/file.xml" for a path with a drive,
// "file://server/share/..." for a UNC path, the path with forward slashes for a
// relative one; bytes outside the unreserved set are percent-encoded as UTF-8.
std::wstring FileUri(std::wstring path)
{
    for (wchar_t& c : path) {
        if (c == L'\\')
            c = L'/';
    }
    std::wstring prefix;
    if (path.size() >= 2 && iswalpha(path[0]) && path[1] == L':')
        prefix = L"file:///";
    else if (path.compare(0, 2, L"//") == 0)
        prefix = L"file:";
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, path.c_str(), static_cast<int>(path.size()), nullptr, 0,
                                           nullptr, nullptr);
    std::string bytes(size, '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, path.c_str(), static_cast<int>(path.size()), &bytes[0], size, nullptr, nullptr);
    static const char digits[] = "0123456789ABCDEF";
    std::wstring uri = prefix;
    for (unsigned char c : bytes) {
        if (isalnum(c) || strchr("-._~/:", c) != nullptr) {
            uri += static_cast<wchar_t>(c);
        } else {
            uri += L'%';
            uri += static_cast<wchar_t>(digits[c >> 4]);
            uri += static_cast<wchar_t>(digits[c & 0xF]);
        }
    }
    return uri;
}

const wchar_t* SarifLevel(Level level)
{
    return level == LevelError ? L"error" : level == LevelWarning ? L"warning" : L"note";
}

std::wstring SarifLog(const std::vector<Report>& reports)
{
    JsonWriter out;
    out.Begin(nullptr, false);
    out.String(L"$schema", L"https://json.schemastore.org/sarif-2.1.0.json");
    out.String(L"version", L"2.1.0");
    out.Begin(L"runs", true);
    out.Begin(nullptr, false);
    out.Begin(L"tool", false);
    out.Begin(L"driver", false);
    out.String(L"name", L"tesvorutil lint");
    out.Begin(L"rules", true);
    for (int id = 0; id < RuleCount; ++id) {
        const Rule& rule = GetRule(static_cast<RuleId>(id));
        out.Begin(nullptr, false);
        out.String(L"id", rule.id);
        out.Begin(L"shortDescription", false);
        out.String(L"text", rule.description);
        out.End(false);
        out.Begin(L"defaultConfiguration", false);
        out.String(L"level", SarifLevel(rule.level));
        out.End(false);
        out.End(false);
    }
    out.End(true);
    out.End(false);
    out.End(false);
    out.Begin(L"results", true);
    for (const Report& report : reports) {
        const std::wstring uri = FileUri(report.file);
        for (const Finding& finding : report.findings) {
            const Rule& rule = GetRule(finding.rule);
            out.Begin(nullptr, false);
            out.String(L"ruleId", rule.id);
            out.Number(L"ruleIndex", finding.rule);
            out.String(L"level", SarifLevel(rule.level));
            out.Begin(L"message", false);
            out.String(L"text", finding.message.c_str());
            out.End(false);
            out.Begin(L"locations", true);
            out.Begin(nullptr, false);
            out.Begin(L"physicalLocation", false);
            out.Begin(L"artifactLocation", false);
            out.String(L"uri", uri.c_str());
            out.End(false);
            if (finding.line > 0) {
                out.Begin(L"region", false);
                out.Number(L"startLine", finding.line);
                out.Number(L"startColumn", finding.column > 0 ? finding.column : 1);
                out.End(false);
            }
            out.End(false);
            out.End(false);
            out.End(true);
            out.End(false);
        }
    }
    out.End(true);
    out.End(false);
    out.End(true);
    out.End(false);
    return out.Text();
}

}  // namespace

std::wstring FormatReports(const std::vector<Report>& reports, OutputFormat format)
{
    switch (format) {
    case OutputText: return TextLines(reports);
    case OutputJson: return JsonList(reports);
    case OutputSarif: return SarifLog(reports);
    }
    return std::wstring();
}

}  // namespace uilint
