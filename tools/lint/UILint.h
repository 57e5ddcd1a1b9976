// The linter of UI descriptions. It reads a description with XmlLite, which
// knows lines and columns, and checks it against the description of the format
// (MNUIFormat.h): every element, attribute, syntax, keyword, key and flag it
// knows comes from there. Each finding says what the reader will do instead of
// what the author probably meant. `tesvorutil lint` prints the findings.
#pragma once
#include <string>
#include <vector>

namespace uilint {

enum Level { LevelNote, LevelWarning, LevelError };

// The rules, in the order of Rules().
enum RuleId {
    RuleMalformedXml,
    RuleRootElement,
    RuleUnknownElement,
    RuleUnknownAttribute,
    RuleRepeatedElement,
    RuleIgnoredChildren,
    RuleIgnoredText,
    RuleUnknownKeyword,
    RuleFlagValue,
    RuleBadNumber,
    RuleTrailingText,
    RuleNumberRange,
    RuleOctalNumber,
    RuleConflictingAttributes,
    RuleInvalidAnchors,
    RuleIgnoredUnderSkinPath,
    RuleFaceNameTooLong,
    RuleMissingAttribute,
    RuleTableEnds,
    RuleDuplicateKey,
    RuleUnknownSchema,
    RuleDuplicateIdentifier,
    RuleOutsideWindow,
    RuleCount
};

struct Rule {
    const wchar_t* id;           // as printed after a finding, e.g. "unknown-attribute"
    Level level;
    const wchar_t* description;  // one sentence, for SARIF and the help text
};

// Every rule, indexed by RuleId.
const Rule& GetRule(RuleId id);
const wchar_t* LevelName(Level level);  // "error", "warning", "note"

struct Finding {
    unsigned line;
    unsigned column;
    RuleId rule;
    std::wstring message;
};

// The findings of one description, sorted by position. When the input cannot be
// read at all (a missing file), `readable` is false and `failure` says why.
struct Report {
    std::wstring file;
    bool readable = true;
    std::wstring failure;
    std::vector<Finding> findings;

    bool HasErrorsOrWarnings() const;
};

Report LintFile(const wchar_t* path);
// A description given as text and reported under `name`.
Report LintText(const wchar_t* name, const wchar_t* xml);

enum OutputFormat { OutputText, OutputJson, OutputSarif };

// The findings of every report in one form: compiler-style lines, a JSON list
// or a SARIF 2.1.0 log. Reports that could not be read are left out.
std::wstring FormatReports(const std::vector<Report>& reports, OutputFormat format);

}  // namespace uilint
