// Typed attribute readers and keyword resolvers. The keyword tables themselves are
// checked through the golden case keywords.xml (see golden_dumps.py).
#include "ReaderTestAccess.h"
#include <functional>

namespace {

struct ParseCase {
    Kind kind;
    const wchar_t* text;  // NULL: the attribute is absent
    const char* outcome;  // result and output after the call
};

const ParseCase kParseCases[] = {
    // text readers: emptied first
    {Kind::Bstr, L"x y", "S_OK:x y"}, {Kind::Bstr, NULL, "S_FALSE:"}, {Kind::Text, L"", "S_OK:"},
    {Kind::Text, L"Hello", "S_OK:Hello"}, {Kind::Text, NULL, "S_FALSE:"},
    // bool: only "1" is true; an absent attribute leaves the output
    {Kind::Bool, L"1", "S_OK:true"}, {Kind::Bool, L"true", "S_OK:false"}, {Kind::Bool, L"01", "S_OK:false"},
    {Kind::Bool, NULL, "S_FALSE:true"},
    // DWORD: "%u", reset to 0
    {Kind::Dword, L"4000000000", "S_OK:4000000000"}, {Kind::Dword, L"-1", "S_OK:4294967295"},
    {Kind::Dword, L"12px", "S_OK:12"}, {Kind::Dword, L"  7", "S_OK:7"}, {Kind::Dword, L"010", "S_OK:10"},
    {Kind::Dword, L"px12", "S_FALSE:0"}, {Kind::Dword, L"", "S_FALSE:0"}, {Kind::Dword, NULL, "S_FALSE:0"},
    // BYTE: "%u" up to 255
    {Kind::Byte, L"255", "S_OK:255"}, {Kind::Byte, L"256", "S_FALSE:0"}, {Kind::Byte, L"-1", "S_FALSE:0"},
    {Kind::Byte, NULL, "S_FALSE:0"},
    // char: "%d" from -128 to 128, 128 wraps
    {Kind::Char, L"128", "S_OK:-128"}, {Kind::Char, L"129", "S_FALSE:0"}, {Kind::Char, L"-128", "S_OK:-128"},
    {Kind::Char, L"-129", "S_FALSE:0"}, {Kind::Char, L"127", "S_OK:127"},
    // long and int: "%d"
    {Kind::Long, L"-5", "S_OK:-5"}, {Kind::Long, L"010", "S_OK:10"}, {Kind::Long, L"0x10", "S_OK:0"},
    {Kind::Long, L"abc", "S_FALSE:0"}, {Kind::Int, L"+42;", "S_OK:42"}, {Kind::Int, NULL, "S_FALSE:0"},
    // colours: three or four numbers up to 255, single commas, output kept on failure
    {Kind::Rgb, L"10,20,30", "S_OK:30,20,10"}, {Kind::Rgb, L"10,20", "S_FALSE:9,9,9"},
    {Kind::Rgb, L"10,20,256", "S_FALSE:9,9,9"}, {Kind::Argb, L"10,20,30,40", "S_OK:30,20,10,40"},
    {Kind::Argb, L"10,20,30,256", "S_FALSE:9,9,9,9"}, {Kind::Argb, NULL, "S_FALSE:9,9,9,9"},
    {Kind::Colour, L"255,0,0", "S_OK:0x0000FF"}, {Kind::Colour, L"1, 2, 3", "S_OK:0x030201"},
    {Kind::Colour, L"1 ,2,3", "S_FALSE:0xABCDEF"}, {Kind::Colour, L"255,0", "S_FALSE:0xABCDEF"},
    {Kind::Colour, L"-1,0,0", "S_FALSE:0xABCDEF"},
    // rectangles: "%i" reads hex and octal; trailing text ignored
    {Kind::Rect, L"0x10,0,0,010", "S_OK:16,0,0,8"}, {Kind::Rect, L"1,2,3,4,5", "S_OK:1,2,3,4"},
    {Kind::Rect, L"-1,-2,3,4", "S_OK:-1,-2,3,4"}, {Kind::Rect, L"1,2,3", "S_FALSE:7,7,7,7"},
    {Kind::Rect, L"1 ,2,3,4", "S_FALSE:7,7,7,7"}, {Kind::RectEx, L"10,20,100,50", "S_OK:10,20,110,70"},
    {Kind::RectEx, L"10,20,-5,0x10", "S_OK:10,20,5,36"}, {Kind::RectEx, NULL, "S_FALSE:7,7,7,7"},
};

}  // namespace

TEST(ReaderAttributes, NumberParsingTable)
{
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><e other='x'/></root>");  // "other" keeps the map non-empty
    IXMLDOMNodePtr node;
    ASSERT_EQ(S_OK, document->selectSingleNode(_bstr_t(L"root/e"), &node));
    IXMLDOMElementPtr element = node;
    for (const ParseCase& row : kParseCases) {
        if (row.text != NULL)
            element->setAttribute(_bstr_t((L"a" + std::to_wstring(&row - kParseCases)).c_str()), _variant_t(row.text));
    }

    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    IXMLDOMNamedNodeMapPtr attributes = AttributesAt(reader, L"root/e");
    for (const ParseCase& row : kParseCases) {
        const _bstr_t name((L"a" + std::to_wstring(&row - kParseCases)).c_str());
        EXPECT_EQ(row.outcome, ReadAs(reader, attributes, name, row.kind)) << "text '" << Show(row.text) << "'";
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
