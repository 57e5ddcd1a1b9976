// The walk over a description: XmlLite reads it node by node with positions;
// each element is matched with the format description, its attributes are
// checked, and what spans elements (keys, schema names, identifiers, the
// window's rectangle) is gathered on the way and settled at the end.
#include "FormatIndex.h"
#include "LintChecks.h"
#include "XmlLite.h"
#include <shlwapi.h>
#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>

namespace uilint {
namespace {

const wchar_t kXmlnsNamespace[] = L"http://www.w3.org/2000/xmlns/";
const wchar_t kSchemaInstanceNamespace[] = L"http://www.w3.org/2001/XMLSchema-instance";

std::wstring Text(const wchar_t* text, UINT length) { return std::wstring(text != nullptr ? text : L"", length); }

std::wstring LineText(unsigned line) { return L"line " + std::to_wstring(line); }

bool IsNumber(MEUIValueSyntax syntax)
{
    return syntax == UISyntaxUnsigned || syntax == UISyntaxByte || syntax == UISyntaxSignedByte ||
           syntax == UISyntaxSigned;
}

std::wstring RectText(const int (&rect)[4])
{
    return Join({std::to_wstring(rect[0]), L",", std::to_wstring(rect[1]), L",", std::to_wstring(rect[2]), L",",
                 std::to_wstring(rect[3])});
}

// The words for a name the format does not have at its place.
struct UnknownWords {
    const wchar_t* kind;
    const wchar_t* at;
    const wchar_t* notHere;
    const wchar_t* belongs;
    const wchar_t* ignored;
};
const UnknownWords kElementWords = {L"element", L" in ", L" does not belong in ", L" (it belongs in ",
                                    L"; the reader ignores it and everything in it"};
const UnknownWords kAttributeWords = {L"attribute", L" on ", L" is not an attribute of ", L" (it belongs to ",
                                      L"; the reader ignores it"};

// A close known name is suggested; failing that, a name the format has
// elsewhere is told where it belongs.
std::wstring UnknownName(const UnknownWords& words, const std::wstring& name, const std::wstring& where,
                         const std::vector<const wchar_t*>& known, const MDUIElement* elsewhere)
{
    const std::wstring suggestion = DidYouMean(name, known, false);
    if (suggestion.empty() && elsewhere != nullptr)
        return Named(name.c_str()) + words.notHere + Named(where.c_str()) + words.belongs + Named(elsewhere->name) +
               L")" + words.ignored;
    return L"unknown " + std::wstring(words.kind) + L" " + Named(name.c_str()) + words.at + Named(where.c_str()) +
           words.ignored + suggestion;
}

// Where an element's key is kept: one table per kind of element and parent, per
// element the reader reads tables within (a free-data section), and per value
// of a scope attribute (a control schema's type).
typedef std::tuple<const MDUIElement*, const MDUIElement*, long, std::wstring> TableId;

struct KeyTable {
    std::unordered_map<std::wstring, unsigned> firstLine;
    bool ended = false;
};

struct Reference {
    WrittenAttribute at;
    TableId target;
    std::wstring elementName;
    std::wstring scope;  // " for 'type' button", or empty
};

// A node the walk has entered and not yet left.
struct OpenElement {
    const MDUIElement* described = nullptr;  // null: the reader does not read it
    std::wstring name;
    unsigned line = 0;
    unsigned column = 0;
    long serial = 0;
    long keyScope = 0;              // serial of the nearest element the reader reads tables within
    bool attributesRead = true;     // false for a second element whose repeating children alone are read
    std::wstring childrenSkippedBy; // the attribute that says the children are not read
    bool placed = false;
    int rect[4] = {};
    std::vector<std::pair<const MDUIElement*, unsigned>> childKinds;  // first line of each kind of child
    std::unordered_map<std::wstring, unsigned> identifiers;         // of the children: name, value -> line
};

class DocumentWalk {
public:
    explicit DocumentWalk(std::vector<Finding>& findings) : m_findings(findings), m_index(FormatIndex::Get()) {}

    HRESULT Run(IXmlReader& reader)
    {
        XmlNodeType type;
        HRESULT hr;
        while ((hr = reader.Read(&type)) == S_OK) {
            if (type == XmlNodeType_Element)
                hr = StartElement(reader);
            else if (type == XmlNodeType_EndElement)
                m_open.pop_back();
            else if (type == XmlNodeType_Text || type == XmlNodeType_CDATA)
                TextNode(reader);
            if (FAILED(hr))
                return hr;
        }
        if (SUCCEEDED(hr))
            ResolveReferences();
        return hr;
    }

private:
    HRESULT StartElement(IXmlReader& reader)
    {
        OpenElement open;
        const wchar_t* text = nullptr;
        UINT length = 0;
        reader.GetQualifiedName(&text, &length);
        open.name = Text(text, length);
        reader.GetNamespaceUri(&text, &length);
        const std::wstring space = Text(text, length);
        reader.GetPrefix(&text, &length);
        const bool plain = space.empty() && length == 0;
        UINT line = 0, column = 0;
        reader.GetLineNumber(&line);
        reader.GetLinePosition(&column);
        open.line = line;
        open.column = column;
        open.serial = ++m_serial;
        const bool empty = reader.IsEmptyElement() != FALSE;

        open.described = Match(open, plain, space);
        if (open.described != nullptr) {
            HRESULT hr = ReadAttributes(reader);
            if (FAILED(hr))
                return hr;
            CheckElement(open);
        }
        m_open.push_back(std::move(open));
        if (empty)
            m_open.pop_back();
        return S_OK;
    }

    // The described element that an element stands for, or null when the reader does not read it.
    const MDUIElement* Match(OpenElement& open, bool plain, const std::wstring& space)
    {
        const MDUIElement& root = MNUIFormat::GetRoot();
        if (m_open.empty()) {
            if (plain && open.name == root.name)
                return &root;
            m_findings.Add(open.line, open.column, RuleRootElement,
                           L"the document element is " + Named(open.name.c_str()) +
                               (space.empty() ? L"" : L" in the namespace " + Quoted(space)) +
                               L", not 'root' without a namespace; the reader finds nothing in this file");
            return nullptr;
        }
        OpenElement& parent = m_open.back();
        open.keyScope = parent.described != nullptr && !m_index.Info(*parent.described).isGroup ? parent.serial
                                                                                                 : parent.keyScope;
        if (parent.described == nullptr)
            return nullptr;
        if (!parent.childrenSkippedBy.empty()) {
            m_findings.Add(open.line, open.column, RuleIgnoredChildren,
                           Named(open.name.c_str()) + L" is not read: its " + Named(parent.name.c_str()) + L" has " +
                               parent.childrenSkippedBy + L"=\"1\"; the reader ignores it and everything in it");
            return nullptr;
        }
        const MDUIElement* element = plain ? MNUIFormat::FindChild(*parent.described, open.name.c_str()) : nullptr;
        if (element == nullptr) {
            UnknownElement(open, parent);
            return nullptr;
        }
        if (!parent.attributesRead && !element->repeats)
            return nullptr;  // part of an element whose repeating children alone are read
        const ElementInfo& info = m_index.Info(*element);
        auto seen = std::find_if(parent.childKinds.begin(), parent.childKinds.end(),
                                 [element](const std::pair<const MDUIElement*, unsigned>& kind) { return kind.first == element; });
        if (seen == parent.childKinds.end()) {
            parent.childKinds.emplace_back(element, open.line);
            return element;
        }
        if (element->repeats || info.isGroup)
            return element;
        std::wstring message = L"a second " + Named(element->name) + L" in " + Named(parent.name.c_str()) +
                               L" (the first is at " + LineText(seen->second) + L"): the reader reads only the first";
        if (!info.hasRepeatingChildren) {
            m_findings.Add(open.line, open.column, RuleRepeatedElement, message + L" and ignores this one");
            return nullptr;
        }
        message += L"; of this one it reads only the";
        for (int i = 0; i < element->childCount; ++i) {
            if (element->children[i]->repeats)
                message += L" " + Named(element->children[i]->name);
        }
        m_findings.Add(open.line, open.column, RuleRepeatedElement, message + L" elements");
        open.attributesRead = false;
        return element;
    }

    void UnknownElement(const OpenElement& open, const OpenElement& parent)
    {
        m_findings.Add(open.line, open.column, RuleUnknownElement,
                       UnknownName(kElementWords, open.name, parent.name, m_index.Info(*parent.described).childNames,
                                   m_index.ParentOf(open.name.c_str())));
    }

    HRESULT ReadAttributes(IXmlReader& reader)
    {
        m_attributeCount = 0;
        for (HRESULT hr = reader.MoveToFirstAttribute(); hr == S_OK; hr = reader.MoveToNextAttribute()) {
            const wchar_t* text = nullptr;
            UINT length = 0;
            reader.GetNamespaceUri(&text, &length);
            if ((length > 0 && (wcsncmp(text, kXmlnsNamespace, length) == 0 ||
                                wcsncmp(text, kSchemaInstanceNamespace, length) == 0)) ||
                reader.IsDefault())
                continue;  // namespace declarations and schema hints are for other tools
            if (m_attributeCount == m_attributes.size())
                m_attributes.emplace_back();
            WrittenAttribute& attribute = m_attributes[m_attributeCount++];
            reader.GetQualifiedName(&text, &length);
            attribute.name.assign(text, length);
            reader.GetValue(&text, &length);
            attribute.value.assign(text, length);
            reader.GetLineNumber(&attribute.line);
            reader.GetLinePosition(&attribute.column);
            attribute.described = nullptr;
        }
        return reader.MoveToElement();
    }

    void CheckElement(OpenElement& open)
    {
        const ElementInfo& info = m_index.Info(*open.described);
        const size_t count = info.attributes.size();
        m_present.assign(count, nullptr);
        for (size_t k = 0; k < m_attributeCount; ++k) {
            WrittenAttribute& attribute = m_attributes[k];
            auto found = info.indexOf.find(attribute.name);
            if (found == info.indexOf.end()) {
                UnknownAttribute(attribute, open, info);
                continue;
            }
            attribute.described = info.attributes[found->second];
            m_present[found->second] = &attribute;
        }
        if (!open.attributesRead)
            return;

        const WrittenAttribute* skinPath = nullptr;
        for (size_t j = 0; j < count; ++j) {
            if ((info.attributes[j]->flags & UIAttributeSkinPath) != 0 && m_present[j] != nullptr &&
                !m_present[j]->value.empty())
                skinPath = m_present[j];
        }

        m_values.assign(count, ReadValue());
        m_read.assign(count, false);
        for (size_t j = 0; j < count; ++j) {
            const WrittenAttribute* attribute = m_present[j];
            if (attribute == nullptr)
                continue;
            const DWORD flags = info.attributes[j]->flags;
            const wchar_t* name = info.attributes[j]->name;
            if ((flags & UIAttributeIgnoredUnderSkinPath) != 0 && skinPath != nullptr) {
                m_findings.Add(*attribute, RuleIgnoredUnderSkinPath,
                               Join({L"'", name, L"' is not read because '", skinPath->name,
                                     L"' is set; the reader leaves it at ", info.attributes[j]->defaultValue}));
                continue;
            }
            if ((flags & UIAttributeOnlyWithoutPrevious) != 0 && j > 0 && m_read[j - 1]) {
                const wchar_t* previous = info.attributes[j - 1]->name;
                m_findings.Add(*attribute, RuleConflictingAttributes,
                               Join({L"'", name, L"' is not read because '", previous, L"' is given; the reader takes '",
                                     previous, L"'"}));
                continue;
            }
            m_values[j] = CheckValue(*attribute, m_findings,
                                     (flags & (UIAttributeKey | UIAttributeIdentifier | UIAttributeKeyScope)) != 0);
            m_read[j] = true;
            if ((flags & UIAttributeReplacesPrevious) != 0 && j > 0 && m_read[j - 1] && m_values[j - 1].acceptable &&
                m_values[j].acceptable)
                m_findings.Add(*m_present[j - 1], RuleConflictingAttributes,
                               Join({L"both '", info.attributes[j - 1]->name, L"' and '", name,
                                     L"' are given: the reader takes '", name, L"' and ignores '",
                                     info.attributes[j - 1]->name, L"'"}));
        }

        OpenElement* parent = m_open.empty() ? nullptr : &m_open.back();
        CheckEntry(open, info, parent);
        for (size_t j = 0; j < count; ++j) {
            const MDUIAttribute& attribute = *info.attributes[j];
            if ((attribute.flags & UIAttributeReference) != 0 && m_read[j] && !m_present[j]->value.empty())
                AddReference(open, info, *m_present[j]);
            // Identifiers tell apart the controls of one window, not the entries of a table.
            if ((attribute.flags & UIAttributeIdentifier) != 0 && m_read[j] && m_values[j].acceptable &&
                parent != nullptr && !m_index.Info(*parent->described).isGroup)
                CheckIdentifier(open, *parent, *m_present[j], m_values[j].key);
            if ((attribute.flags & UIAttributeSkipsChildren) != 0 && m_present[j] != nullptr &&
                m_present[j]->value == L"1")
                open.childrenSkippedBy = attribute.name;
        }
        if (info.placed)
            CheckPlace(open, info, parent, skinPath != nullptr);
    }

    void UnknownAttribute(const WrittenAttribute& attribute, const OpenElement& open, const ElementInfo& info)
    {
        m_findings.Add(attribute, RuleUnknownAttribute,
                       UnknownName(kAttributeWords, attribute.name, open.name, info.attributeNames,
                                   m_index.OwnerOf(attribute.name.c_str())));
    }

    // The value of the element's scope attribute as the reader resolves it, and
    // the words that name it in a message.
    std::wstring ScopeOf(const ElementInfo& info, std::wstring* words)
    {
        for (size_t j = 0; j < info.attributes.size(); ++j) {
            const MDUIAttribute& attribute = *info.attributes[j];
            if ((attribute.flags & UIAttributeKeyScope) == 0)
                continue;
            const bool given = m_read[j] && m_values[j].acceptable;
            if (words != nullptr)
                *words = L" for " + Named(attribute.name) + L" " + (given ? m_present[j]->value : attribute.defaultValue);
            return given ? m_values[j].key : KeyOf(attribute, attribute.defaultValue);
        }
        return std::wstring();
    }

    // Entries the reader skips, tables it stops reading, and keys it has seen.
    void CheckEntry(const OpenElement& open, const ElementInfo& info, const OpenElement* parent)
    {
        if (parent == nullptr || (info.flags & (UIAttributeKey | UIAttributeRequired | UIAttributeUnacceptableEndsTable)) == 0)
            return;
        std::wstring scopeWords;
        const TableId table(parent->described, open.described, open.keyScope, ScopeOf(info, &scopeWords));
        for (size_t j = 0; j < info.attributes.size(); ++j) {
            const MDUIAttribute& attribute = *info.attributes[j];
            if ((attribute.flags & UIAttributeRequired) != 0 && m_present[j] == nullptr) {
                m_findings.Add(open.line, open.column, RuleMissingAttribute,
                               Named(open.name.c_str()) + L" without " + Named(attribute.name) +
                                   L": the reader skips it");
                return;
            }
            if ((attribute.flags & UIAttributeUnacceptableEndsTable) != 0 && m_read[j] && !m_values[j].acceptable) {
                KeyTable& keys = m_tables[table];
                if (!keys.ended)
                    m_findings.Add(*m_present[j], RuleTableEnds,
                                   Named(attribute.name) + L" is " + Quoted(m_present[j]->value) +
                                       (IsNumber(attribute.syntax) ? L", not a number" : L", not acceptable") +
                                       L": the reader stops reading the " + Named(open.name.c_str()) +
                                       L" elements of " + Named(parent->name.c_str()) +
                                       L" here, and this one and all after it are lost");
                keys.ended = true;
                return;
            }
        }
        for (size_t j = 0; j < info.attributes.size(); ++j) {
            const MDUIAttribute& attribute = *info.attributes[j];
            if ((attribute.flags & UIAttributeKey) == 0)
                continue;
            KeyTable& keys = m_tables[table];
            if (keys.ended)
                return;
            const WrittenAttribute* at = m_present[j];
            const std::wstring key = at != nullptr && m_read[j] ? m_values[j].key : std::wstring();
            auto inserted = keys.firstLine.emplace(key, open.line);
            if (inserted.second)
                continue;
            const std::wstring first = Named(open.name.c_str()) + L" at " + LineText(inserted.first->second);
            if (at != nullptr)
                m_findings.Add(*at, RuleDuplicateKey,
                               Named(attribute.name) + L" " + Quoted(at->value) + scopeWords +
                                   L" is already the key of the " + first +
                                   L"; the reader keeps that one and drops this one");
            else
                m_findings.Add(open.line, open.column, RuleDuplicateKey,
                               L"a second " + Named(open.name.c_str()) + L" without " + Named(attribute.name) +
                                   scopeWords + L" (the first is the " + first +
                                   L"); the reader keeps the first under the empty name and drops this one");
        }
    }

    void AddReference(const OpenElement& open, const ElementInfo& info, const WrittenAttribute& at)
    {
        KeyedTable table;
        if (!m_index.ReferencedTable(open.described->name, at.name.c_str(), table))
            return;
        Reference reference;
        reference.at = at;
        reference.elementName = open.name;
        reference.target = TableId(table.parent, table.element, 0, ScopeOf(info, &reference.scope));
        m_references.push_back(std::move(reference));
    }

    void ResolveReferences()
    {
        for (const Reference& reference : m_references) {
            auto table = m_tables.find(reference.target);
            if (table != m_tables.end() && table->second.firstLine.count(reference.at.value) != 0)
                continue;
            std::vector<const wchar_t*> names;
            if (table != m_tables.end()) {
                for (const auto& key : table->second.firstLine)
                    names.push_back(key.first.c_str());
                std::sort(names.begin(), names.end(), [](const wchar_t* a, const wchar_t* b) { return wcscmp(a, b) < 0; });
            }
            const MDUIElement& parent = *std::get<0>(reference.target);
            const MDUIElement& element = *std::get<1>(reference.target);
            m_findings.Add(reference.at, RuleUnknownSchema,
                           Named(reference.at.name.c_str()) + L" names " + Quoted(reference.at.value) +
                               L", which no " + Named(element.name) + L" in " + Named(parent.name) + L" has" +
                               reference.scope + L"; the reader keeps the name, and the program finds no schema under it" +
                               DidYouMean(reference.at.value, names, true));
        }
    }

    void CheckIdentifier(const OpenElement& open, OpenElement& parent, const WrittenAttribute& at, const std::wstring& key)
    {
        // The default value means "no identifier", and many controls go without one.
        if (key == KeyOf(*at.described, at.described->defaultValue))
            return;
        auto inserted = parent.identifiers.emplace(at.name + L'\n' + key, open.line);
        if (!inserted.second)
            m_findings.Add(at, RuleDuplicateIdentifier,
                           Named(at.name.c_str()) + L" " + Quoted(at.value) + L" is already used by the " +
                               Named(open.name.c_str()) + L" at " + LineText(inserted.first->second) + L" of this " +
                               Named(parent.name.c_str()) +
                               L"; the reader keeps both, and the identifier does not tell them apart");
    }

    // The rectangle as the reader ends up with it, and whether it fits the parent's.
    void CheckPlace(OpenElement& open, const ElementInfo& info, const OpenElement* parent, bool placedBySkin)
    {
        const WrittenAttribute* from = nullptr;
        for (size_t j = 0; j < info.attributes.size(); ++j) {
            const MEUIValueSyntax syntax = info.attributes[j]->syntax;
            if ((syntax == UISyntaxRect || syntax == UISyntaxRectEx) && m_read[j] && m_values[j].acceptable) {
                std::copy(m_values[j].rect, m_values[j].rect + 4, open.rect);
                open.placed = true;
                from = m_present[j];
            }
        }
        if (from == nullptr || placedBySkin || parent == nullptr || !parent->placed)
            return;
        const int width = parent->rect[2] - parent->rect[0], height = parent->rect[3] - parent->rect[1];
        if (width <= 0 || height <= 0)
            return;
        const int* r = open.rect;
        if (r[0] >= 0 && r[1] >= 0 && r[2] <= width && r[3] <= height)
            return;
        m_findings.Add(*from, RuleOutsideWindow,
                       Join({L"the '", open.name, L"' at ", RectText(open.rect),
                             L" (left,top,right,bottom) reaches outside its '", parent->name, L"', which is ",
                             std::to_wstring(width), L" x ", std::to_wstring(height),
                             L"; the reader keeps the rectangle as written, and the part outside is cut off"}));
    }

    void TextNode(IXmlReader& reader)
    {
        if (m_open.empty() || m_open.back().described == nullptr)
            return;
        UINT line = 0, column = 0;
        reader.GetLineNumber(&line);
        reader.GetLinePosition(&column);
        m_findings.Add(line, column, RuleIgnoredText,
                       L"text in " + Named(m_open.back().name.c_str()) +
                           L" is not read; the reader reads only elements and attributes");
    }

    FindingList m_findings;
    const FormatIndex& m_index;
    std::vector<OpenElement> m_open;
    long m_serial = 0;
    // The attributes of the element being checked; kept to reuse their buffers.
    std::vector<WrittenAttribute> m_attributes;
    size_t m_attributeCount = 0;
    std::vector<const WrittenAttribute*> m_present;
    std::vector<ReadValue> m_values;
    std::vector<bool> m_read;
    std::map<TableId, KeyTable> m_tables;
    std::vector<Reference> m_references;
};

Report Unreadable(const wchar_t* name, HRESULT hr)
{
    Report report;
    report.file = name;
    report.readable = false;
    report.failure = static_cast<const wchar_t*>(tesvorutil::SystemText(hr));
    return report;
}

Report LintStream(const wchar_t* name, IStream* stream)
{
    IXmlReaderPtr reader;
    HRESULT hr = tesvorutil::CreateXmlLiteReader(stream, reader);
    if (FAILED(hr))
        return Unreadable(name, hr);
    Report report;
    report.file = name;
    hr = DocumentWalk(report.findings).Run(*reader);
    if (FAILED(hr)) {
        // Nothing else counts: the reader loads nothing from a file that is not well-formed.
        UINT line = 0, column = 0;
        reader->GetLineNumber(&line);
        reader->GetLinePosition(&column);
        report.findings.assign(1, Finding{line, column, RuleMalformedXml,
                                          static_cast<const wchar_t*>(tesvorutil::XmlFaultText(hr)) +
                                              std::wstring(L"; the reader loads nothing from this file")});
    }
    std::stable_sort(report.findings.begin(), report.findings.end(), [](const Finding& a, const Finding& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
    return report;
}

}  // namespace

Report LintFile(const wchar_t* path)
{
    IStreamPtr stream;
    const HRESULT hr = tesvorutil::OpenFileStream(path, stream);
    return FAILED(hr) ? Unreadable(path, hr) : LintStream(path, stream);
}

Report LintText(const wchar_t* name, const wchar_t* xml)
{
    // As UTF-8, so that a declaration of that encoding holds.
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, xml, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(size > 0 ? size : 1, '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, xml, -1, &bytes[0], size, nullptr, nullptr);
    IStreamPtr stream;
    stream.Attach(::SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size() - 1)));
    return stream ? LintStream(name, stream) : Unreadable(name, E_OUTOFMEMORY);
}

}  // namespace uilint
