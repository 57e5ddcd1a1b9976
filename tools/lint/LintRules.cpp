// The rules: id, level and what each one finds.
#include "UILint.h"
#include <algorithm>

namespace uilint {
namespace {

const Rule kRules[] = {
    {L"malformed-xml", LevelError, L"The file is not well-formed XML; the reader loads nothing from it."},
    {L"root-element", LevelError,
     L"The document element is not 'root' without a namespace; the reader finds nothing in the file."},
    {L"unknown-element", LevelWarning,
     L"An element that the format does not have at this place; the reader ignores it and everything in it."},
    {L"unknown-attribute", LevelWarning, L"An attribute that the element does not have; the reader ignores it."},
    {L"repeated-element", LevelWarning,
     L"A second element of a kind the format has once at this place; the reader reads the first."},
    {L"ignored-children", LevelWarning,
     L"Children of an element that says they are not to be read (a font with schemaonly=\"1\")."},
    {L"ignored-text", LevelWarning, L"Text inside an element; the reader reads only elements and attributes."},
    {L"unknown-keyword", LevelWarning,
     L"A value that is none of the attribute's keywords; the reader leaves the field at its default."},
    {L"flag-value", LevelWarning, L"A flag written other than \"0\" or \"1\"; the reader takes only \"1\" as true."},
    {L"bad-number", LevelWarning,
     L"A value without the number or numbers its syntax needs; the reader takes 0 or ignores the value."},
    {L"trailing-text", LevelWarning, L"Text after the number or numbers of a value; the reader ignores it."},
    {L"number-range", LevelWarning,
     L"A number out of the range of its field; the reader wraps it, drops it or ignores the value."},
    {L"octal-number", LevelWarning,
     L"A number with a leading zero where the reader reads C-style numbers, so that it is octal."},
    {L"conflicting-attributes", LevelWarning,
     L"Two attributes for the same field (\"rect\" and \"rectex\", \"anchorss\" and \"anchorsv\"); the reader "
     L"takes one of them."},
    {L"invalid-anchors", LevelWarning,
     L"Anchors that break a rule of their syntax; the reader sets no anchors or reads a letter as the near edge."},
    {L"ignored-under-skin-path", LevelWarning,
     L"Anchors or size limits of a control with \"skinphobjpath\"; the reader does not read them."},
    {L"facename-too-long", LevelWarning,
     L"A typeface name longer than a log font holds; the reader ignores it."},
    {L"missing-attribute", LevelWarning, L"An entry without an attribute it needs; the reader skips the entry."},
    {L"table-ends", LevelError,
     L"A key the reader cannot read; it stops reading the table there and loses the rest."},
    {L"duplicate-key", LevelWarning,
     L"A second entry under the same key (string id, section or entry name, schema name, image list name); the "
     L"reader keeps the first."},
    {L"unknown-schema", LevelWarning, L"A control or font that names a schema the description does not define."},
    {L"duplicate-identifier", LevelWarning,
     L"Two controls of one window with the same \"idv\" or \"ids\"; the reader keeps both and the identifier "
     L"does not tell them apart."},
    {L"outside-window", LevelWarning, L"A control whose rectangle reaches outside the window's rectangle."},
};
static_assert(sizeof(kRules) / sizeof(kRules[0]) == RuleCount, "one rule per RuleId");

}  // namespace

const Rule& GetRule(RuleId id) { return kRules[id >= 0 && id < RuleCount ? id : 0]; }

const wchar_t* LevelName(Level level)
{
    switch (level) {
    case LevelNote: return L"note";
    case LevelWarning: return L"warning";
    case LevelError: return L"error";
    }
    return L"";
}

bool Report::HasErrorsOrWarnings() const
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return GetRule(finding.rule).level != LevelNote; });
}

}  // namespace uilint
