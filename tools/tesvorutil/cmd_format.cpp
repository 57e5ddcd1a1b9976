// tesvorutil format [--json]: prints the description of the UI format that the
// reader reads: every element with its attributes in reading order, their
// syntax, default and meaning, and the keyword tables. Scripts check the schema
// and the format reference against the JSON form.
#include "Commands.h"
#include "Output.h"
#include "TreeWriter.h"
#include <MNUIFormat.h>
#include <cwchar>

namespace {

using tesvorutil::Writer;

void WriteAttributes(Writer& out, const MDUIElement& element)
{
    if (element.base != nullptr)
        WriteAttributes(out, *element.base);
    for (int i = 0; i < element.attributeCount; ++i) {
        const MDUIAttribute& attribute = element.attributes[i];
        out.Begin(nullptr, false);
        out.String(L"name", attribute.name);
        out.String(L"syntax", MNUIFormat::GetSyntaxName(attribute.syntax));
        if (attribute.keywords != nullptr)
            out.String(L"keywords", attribute.keywords->name);
        out.String(L"default", attribute.defaultValue);
        out.String(L"meaning", attribute.meaning);
        out.Begin(L"flags", true);
        for (DWORD flag = 1; flag != 0 && flag <= attribute.flags; flag <<= 1) {
            if ((attribute.flags & flag) != 0)
                out.String(nullptr, MNUIFormat::GetFlagName(static_cast<MEUIAttributeFlags>(flag)));
        }
        out.End(true);
        out.End(false);
    }
}

void WriteElement(Writer& out, const wchar_t* key, const MDUIElement& element)
{
    out.Begin(key, false);
    out.String(L"name", element.name);
    out.String(L"meaning", element.meaning);
    // The attributes below include the base's, which come first.
    if (element.base != nullptr && element.base->name[0] != L'\0')
        out.String(L"base", element.base->name);
    out.Bool(L"repeats", element.repeats);
    out.Begin(L"attributes", true);
    WriteAttributes(out, element);
    out.End(true);
    out.Begin(L"children", true);
    for (int i = 0; i < element.childCount; ++i)
        WriteElement(out, nullptr, *element.children[i]);
    out.End(true);
    out.End(false);
}

void WriteKeywordTables(Writer& out)
{
    out.Begin(L"keywordTables", false);
    for (int id = 0; id < UIKeywordTableCount; ++id) {
        const MDUIKeywordTable& table = MNUIFormat::GetKeywordTable(static_cast<MEUIKeywordTableID>(id));
        out.Begin(table.name, false);
        out.Bool(L"acceptsNumber", table.acceptsNumber);
        out.Begin(L"keywords", false);
        for (int i = 0; i < table.count; ++i)
            out.Number(table.keywords[i].text, table.keywords[i].value);
        out.End(false);
        out.End(false);
    }
    out.End(false);
}

int RunFormat(int argc, wchar_t** argv)
{
    bool json = false;
    for (int i = 0; i < argc; ++i) {
        if (wcscmp(argv[i], L"--json") != 0)
            return tesvorutil::UsageError(L"format");
        json = true;
    }
    tesvorutil::JsonWriter jsonWriter;
    tesvorutil::TextWriter textWriter;
    Writer& out = json ? static_cast<Writer&>(jsonWriter) : textWriter;
    out.Begin(nullptr, false);
    WriteElement(out, L"root", MNUIFormat::GetRoot());
    WriteKeywordTables(out);
    out.End(false);
    tesvorutil::WriteOut(out.Text().c_str());
    return tesvorutil::ExitOk;
}

}  // namespace

TESVOR_REGISTER_COMMAND(format, {L"format", L"[--json]",
                                 L"print the UI description format: elements, attributes, keywords",
                                 RunFormat})
