// Pieces the linter's document walk and its value checks share.
#pragma once
#include "UILint.h"
#include <MNUIFormat.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace uilint {

// An attribute as written, where it stands, and what the format says of it.
struct WrittenAttribute {
    std::wstring name;
    std::wstring value;
    unsigned line = 0;
    unsigned column = 0;
    const MDUIAttribute* described = nullptr;
};

// What the reader makes of a value.
struct ReadValue {
    bool acceptable = false;  // the reader stores a value read from it
    std::wstring key;         // the value as the reader compares it (a number's value, else the text)
    int rect[4] = {};         // for rectangles: left, top, right, bottom as the reader stores them
};

class FindingList {
public:
    explicit FindingList(std::vector<Finding>& findings) : m_findings(findings) {}
    void Add(unsigned line, unsigned column, RuleId rule, std::wstring message)
    {
        m_findings.push_back(Finding{line, column, rule, std::move(message)});
    }
    void Add(const WrittenAttribute& at, RuleId rule, std::wstring message)
    {
        Add(at.line, at.column, rule, std::move(message));
    }

private:
    std::vector<Finding>& m_findings;
};

// Checks a value against its attribute's syntax and keyword table, adds what
// is wrong with it, and says what the reader reads from it (its key only when
// asked for).
ReadValue CheckValue(const WrittenAttribute& attribute, FindingList& findings, bool wantKey);

// The value that the reader compares for keys and identifiers, without findings.
std::wstring KeyOf(const MDUIAttribute& attribute, const std::wstring& value);

// The parts of a message in one string, allocated once: a rule may fire for
// every control of a large description.
std::wstring Join(std::initializer_list<std::wstring_view> parts);

// text in double quotes
std::wstring Quoted(const std::wstring& text);
// name in single quotes
std::wstring Named(const wchar_t* name);

// The one candidate within a small edit distance of word (a case-insensitive
// match first), or null.
const wchar_t* Suggest(const std::wstring& word, const std::vector<const wchar_t*>& candidates);
// " (did you mean 'x'?)" for a suggestion, else nothing.
std::wstring DidYouMean(const std::wstring& word, const std::vector<const wchar_t*>& candidates, bool quoteDouble);

}  // namespace uilint
