// Typed attribute readers and keyword resolvers. The keyword tables themselves are
// checked through the golden case keywords.xml (see golden_dumps.py).
#include "ReaderTestAccess.h"
#include <algorithm>
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
        auto isKind = [&](const wchar_t* name) { return Show(kind) == Show(name); };
        const auto named = std::find_if(std::begin(kinds), std::end(kinds), isKind);
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
// leaves that value for a text that is no keyword. (That upper case and trailing blanks
// match no keyword, and that a weight may be any number, shows in keywords.xml.)
template <class Resolve, class Value>
void ExpectResolved(Resolve resolve, const wchar_t* keyword, Value other, long long resolved)
{
    MCXMLReader reader;
    Value out = other;
    const HRESULT keywordResult = resolve(reader, keyword, out);
    EXPECT_EQ((Values{S_OK, resolved}), (Values{keywordResult, static_cast<long long>(out)})) << Show(keyword);
    out = other;
    const HRESULT otherResult = resolve(reader, L"", out);
    EXPECT_EQ((Values{S_FALSE, static_cast<long long>(other)}), (Values{otherResult, static_cast<long long>(out)}))
        << Show(keyword);
}

TEST(ReaderKeywords, EveryResolverAnswersForItsKeywords)
{
    auto resolve = [](MCXMLReader& reader, const _bstr_t& text, auto& out) { return Access::Resolve(reader, text, out); };
    ExpectResolved(resolve, L"no", MEFontEffectGlow, 0);
    ExpectResolved(resolve, L"tl", MEFontFlagsCenter, 0);
    ExpectResolved(Access::Weight, L"dontcare", 1L, 0);
    ExpectResolved(Access::Charset, L"ansi", BYTE(7), 0);
    ExpectResolved(Access::Precision, L"default", BYTE(7), 0);
    ExpectResolved(Access::Quality, L"default", BYTE(7), 0);
    ExpectResolved(Access::Pitch, L"default", BYTE(7), 0);
    ExpectResolved(Access::Family, L"dontcare", BYTE(7), 0);
    ExpectResolved(resolve, L"window", MEControlTypeEdit, 1);
    ExpectResolved(resolve, L"normal", MEControlStateFocus, 1);
    ExpectResolved(resolve, L"x", MEWindowMoveY, 1);
    ExpectResolved(resolve, L"w", MEControlResizeHeight, 1);
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
