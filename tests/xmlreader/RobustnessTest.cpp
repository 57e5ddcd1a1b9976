// Randomized input: whatever the text or the document, every reader operation
// gives a result and nothing crashes.
#include "ReaderTestAccess.h"
#include <random>
#include <string>

typedef MCXMLReaderTestAccess Access;
typedef MCOrderedMap<CString, const wchar_t*, CString, CString&> TextTable;
typedef MCOrderedMap<CString, const wchar_t*, TextTable*, TextTable*&> SectionTables;

namespace {

const unsigned kSeed = 20261123;

class TextGenerator {
public:
    explicit TextGenerator(unsigned seed) : m_random(seed) {}

    size_t Below(size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(m_random); }

    std::wstring Text()
    {
        static const wchar_t* const pieces[] = {
            L",", L" ", L"-", L"+", L"0x", L"0", L"px", L"\t", L"1", L"255", L"256", L"128", L"-129",
            L"bold", L"cleartype", L"imagebutton", L"no", L"c", L"\u00e9", L"\u4e2d\u6587", L"\U0001F600",
            L"%s", L"%n", L"4294967296", L"99999999999999999999999999999999999999999999999999"};
        std::wstring text;
        size_t count = Below(8);
        for (size_t i = 0; i < count; ++i) {
            if (Below(4) == 0)
                text += std::to_wstring(static_cast<long long>(m_random()) - 0x7FFFFFFFLL);
            else
                text += pieces[Below(sizeof(pieces) / sizeof(pieces[0]))];
        }
        return text;
    }

private:
    std::mt19937 m_random;
};

std::wstring Escaped(const std::wstring& text)
{
    std::wstring out;
    for (wchar_t ch : text) {
        switch (ch) {
        case L'&': out += L"&amp;"; break;
        case L'<': out += L"&lt;"; break;
        case L'"': out += L"&quot;"; break;
        case L'\t': out += L"&#9;"; break;
        default: out += ch;
        }
    }
    return out;
}

bool IsResult(HRESULT hr) { return hr == S_OK || hr == S_FALSE; }

// Every typed reader and resolver on attribute "v" of `attributes`.
void ReadEverything(MCXMLReader& reader, const IXMLDOMNamedNodeMapPtr& attributes, const std::wstring& text)
{
    _bstr_t name(L"v"), value(text.c_str());
    _bstr_t bstr;
    CString string;
    bool flag = false;
    DWORD dword = 0;
    BYTE byte = 0;
    char character = 0;
    long number = 0;
    int integer = 0;
    MCSkinRGB rgb = {};
    MCSkinARGB argb = {};
    CRect rect;
    const HRESULT results[] = {
        Access::Read(reader, attributes, name, bstr),      Access::Read(reader, attributes, name, string),
        Access::Read(reader, attributes, name, flag),      Access::Read(reader, attributes, name, dword),
        Access::Read(reader, attributes, name, byte),      Access::Read(reader, attributes, name, character),
        Access::Read(reader, attributes, name, number),    Access::Read(reader, attributes, name, integer),
        Access::Read(reader, attributes, name, rgb),       Access::Read(reader, attributes, name, argb),
        Access::Read(reader, attributes, name, rect),      Access::ReadColor(reader, attributes, name, dword),
        Access::ReadRectEx(reader, attributes, name, rect), Access::Weight(reader, value, number),
        Access::Charset(reader, value, byte),              Access::Quality(reader, value, byte),
        Access::Family(reader, value, byte),
    };
    for (HRESULT hr : results)
        ASSERT_TRUE(IsResult(hr)) << std::hex << hr << " for a text of " << std::dec << text.size() << " characters";
    MEControlType type = MEControlTypeWindow;
    ASSERT_TRUE(IsResult(Access::Resolve(reader, value, type)));
}

void ReadAllTables(MCXMLReader& reader)
{
    TextTable table, section;
    MCMap<DWORD, DWORD, CString, CString&> numbers;
    SectionTables sections;
    MCUIScriptData script;
    IXMLDOMNodePtr node;
    EXPECT_TRUE(IsResult(reader.GetStringTableMap(table)));
    EXPECT_TRUE(IsResult(reader.GetStringTableMapByID(numbers)));
    EXPECT_TRUE(IsResult(reader.GetScriptData(script)));
    EXPECT_TRUE(IsResult(reader.GetFreedataTableMapBySectionName(L"s1", section)));
    EXPECT_TRUE(IsResult(reader.GetFreedataTableNodeBySectionName(L"s2", node)));
    EXPECT_TRUE(IsResult(reader.GetAllFreedataSectionTables(sections)));
    for (INT_PTR i = 0; i < sections.GetKeyCount(); ++i) {
        TextTable* owned = NULL;
        sections.Lookup(sections.GetKeyAt(i), owned);
        delete owned;
    }
}

}  // namespace

TEST(ReaderRobustness, RandomAttributeTexts)
{
    SCOPED_TRACE(::testing::Message() << "seed " << kSeed);
    TextGenerator generator(kSeed);
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><e/></root>");
    IXMLDOMNodePtr node;
    ASSERT_EQ(S_OK, document->selectSingleNode(_bstr_t(L"root/e"), &node));
    IXMLDOMElementPtr element = node;
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));

    for (int i = 0; i < 3000; ++i) {
        std::wstring text = generator.Text();
        if (i % 1000 == 999)
            text = std::wstring(1 << 20, L"7,"[i % 2]) + text;  // a 1 MB value
        ASSERT_EQ(S_OK, element->setAttribute(_bstr_t(L"v"), _variant_t(text.c_str())));
        IXMLDOMNamedNodeMapPtr attributes;
        ASSERT_EQ(S_OK, Access::GetNamedNodeMap(reader, node, attributes));
        ReadEverything(reader, attributes, text);
        if (HasFatalFailure())
            return;
    }
}

TEST(ReaderRobustness, RandomDocuments)
{
    SCOPED_TRACE(::testing::Message() << "seed " << kSeed);
    TextGenerator generator(kSeed + 1);
    int loaded = 0;
    for (int i = 0; i < 150; ++i) {
        std::wstring xml = L"<root>";
        size_t depth = i % 10 == 0 ? 300 : generator.Below(5);  // past the parser's depth limit at times
        for (size_t d = 0; d < depth; ++d)
            xml += L"<n>";
        for (size_t d = 0; d < depth; ++d)
            xml += L"</n>";
        xml += L"<script file=\"" + Escaped(generator.Text()) + L"\"/>";
        size_t entries = i == 7 ? 5000 : generator.Below(20);
        xml += L"<str_table>";
        for (size_t e = 0; e < entries; ++e)
            xml += L"<entry id=\"" + Escaped(generator.Text()) + L"\" text=\"" + Escaped(generator.Text()) + L"\"/>";
        xml += L"</str_table><str_table_id>";
        for (size_t e = 0; e < entries; ++e)
            xml += L"<entry id=\"" + Escaped(generator.Text()) + L"\" text=\"x\"/>";
        xml += L"</str_table_id><freedata>";
        for (size_t s = 0; s < generator.Below(6); ++s) {
            xml += L"<section name=\"s" + std::to_wstring(generator.Below(3)) + L"\">";
            for (size_t e = 0; e < generator.Below(10); ++e)
                xml += L"<entry name=\"" + Escaped(generator.Text()) + L"\" value=\"" + Escaped(generator.Text()) +
                       L"\"/>";
            xml += L"</section>";
        }
        if (i == 3)
            xml += L"<section name=\"s1\"><entry name=\"big\" value=\"" + std::wstring(1 << 20, L'\u00e9') +
                   L"\"/></section>";
        xml += L"</freedata></root>";

        IXMLDOMDocumentPtr document;
        ASSERT_EQ(S_OK, document.CreateInstance(L"Msxml2.DOMDocument", NULL, CLSCTX_INPROC_SERVER));
        VARIANT_BOOL ok = VARIANT_FALSE;
        if (document->loadXML(_bstr_t(xml.c_str()), &ok) != S_OK || ok != VARIANT_TRUE)
            continue;
        ++loaded;
        MCXMLReader reader;
        ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
        ReadAllTables(reader);
    }
    EXPECT_GT(loaded, 100);
}
