// Attribute values as the reader reads them. Numbers go through the same C
// runtime scan as the reader's (AfxCrtSwscanf), so what a message says the
// reader reads is what it reads; the text of each number is looked at apart to
// say why (a minus sign, a leading zero, digits beyond the field's range).
#include "LintChecks.h"
#include <afx.h>
#include <MCPictureHolder.h>
#include <algorithm>
#include <climits>
#include <cwctype>

namespace uilint {
namespace {

std::wstring Number(long long value) { return std::to_wstring(value); }

std::wstring TrimmedLeft(const std::wstring& text)
{
    size_t start = 0;
    while (start < text.size() && iswspace(text[start]))
        ++start;
    return text.substr(start);
}

bool IsBlank(const std::wstring& text)
{
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return iswspace(c) != 0; });
}

// The result of scanning a value with "%u", "%d" or "%i" fields separated by
// single commas, as the reader does.
struct Scan {
    int count = 0;      // fields converted
    int consumed = -1;  // characters up to the end of the last field; -1 when not all were converted
    unsigned values[4] = {};
};

// Reads the plain form, up to nine digits a number (a minus sign where the
// scan is signed, no leading zero) and single commas, nothing else: the scan
// gives the same numbers for it, only slower, and most values are plain.
bool ScanPlain(const std::wstring& text, wchar_t conversion, int fields, Scan& scan)
{
    size_t i = 0;
    for (int field = 0; field < fields; ++field) {
        if (field > 0 && (i >= text.size() || text[i++] != L','))
            return false;
        const bool negative = conversion != L'u' && i < text.size() && text[i] == L'-';
        if (negative)
            ++i;
        const size_t start = i;
        unsigned value = 0;
        while (i < text.size() && iswdigit(text[i]) && i - start < 9)
            value = value * 10 + (text[i++] - L'0');
        if (i == start || (i < text.size() && iswdigit(text[i])) || (text[start] == L'0' && i - start > 1))
            return false;
        scan.values[field] = negative ? 0u - value : value;
    }
    if (i != text.size())
        return false;
    scan.count = fields;
    scan.consumed = static_cast<int>(i);
    return true;
}

Scan ScanFields(const std::wstring& text, wchar_t conversion, int fields)
{
    Scan scan;
    if (ScanPlain(text, conversion, fields, scan))
        return scan;
    // The reader's formats, each followed by %n to learn where the numbers end.
    const bool u = conversion == L'u', d = conversion == L'd';
    const wchar_t* format = fields == 1   ? (u ? L"%u%n" : d ? L"%d%n" : L"%i%n")
                            : fields == 3 ? (u ? L"%u,%u,%u%n" : L"%i,%i,%i%n")
                                          : (u ? L"%u,%u,%u,%u%n" : L"%i,%i,%i,%i%n");
    unsigned* v = scan.values;
    int* n = &scan.consumed;
    switch (fields) {
    case 1: scan.count = AfxCrtSwscanf(text.c_str(), format, &v[0], n); break;
    case 3: scan.count = AfxCrtSwscanf(text.c_str(), format, &v[0], &v[1], &v[2], n); break;
    default: scan.count = AfxCrtSwscanf(text.c_str(), format, &v[0], &v[1], &v[2], &v[3], n); break;
    }
    if (scan.count < fields)
        scan.consumed = -1;
    scan.count = std::max(scan.count, 0);
    return scan;
}

// One number as written: its sign, base and how large it is.
struct WrittenNumber {
    std::wstring text;  // without leading blanks
    bool negative = false;
    bool octal = false;
    unsigned long long magnitude = 0;  // saturates
};

WrittenNumber ReadWrittenNumber(const std::wstring& field, wchar_t conversion)
{
    WrittenNumber number;
    number.text = TrimmedLeft(field);
    size_t i = 0;
    const std::wstring& t = number.text;
    if (i < t.size() && (t[i] == L'+' || t[i] == L'-'))
        number.negative = t[i++] == L'-';
    unsigned base = 10;
    if (conversion == L'i' && i + 1 < t.size() && t[i] == L'0' && (t[i + 1] == L'x' || t[i + 1] == L'X')) {
        base = 16;
        i += 2;
    } else if (conversion == L'i' && i + 1 < t.size() && t[i] == L'0' && iswdigit(t[i + 1])) {
        base = 8;
        number.octal = true;
    }
    for (; i < t.size(); ++i) {
        const wchar_t c = static_cast<wchar_t>(towlower(t[i]));
        const unsigned digit = iswdigit(c) ? c - L'0' : (c >= L'a' && c <= L'f') ? c - L'a' + 10 : 99;
        if (digit >= base)
            break;
        number.magnitude = number.magnitude > (ULLONG_MAX - digit) / base ? ULLONG_MAX : number.magnitude * base + digit;
    }
    return number;
}

// Whether the scan's 32-bit result differs from the number as written.
bool OutOfRange(const WrittenNumber& number, wchar_t conversion)
{
    if (conversion == L'u')
        return (number.negative && number.magnitude != 0) || number.magnitude > UINT_MAX;
    return number.magnitude > (number.negative ? 2147483648ull : 2147483647ull);
}

std::wstring AsRead(unsigned value, wchar_t conversion)
{
    return conversion == L'u' ? Number(value) : Number(static_cast<int>(value));
}

class ValueChecker {
public:
    ValueChecker(const WrittenAttribute& attribute, FindingList& findings, bool wantKey)
        : m_at(attribute), m_attribute(*attribute.described), m_findings(findings), m_wantKey(wantKey)
    {
    }

    ReadValue Check()
    {
        switch (m_attribute.syntax) {
        case UISyntaxText:
            m_result.acceptable = true;
            if (m_wantKey)
                m_result.key = m_at.value;
            break;
        case UISyntaxFaceName: CheckFaceName(); break;
        case UISyntaxFlag: CheckFlag(); break;
        case UISyntaxUnsigned: CheckScalar(L'u', 0, UINT_MAX); break;
        case UISyntaxByte: CheckScalar(L'u', 0, 255); break;
        case UISyntaxSignedByte: CheckScalar(L'd', -128, 128); break;
        case UISyntaxSigned: CheckScalar(L'd', INT_MIN, INT_MAX); break;
        case UISyntaxSkinRGB:
        case UISyntaxColour: CheckList(L'u', 3); break;
        case UISyntaxSkinARGB: CheckList(L'u', 4); break;
        case UISyntaxRect:
        case UISyntaxRectEx: CheckList(L'i', 4); break;
        case UISyntaxKeyword: CheckKeyword(); break;
        case UISyntaxAnchorLetters: CheckAnchorLetters(); break;
        case UISyntaxAnchorNumbers: CheckAnchorNumbers(); break;
        }
        return m_result;
    }

private:
    std::wstring Is() const { return Join({L"'", m_at.name, L"' is \"", m_at.value, L"\""}); }

    void Add(RuleId rule, const std::wstring& message) { m_findings.Add(m_at, rule, message); }

    void CheckFaceName()
    {
        // The name is copied with its terminator into LOGFONT's face name, or not at all.
        const size_t longest = LF_FACESIZE - 1;
        m_result.acceptable = m_at.value.size() <= longest;
        if (!m_result.acceptable)
            Add(RuleFaceNameTooLong, Is() + L", " + Number(m_at.value.size()) + L" characters, more than the " +
                                         Number(longest) + L" a log font holds; the reader ignores it");
    }

    void CheckFlag()
    {
        m_result.acceptable = true;
        if (m_at.value != L"0" && m_at.value != L"1")
            Add(RuleFlagValue, Is() + L", which the reader takes as false: only \"1\" is true");
    }

    // After the fields were converted: text after them.
    void CheckTrailing(const Scan& scan)
    {
        const std::wstring rest = m_at.value.substr(scan.consumed);
        if (!IsBlank(rest))
            Add(RuleTrailingText, Is() + L": the reader reads " + TrimmedLeft(m_at.value.substr(0, scan.consumed)) +
                                      L" and ignores " + Quoted(rest));
    }

    void CheckScalar(wchar_t conversion, long long lowest, long long highest)
    {
        const Scan scan = ScanFields(m_at.value, conversion, 1);
        if (scan.count != 1) {
            if ((m_attribute.flags & UIAttributeUnacceptableEndsTable) == 0)
                Add(RuleBadNumber, Is() + L", not a number; the reader takes 0");
            return;
        }
        const WrittenNumber written = ReadWrittenNumber(m_at.value.substr(0, scan.consumed), conversion);
        const long long value = conversion == L'u' ? static_cast<long long>(scan.values[0])
                                                   : static_cast<long long>(static_cast<int>(scan.values[0]));
        if (m_wantKey)
            m_result.key = Number(value);
        if (value < lowest || value > highest) {
            Add(RuleNumberRange, Is() + L", out of range " + Number(lowest) + L".." + Number(highest) +
                                     L"; the reader takes 0");
            return;
        }
        m_result.acceptable = true;
        if (OutOfRange(written, conversion))
            Add(RuleNumberRange, Is() + L": the reader reads it as " + Number(value));
        else if (lowest == -128 && value == 128)
            Add(RuleNumberRange, Is() + L", which the reader stores as -128");
        CheckTrailing(scan);
    }

    void CheckList(wchar_t conversion, int fields)
    {
        const Scan scan = ScanFields(m_at.value, conversion, fields);
        if (scan.count != fields) {
            Add(RuleBadNumber, Is() + L", not " + MNUIFormat::GetSyntaxText(m_attribute.syntax) +
                                   L" (numbers separated by single commas); the reader ignores it");
            return;
        }
        // Commas end the fields: the scan reads no comma into a number.
        std::vector<std::wstring> texts;
        const std::wstring read = m_at.value.substr(0, scan.consumed);
        for (size_t start = 0;;) {
            const size_t comma = read.find(L',', start);
            texts.push_back(read.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start));
            if (comma == std::wstring::npos)
                break;
            start = comma + 1;
        }
        for (int i = 0; i < fields; ++i) {
            const WrittenNumber written = ReadWrittenNumber(texts[i], conversion);
            if (conversion == L'u' && scan.values[i] > 255) {
                Add(RuleNumberRange, Is() + L": " + written.text + L" is out of range 0..255, so the reader "
                                         L"ignores the whole value");
                return;
            }
            if (OutOfRange(written, conversion))
                Add(RuleNumberRange, Is() + L": the reader reads " + written.text + L" as " +
                                         AsRead(scan.values[i], conversion));
            else if (written.octal)
                Add(RuleOctalNumber, Is() + L": the reader reads " + written.text + L" as octal, " +
                                         AsRead(scan.values[i], conversion));
        }
        m_result.acceptable = true;
        CheckTrailing(scan);
        if (conversion == L'i') {
            int* rect = m_result.rect;
            for (int i = 0; i < 4; ++i)
                rect[i] = static_cast<int>(scan.values[i]);
            if (m_attribute.syntax == UISyntaxRectEx) {
                // Sums wrap as in the reader.
                rect[2] = static_cast<int>(scan.values[0] + scan.values[2]);
                rect[3] = static_cast<int>(scan.values[1] + scan.values[3]);
            }
        }
    }

    void CheckKeyword()
    {
        const MDUIKeywordTable& table = *m_attribute.keywords;
        if (const MDUIKeyword* keyword = MNUIFormat::FindKeyword(table, m_at.value.c_str())) {
            m_result.acceptable = true;
            if (m_wantKey)
                m_result.key = Number(keyword->value);
            return;
        }
        if (table.acceptsNumber && ScanFields(m_at.value, L'u', 1).count == 1) {
            CheckScalar(L'u', 0, UINT_MAX);
            return;
        }
        std::vector<const wchar_t*> keywords;
        for (int i = 0; i < table.count; ++i)
            keywords.push_back(table.keywords[i].text);
        Add(RuleUnknownKeyword, Is() + (table.acceptsNumber ? L", neither a keyword nor a number" : L", none of its keywords") +
                                    L"; the reader leaves it at " + Quoted(m_attribute.defaultValue) +
                                    DidYouMean(m_at.value, keywords, true));
    }

    // Two letters (horizontal, vertical) or four (left, top, right, bottom),
    // blanks around them and upper case allowed: r and c (horizontal), b and c
    // (vertical) move off the near edge; every other letter is the near edge.
    void CheckAnchorLetters()
    {
        CString text(m_at.value.c_str());
        text.Trim();
        text.MakeLower();
        const std::wstring letters(static_cast<const wchar_t*>(text));
        const wchar_t* const none = L"; the reader sets no anchors (0,0,0,0)";
        if (letters.size() != 2 && letters.size() != 4) {
            Add(RuleInvalidAnchors, Is() + L", not two letters (horizontal, vertical) or four (left, top, right, "
                                         L"bottom)" + none);
            return;
        }
        for (size_t i = 0; i < letters.size(); ++i) {
            const bool horizontal = i % 2 == 0;
            const std::wstring known = horizontal ? L"lcr" : L"tcb";
            if (known.find(letters[i]) == std::wstring::npos) {
                Add(RuleInvalidAnchors, Is() + L": " + std::wstring(1, letters[i]) + L" is not " +
                                            (horizontal ? L"l, c or r" : L"t, c or b") + L", so the reader takes it as " +
                                            known[0]);
                m_result.acceptable = true;
                return;
            }
        }
        auto rank = [](wchar_t letter) { return letter == L'c' ? 1 : (letter == L'r' || letter == L'b') ? 2 : 0; };
        if (letters.size() == 4 && rank(letters[0]) > rank(letters[2])) {
            Add(RuleInvalidAnchors, Is() + L": the left anchor " + letters[0] + L" lies right of the right anchor " +
                                        letters[2] + none);
            return;
        }
        if (letters.size() == 4 && rank(letters[1]) > rank(letters[3])) {
            Add(RuleInvalidAnchors, Is() + L": the top anchor " + letters[1] + L" lies below the bottom anchor " +
                                        letters[3] + none);
            return;
        }
        m_result.acceptable = true;
    }

    // Four numbers 0..100 split at blanks and commas, each read as a decimal
    // long up to its first other character.
    void CheckAnchorNumbers()
    {
        const wchar_t* const none = L"; the reader sets no anchors (0,0,0,0)";
        std::vector<std::wstring> tokens;
        size_t afterFourth = std::wstring::npos;
        for (size_t i = 0; i < m_at.value.size();) {
            const size_t start = m_at.value.find_first_not_of(L" ,", i);
            if (start == std::wstring::npos)
                break;
            if (tokens.size() == 4) {
                afterFourth = start;
                break;
            }
            const size_t end = std::min(m_at.value.find_first_of(L" ,", start), m_at.value.size());
            tokens.push_back(m_at.value.substr(start, end - start));
            i = end;
        }
        if (tokens.size() < 4) {
            Add(RuleInvalidAnchors, Is() + L", not four numbers" + none);
            return;
        }
        long values[4];
        for (int i = 0; i < 4; ++i) {
            wchar_t* end = nullptr;
            values[i] = wcstol(tokens[i].c_str(), &end, 10);
            if (end == tokens[i].c_str())
                Add(RuleBadNumber, Named(m_at.name.c_str()) + L" has " + Quoted(tokens[i]) +
                                       L", not a number; the reader takes 0 for it");
            else if (*end != L'\0')
                Add(RuleTrailingText, Named(m_at.name.c_str()) + L" has " + Quoted(tokens[i]) +
                                          L": the reader reads " + Number(values[i]) + L" and ignores " + Quoted(end));
        }
        if (afterFourth != std::wstring::npos)
            Add(RuleTrailingText, Is() + L": the reader reads four numbers and ignores " +
                                      Quoted(m_at.value.substr(afterFourth)));
        if (IsValidAnchorsRect(CRect(values[0], values[1], values[2], values[3]))) {
            m_result.acceptable = true;
            return;
        }
        const wchar_t* const names[] = {L"left", L"top", L"right", L"bottom"};
        for (int i = 0; i < 4; ++i) {
            if (values[i] < 0 || values[i] > 100) {
                Add(RuleInvalidAnchors, Is() + L": " + names[i] + L" " + Number(values[i]) +
                                            L" is out of range 0..100" + none);
                return;
            }
        }
        const int first = values[0] > values[2] ? 0 : 1;
        Add(RuleInvalidAnchors, Is() + L": " + names[first] + L" " + Number(values[first]) + L" is greater than " +
                                    names[first + 2] + L" " + Number(values[first + 2]) + none);
    }

    const WrittenAttribute& m_at;
    const MDUIAttribute& m_attribute;
    FindingList& m_findings;
    const bool m_wantKey;
    ReadValue m_result;
};

}  // namespace

ReadValue CheckValue(const WrittenAttribute& attribute, FindingList& findings, bool wantKey)
{
    return ValueChecker(attribute, findings, wantKey).Check();
}

std::wstring KeyOf(const MDUIAttribute& attribute, const std::wstring& value)
{
    std::vector<Finding> ignored;
    FindingList sink(ignored);
    WrittenAttribute written;
    written.value = value;
    written.described = &attribute;
    return CheckValue(written, sink, true).key;
}

std::wstring Join(std::initializer_list<std::wstring_view> parts)
{
    size_t length = 0;
    for (std::wstring_view part : parts)
        length += part.size();
    std::wstring text;
    text.reserve(length);
    for (std::wstring_view part : parts)
        text.append(part);
    return text;
}

std::wstring Quoted(const std::wstring& text) { return Join({L"\"", text, L"\""}); }

std::wstring Named(const wchar_t* name) { return Join({L"'", name, L"'"}); }

}  // namespace uilint
