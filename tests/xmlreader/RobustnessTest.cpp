// Randomized input: whatever the text or the document, every reader operation
// gives a result and nothing crashes.
#include "ReaderTestAccess.h"
#include <random>

namespace {

const unsigned kSeed = 20261123;

size_t Below(std::mt19937& random, size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(random); }

// Pieces that the number and keyword readers treat specially, escaped for an attribute.
std::wstring RandomText(std::mt19937& random)
{
    static const wchar_t* const pieces[] = {
        L",", L" ", L"-", L"+", L"0x", L"0", L"px", L"&#9;", L"1", L"255", L"256", L"128", L"-129",
        L"bold", L"cleartype", L"imagebutton", L"no", L"c", L"\u00e9", L"\u4e2d\u6587", L"\U0001F600",
        L"%s", L"%n", L"&amp;", L"&lt;", L"&quot;", L"4294967296", L"99999999999999999999999999999999999999"};
    std::wstring text;
    for (size_t i = Below(random, 8); i > 0; --i)
        text += Below(random, 4) == 0 ? std::to_wstring(static_cast<long long>(random()) - 0x7FFFFFFFLL)
                                      : pieces[Below(random, sizeof(pieces) / sizeof(pieces[0]))];
    return text;
}

bool IsResult(HRESULT hr) { return hr == S_OK || hr == S_FALSE; }

}  // namespace

TEST(ReaderRobustness, RandomAttributeTexts)
{
    std::mt19937 random(kSeed);
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><e/></root>");
    IXMLDOMNodePtr node;
    ASSERT_EQ(S_OK, document->selectSingleNode(_bstr_t(L"root/e"), &node));
    IXMLDOMElementPtr element = node;
    MCXMLReader r;
    ASSERT_EQ(S_OK, r.SetIXMLDOMDocument(document));
    for (int i = 0; i < 3000 && !HasFatalFailure(); ++i) {
        std::wstring text = RandomText(random);
        if (i % 1000 == 999)
            text = std::wstring(1 << 20, L"7,"[i % 2]) + text;  // a 1 MB value
        ASSERT_EQ(S_OK, element->setAttribute(_bstr_t(L"v"), _variant_t(text.c_str())));
        IXMLDOMNamedNodeMapPtr a;
        ASSERT_EQ(S_OK, Access::GetNamedNodeMap(r, node, a));
        for (int kind = 0; kind <= static_cast<int>(Kind::RectEx); ++kind)  // S_OK or S_FALSE, whatever the text
            ASSERT_EQ(0u, ReadAs(r, a, L"v", static_cast<Kind>(kind)).rfind("S_", 0)) << "a text of " << text.size();
        const _bstr_t v(text.c_str());
        long number;
        BYTE byte;  // the keyword resolvers share one lookup: the charset's stands for them all
        const HRESULT resolved[] = {Access::Weight(r, v, number), Access::Charset(r, v, byte)};
        for (HRESULT hr : resolved)
            ASSERT_TRUE(IsResult(hr)) << std::hex << hr << " for a text of " << std::dec << text.size() << " characters";
    }
}

TEST(ReaderRobustness, RandomDocuments)
{
    std::mt19937 random(kSeed + 1);
    for (int i = 0; i < 150; ++i) {
        std::wstring xml = L"<root><script file=\"" + RandomText(random) + L"\"/><str_table>";
        const size_t entries = i == 7 ? 5000 : Below(random, 20);
        for (size_t e = 0; e < entries; ++e)
            xml += L"<entry id=\"" + RandomText(random) + L"\" text=\"" + RandomText(random) + L"\"/>";
        xml += L"</str_table><str_table_id>";
        for (size_t e = 0; e < entries; ++e)
            xml += L"<entry id=\"" + RandomText(random) + L"\" text=\"x\"/>";
        xml += L"</str_table_id><freedata>";
        for (size_t s = Below(random, 6); s > 0; --s) {
            xml += L"<section name=\"s" + std::to_wstring(Below(random, 3)) + L"\">";
            for (size_t e = Below(random, 10); e > 0; --e)
                xml += L"<entry name=\"" + RandomText(random) + L"\" value=\"" + RandomText(random) + L"\"/>";
            xml += L"</section>";
        }
        if (i == 3)
            xml += L"<section name=\"s1\"><entry name=\"big\" value=\"" + std::wstring(1 << 20, L'\u00e9') + L"\"/></section>";
        xml += L"</freedata></root>";

        MCXMLReader reader;
        ASSERT_NO_FATAL_FAILURE(Attach(reader, xml.c_str()));
        MCXMLReader::StringTable table, section;
        MCXMLReader::StringTableByID numbers;
        OwningMap<MCXMLReader::FreedataSections> sections;
        MCUIScriptData script;
        IXMLDOMNodePtr node;
        EXPECT_TRUE(IsResult(reader.GetStringTableMap(table)));
        EXPECT_TRUE(IsResult(reader.GetStringTableMapByID(numbers)));
        EXPECT_TRUE(IsResult(reader.GetScriptData(script)));
        EXPECT_TRUE(IsResult(reader.GetFreedataTableMapBySectionName(L"s1", section)));
        EXPECT_TRUE(IsResult(reader.GetFreedataTableNodeBySectionName(L"s2", node)));
        EXPECT_TRUE(IsResult(reader.GetAllFreedataSectionTables(sections)));
    }
}
