// Typed attribute readers and keyword resolvers. The keyword tables themselves are
// checked through the golden case keywords.xml (see golden_dumps.py).
#include "ReaderTestAccess.h"
#include <algorithm>
#include <functional>
#include <iterator>

// The cases are in tests/data/xmlreader/attributes.xml.
TEST(ReaderAttributes, NumberParsingTable)
{
    const wchar_t* const kinds[] = {L"bstr", L"text", L"bool", L"dword", L"byte", L"char",  L"long",
                                    L"int",  L"rgb",  L"argb", L"rect",  L"colour", L"rectex"};  // in Kind's order
    MCXMLReader reader;
    IXMLDOMNodeListPtr cases;
    ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\attributes.xml"), 0));
    ASSERT_EQ(S_OK, Access::FindNodesInDocument(reader, L"root/case", cases));
    long count = 0;
    ASSERT_EQ(S_OK, cases->get_length(&count));
    for (long i = 0; i < count; ++i) {
        IXMLDOMNodePtr node;
        IXMLDOMNamedNodeMapPtr attributes;
        _bstr_t kind, text, outcome;
        ASSERT_EQ(S_OK, cases->get_item(i, &node));
        ASSERT_EQ(S_OK, Access::GetNamedNodeMap(reader, node, attributes));
        Access::FindAttributeInNode(reader, L"kind", attributes, kind);
        Access::FindAttributeInNode(reader, L"text", attributes, text);
        Access::FindAttributeInNode(reader, L"outcome", attributes, outcome);
        const auto named = std::find_if(std::begin(kinds), std::end(kinds), [&](const wchar_t* k) { return Show(kind) == Show(k); });
        ASSERT_NE(std::end(kinds), named) << "no kind " << Show(kind);
        EXPECT_EQ(Show(outcome), ReadAs(reader, attributes, L"text", static_cast<Kind>(named - kinds)))
            << Show(kind) << " '" << Show(text) << "'";
    }
    EXPECT_TRUE(reader.m_strError.IsEmpty()) << "unacceptable text is no error";

    DWORD value = 5;
    EXPECT_EQ(E_POINTER, Access::Read(reader, IXMLDOMNamedNodeMapPtr(), L"a", value));
    EXPECT_EQ(0u, value) << "reset before the lookup";
}

// A keyword worth the record's default does not show in a dump, and neither does an
// output left alone: every resolver here resolves one keyword over another value, and
// leaves it for a text that is no keyword. (That upper case and trailing blanks match
// no keyword, and that a weight may be any number, shows in keywords.xml.)
TEST(ReaderKeywords, EveryResolverAnswersForItsKeywords)
{
    MCXMLReader r;
    typedef std::function<std::string(const _bstr_t&)> Resolver;
    auto with = [&r](auto resolve, auto sentinel) -> Resolver {
        return [&r, resolve, sentinel](const _bstr_t& text) {
            auto out = sentinel;
            const HRESULT hr = resolve(r, text, out);
            return Outcome(hr, static_cast<long long>(out));
        };
    };
    auto resolve = [](MCXMLReader& reader, const _bstr_t& text, auto& out) { return Access::Resolve(reader, text, out); };
    const struct Case {
        Resolver resolver;
        const wchar_t* keyword;
        const char* resolved;
        const char* other;  // for a text that is no keyword
    } cases[] = {
        {with(resolve, MEFontEffectGlow), L"no", "S_OK:0", "S_FALSE:3"},
        {with(resolve, MEFontFlagsCenter), L"tl", "S_OK:0", "S_FALSE:5"},
        {with(Access::Weight, 1L), L"dontcare", "S_OK:0", "S_FALSE:1"},
        {with(Access::Charset, BYTE(7)), L"ansi", "S_OK:0", "S_FALSE:7"},
        {with(Access::Precision, BYTE(7)), L"default", "S_OK:0", "S_FALSE:7"},
        {with(Access::Quality, BYTE(7)), L"default", "S_OK:0", "S_FALSE:7"},
        {with(Access::Pitch, BYTE(7)), L"default", "S_OK:0", "S_FALSE:7"},
        {with(Access::Family, BYTE(7)), L"dontcare", "S_OK:0", "S_FALSE:7"},
        {with(resolve, MEControlTypeEdit), L"window", "S_OK:1", "S_FALSE:4"},
        {with(resolve, MEControlStateFocus), L"normal", "S_OK:1", "S_FALSE:2"},
        {with(resolve, MEWindowMoveY), L"x", "S_OK:1", "S_FALSE:2"},
        {with(resolve, MEControlResizeHeight), L"w", "S_OK:1", "S_FALSE:2"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.resolved, c.resolver(c.keyword)) << Show(c.keyword);
        EXPECT_EQ(c.other, c.resolver(L"")) << Show(c.keyword);
    }
}

TEST(ReaderTypes, OrderedMapKeepsFirstInsertionOrder)
{
    MCOrderedMap<CString, const wchar_t*, CString, CString&> map;
    CString one(L"1"), two(L"2"), three(L"3"), value;
    map.SetAt(L"b", one);
    map.SetAt(L"a", two);
    map.SetAt(L"b", three);
    map[L"c"] = one;
    ASSERT_EQ(3, map.GetKeyCount());
    EXPECT_EQ(CString(L"bac"), map.GetKeyAt(0) + map.GetKeyAt(1) + map.GetKeyAt(2));
    EXPECT_TRUE(map.Lookup(L"b", value));
    EXPECT_EQ(three, value);
    EXPECT_TRUE(map.RemoveKey(L"a"));
    ASSERT_EQ(2, map.GetKeyCount());
    EXPECT_EQ(CString(L"c"), map.GetKeyAt(1));
    map.RemoveAll();
    EXPECT_EQ(0, map.GetKeyCount() + map.GetCount());
}
