// Typed attribute readers and keyword resolvers.
#include "ReaderTestAccess.h"
#include <string>

typedef MCXMLReaderTestAccess Access;

namespace {

enum class Kind { Bstr, Text, Bool, Dword, Byte, Char, Long, Int, Rgb, Argb, Rect, Colour, RectEx };

struct ParseCase {
    Kind kind;
    const wchar_t* text;  // NULL: the attribute is absent
    HRESULT expected;
    const char* value;    // the output after the call, as Render writes it
};

std::string Number(long long n) { return std::to_string(n); }

std::string Narrow(const wchar_t* text)
{
    std::string out;
    for (; text != NULL && *text; ++text)
        out += *text < 0x80 ? static_cast<char>(*text) : '?';
    return out;
}

// Reads attribute `name` of `attributes` with the reader of `kind`, starting from
// a recognisable output value, and renders the result as "hr:value".
std::string ReadAs(MCXMLReader& reader, const IXMLDOMNamedNodeMapPtr& attributes, const wchar_t* name, Kind kind)
{
    HRESULT hr = E_NOTIMPL;
    std::string value;
    switch (kind) {
    case Kind::Bstr: {
        _bstr_t out(L"before");
        hr = Access::Read(reader, attributes, name, out);
        value = Narrow(out);
        break;
    }
    case Kind::Text: {
        CString out(L"before");
        hr = Access::Read(reader, attributes, name, out);
        value = Narrow(out);
        break;
    }
    case Kind::Bool: {
        bool out = true;
        hr = Access::Read(reader, attributes, name, out);
        value = out ? "true" : "false";
        break;
    }
    case Kind::Dword: {
        DWORD out = 99;
        hr = Access::Read(reader, attributes, name, out);
        value = Number(out);
        break;
    }
    case Kind::Byte: {
        BYTE out = 99;
        hr = Access::Read(reader, attributes, name, out);
        value = Number(out);
        break;
    }
    case Kind::Char: {
        char out = 99;
        hr = Access::Read(reader, attributes, name, out);
        value = Number(static_cast<signed char>(out));
        break;
    }
    case Kind::Long: {
        long out = 99;
        hr = Access::Read(reader, attributes, name, out);
        value = Number(out);
        break;
    }
    case Kind::Int: {
        int out = 99;
        hr = Access::Read(reader, attributes, name, out);
        value = Number(out);
        break;
    }
    case Kind::Rgb: {
        MCSkinRGB out = {9, 9, 9};
        hr = Access::Read(reader, attributes, name, out);
        const BYTE* bytes = reinterpret_cast<const BYTE*>(&out);  // memory order
        value = Number(bytes[0]) + "," + Number(bytes[1]) + "," + Number(bytes[2]);
        break;
    }
    case Kind::Argb: {
        MCSkinARGB out = {9, 9, 9, 9};
        hr = Access::Read(reader, attributes, name, out);
        const BYTE* bytes = reinterpret_cast<const BYTE*>(&out);
        value = Number(bytes[0]) + "," + Number(bytes[1]) + "," + Number(bytes[2]) + "," + Number(bytes[3]);
        break;
    }
    case Kind::Rect:
    case Kind::RectEx: {
        CRect out(7, 7, 7, 7);
        hr = kind == Kind::Rect ? Access::Read(reader, attributes, name, out)
                                : Access::ReadRectEx(reader, attributes, name, out);
        value = Number(out.left) + "," + Number(out.top) + "," + Number(out.right) + "," + Number(out.bottom);
        break;
    }
    case Kind::Colour: {
        DWORD out = 0xABCDEF;
        hr = Access::ReadColor(reader, attributes, name, out);
        char hex[16];
        snprintf(hex, sizeof hex, "0x%06lX", static_cast<unsigned long>(out));
        value = hex;
        break;
    }
    }
    return (hr == S_OK ? "S_OK:" : hr == S_FALSE ? "S_FALSE:" : "FAILED:") + value;
}

const ParseCase kParseCases[] = {
    // text readers: emptied first
    {Kind::Bstr, L"x y", S_OK, "x y"},
    {Kind::Bstr, NULL, S_FALSE, ""},
    {Kind::Text, L"", S_OK, ""},
    {Kind::Text, L"Hello", S_OK, "Hello"},
    {Kind::Text, NULL, S_FALSE, ""},
    // bool: only "1" is true; an absent attribute leaves the output
    {Kind::Bool, L"1", S_OK, "true"},
    {Kind::Bool, L"true", S_OK, "false"},
    {Kind::Bool, L"01", S_OK, "false"},
    {Kind::Bool, NULL, S_FALSE, "true"},
    // DWORD: "%u", reset to 0
    {Kind::Dword, L"4000000000", S_OK, "4000000000"},
    {Kind::Dword, L"-1", S_OK, "4294967295"},
    {Kind::Dword, L"12px", S_OK, "12"},
    {Kind::Dword, L"  7", S_OK, "7"},
    {Kind::Dword, L"010", S_OK, "10"},
    {Kind::Dword, L"px12", S_FALSE, "0"},
    {Kind::Dword, L"", S_FALSE, "0"},
    {Kind::Dword, NULL, S_FALSE, "0"},
    // BYTE: "%u" up to 255
    {Kind::Byte, L"255", S_OK, "255"},
    {Kind::Byte, L"256", S_FALSE, "0"},
    {Kind::Byte, L"-1", S_FALSE, "0"},
    {Kind::Byte, NULL, S_FALSE, "0"},
    // char: "%d" from -128 to 128, 128 wraps
    {Kind::Char, L"128", S_OK, "-128"},
    {Kind::Char, L"129", S_FALSE, "0"},
    {Kind::Char, L"-128", S_OK, "-128"},
    {Kind::Char, L"-129", S_FALSE, "0"},
    {Kind::Char, L"127", S_OK, "127"},
    // long and int: "%d"
    {Kind::Long, L"-5", S_OK, "-5"},
    {Kind::Long, L"010", S_OK, "10"},
    {Kind::Long, L"0x10", S_OK, "0"},
    {Kind::Long, L"abc", S_FALSE, "0"},
    {Kind::Int, L"+42;", S_OK, "42"},
    {Kind::Int, NULL, S_FALSE, "0"},
    // colours: three or four numbers up to 255, single commas, output kept on failure
    {Kind::Rgb, L"10,20,30", S_OK, "30,20,10"},
    {Kind::Rgb, L"10,20", S_FALSE, "9,9,9"},
    {Kind::Rgb, L"10,20,256", S_FALSE, "9,9,9"},
    {Kind::Argb, L"10,20,30,40", S_OK, "30,20,10,40"},
    {Kind::Argb, L"10,20,30,256", S_FALSE, "9,9,9,9"},
    {Kind::Argb, NULL, S_FALSE, "9,9,9,9"},
    {Kind::Colour, L"255,0,0", S_OK, "0x0000FF"},
    {Kind::Colour, L"1, 2, 3", S_OK, "0x030201"},
    {Kind::Colour, L"1 ,2,3", S_FALSE, "0xABCDEF"},
    {Kind::Colour, L"255,0", S_FALSE, "0xABCDEF"},
    {Kind::Colour, L"-1,0,0", S_FALSE, "0xABCDEF"},
    // rectangles: "%i" reads hex and octal; trailing text ignored
    {Kind::Rect, L"0x10,0,0,010", S_OK, "16,0,0,8"},
    {Kind::Rect, L"1,2,3,4,5", S_OK, "1,2,3,4"},
    {Kind::Rect, L"-1,-2,3,4", S_OK, "-1,-2,3,4"},
    {Kind::Rect, L"1,2,3", S_FALSE, "7,7,7,7"},
    {Kind::Rect, L"1 ,2,3,4", S_FALSE, "7,7,7,7"},
    {Kind::RectEx, L"10,20,100,50", S_OK, "10,20,110,70"},
    {Kind::RectEx, L"10,20,-5,0x10", S_OK, "10,20,5,36"},
    {Kind::RectEx, NULL, S_FALSE, "7,7,7,7"},
};

}  // namespace

TEST(ReaderAttributes, NumberParsingTable)
{
    IXMLDOMDocumentPtr document = MakeDocument(L"<root><e/></root>");
    IXMLDOMNodePtr node;
    ASSERT_EQ(S_OK, document->selectSingleNode(_bstr_t(L"root/e"), &node));
    IXMLDOMElementPtr element = node;
    ASSERT_TRUE(element);
    int index = 0;
    for (const ParseCase& row : kParseCases) {
        if (row.text != NULL) {
            wchar_t name[16];
            wsprintfW(name, L"a%d", index);
            ASSERT_EQ(S_OK, element->setAttribute(_bstr_t(name), _variant_t(row.text)));
        }
        ++index;
    }
    // A second attribute keeps the map non-empty even when every row is absent.
    ASSERT_EQ(S_OK, element->setAttribute(_bstr_t(L"other"), _variant_t(L"x")));

    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(document));
    IXMLDOMNamedNodeMapPtr attributes = AttributesAt(reader, L"root/e");
    index = 0;
    for (const ParseCase& row : kParseCases) {
        wchar_t name[16];
        wsprintfW(name, L"a%d", index++);
        std::string expected = std::string(row.expected == S_OK ? "S_OK:" : "S_FALSE:") + row.value;
        EXPECT_EQ(expected, ReadAs(reader, attributes, name, row.kind))
            << "text '" << Narrow(row.text) << "' (row " << index - 1 << ")";
    }
    EXPECT_TRUE(reader.m_strError.IsEmpty()) << "unacceptable text is no error";
}

TEST(ReaderAttributes, NullMapIsEPointer)
{
    MCXMLReader reader;
    DWORD value = 5;
    EXPECT_EQ(E_POINTER, Access::Read(reader, IXMLDOMNamedNodeMapPtr(), L"a", value));
    EXPECT_EQ(0u, value) << "reset before the lookup";
}

namespace {

struct KeywordCase {
    const wchar_t* keyword;
    long value;
};

template <class T, class ResolveFn>
void CheckKeywords(const char* table, const KeywordCase* cases, size_t count, ResolveFn resolve)
{
    MCXMLReader reader;
    for (size_t i = 0; i < count; ++i) {
        // The sentinel differs from the keyword's value and is inside every enumeration's range.
        const T sentinel = static_cast<T>(cases[i].value == 1 ? 2 : 1);
        T out = sentinel;
        EXPECT_EQ(S_OK, resolve(reader, _bstr_t(cases[i].keyword), out)) << table << ": " << Narrow(cases[i].keyword);
        EXPECT_EQ(cases[i].value, static_cast<long>(out)) << table << ": " << Narrow(cases[i].keyword);

        // Upper case and a trailing blank match nothing and leave the output.
        std::wstring upper(cases[i].keyword);
        for (wchar_t& ch : upper)
            ch = towupper(ch);
        const std::wstring variants[] = {upper, std::wstring(cases[i].keyword) + L" "};
        for (const std::wstring& variant : variants) {
            T kept = sentinel;
            EXPECT_EQ(S_FALSE, resolve(reader, _bstr_t(variant.c_str()), kept))
                << table << ": '" << Narrow(variant.c_str()) << "'";
            EXPECT_TRUE(kept == sentinel);
        }
    }
    T out = static_cast<T>(1);
    EXPECT_EQ(S_FALSE, resolve(reader, _bstr_t(L""), out)) << table;
}

#define CHECK_KEYWORDS(T, cases, fn) CheckKeywords<T>(#cases, cases, sizeof(cases) / sizeof(cases[0]), fn)

}  // namespace

TEST(ReaderKeywords, EveryTableResolvesItsKeywords)
{
    static const KeywordCase effects[] = {{L"no", 0}, {L"sh", 1}, {L"ssh", 2}, {L"gl", 3}};
    static const KeywordCase flags[] = {{L"tl", 0}, {L"tc", 1}, {L"tr", 2}, {L"cl", 4}, {L"c", 5},
                                        {L"cr", 6}, {L"bl", 8}, {L"bc", 9}, {L"br", 10}};
    static const KeywordCase weights[] = {
        {L"dontcare", 0},  {L"thin", 100},     {L"extralight", 200}, {L"ultralight", 200}, {L"light", 300},
        {L"normal", 400},  {L"regular", 400},  {L"medium", 500},     {L"semibold", 600},   {L"demibold", 600},
        {L"bold", 700},    {L"extrabold", 800}, {L"ultrabold", 800}, {L"heavy", 900},      {L"black", 900}};
    static const KeywordCase charsets[] = {
        {L"ansi", 0},        {L"baltic", 186},   {L"chinesbig5", 136}, {L"default", 1},    {L"easteurope", 238},
        {L"gb2312", 134},    {L"greek", 161},    {L"hangul", 129},     {L"mac", 77},       {L"oem", 255},
        {L"russian", 204},   {L"shiftjis", 128}, {L"symbol", 2},       {L"turkish", 162},  {L"vietnamese", 163},
        {L"johab", 130},     {L"arabic", 178},   {L"hebrew", 177},     {L"thai", 222}};
    static const KeywordCase precisions[] = {{L"character", 2}, {L"default", 0}, {L"device", 5}, {L"outline", 8},
                                             {L"only", 10},     {L"raster", 6},  {L"string", 1}, {L"stroke", 3},
                                             {L"ttonly", 7},    {L"tt", 4}};
    static const KeywordCase qualities[] = {
        {L"antialiased", 4}, {L"default", 0}, {L"draft", 1}, {L"nonantialiased", 3}, {L"proof", 2}};
    static const KeywordCase pitches[] = {{L"default", 0}, {L"fixed", 1}, {L"variable", 2}};
    static const KeywordCase families[] = {{L"decorative", 80}, {L"dontcare", 0}, {L"modern", 48},
                                           {L"roman", 16},      {L"script", 64},  {L"swiss", 32}};
    static const KeywordCase controlTypes[] = {
        {L"window", 1},        {L"subwindow", 2},    {L"button", 3},       {L"edit", 4},
        {L"listbox", 5},       {L"listview", 6},     {L"checkbox", 7},     {L"radiobutton", 8},
        {L"slider", 9},        {L"combobox", 10},    {L"comboboxex", 11},  {L"groupbox", 12},
        {L"smarteditbox", 13}, {L"menu", 14},        {L"static", 15},      {L"tabbar", 16},
        {L"stdtab", 17},       {L"richedit", 18},    {L"linkcontrol", 19}, {L"progressbar", 20},
        {L"daytimecontrol", 21}, {L"imagebutton", 22}, {L"bkgexedit", 23}, {L"bkgexcombo", 24}};
    static const KeywordCase controlStates[] = {
        {L"normal", 1}, {L"focus", 2}, {L"pressed", 3}, {L"mouseover", 4}, {L"disabled", 5}};
    static const KeywordCase resizeTypes[] = {{L"w", 1}, {L"h", 2}, {L"wh", 3}, {L"no", 4}};
    static const KeywordCase moveTypes[] = {{L"x", 1}, {L"y", 2}, {L"xy", 3}, {L"no", 4}};

    CHECK_KEYWORDS(MEFontEffect, effects, [](MCXMLReader& r, const _bstr_t& v, MEFontEffect& o) { return Access::Resolve(r, v, o); });
    CHECK_KEYWORDS(MEFontFlags, flags, [](MCXMLReader& r, const _bstr_t& v, MEFontFlags& o) { return Access::Resolve(r, v, o); });
    CHECK_KEYWORDS(long, weights, Access::Weight);
    CHECK_KEYWORDS(BYTE, charsets, Access::Charset);
    CHECK_KEYWORDS(BYTE, precisions, Access::Precision);
    CHECK_KEYWORDS(BYTE, qualities, Access::Quality);
    CHECK_KEYWORDS(BYTE, pitches, Access::Pitch);
    CHECK_KEYWORDS(BYTE, families, Access::Family);
    CHECK_KEYWORDS(MEControlType, controlTypes, [](MCXMLReader& r, const _bstr_t& v, MEControlType& o) { return Access::Resolve(r, v, o); });
    CHECK_KEYWORDS(MEControlState, controlStates, [](MCXMLReader& r, const _bstr_t& v, MEControlState& o) { return Access::Resolve(r, v, o); });
    CHECK_KEYWORDS(MEControlResizeType, resizeTypes, [](MCXMLReader& r, const _bstr_t& v, MEControlResizeType& o) { return Access::Resolve(r, v, o); });
    CHECK_KEYWORDS(MEWindowMoveType, moveTypes, [](MCXMLReader& r, const _bstr_t& v, MEWindowMoveType& o) { return Access::Resolve(r, v, o); });
}

TEST(ReaderKeywords, Quirks)
{
    MCXMLReader reader;
    BYTE quality = 42;
    EXPECT_EQ(S_FALSE, Access::Quality(reader, L"cleartype", quality)) << "built, never compared";
    EXPECT_EQ(42, quality);

    long weight = 1;
    EXPECT_EQ(S_FALSE, Access::Weight(reader, L"Bold", weight));
    EXPECT_EQ(1, weight);
    EXPECT_EQ(S_OK, Access::Weight(reader, L"550", weight));
    EXPECT_EQ(550, weight);
    EXPECT_EQ(S_OK, Access::Weight(reader, L"5000px", weight)) << "any number, trailing text ignored";
    EXPECT_EQ(5000, weight);

    MEControlType type = MEControlTypeWindow;
    EXPECT_EQ(S_FALSE, Access::Resolve(reader, L"ImageButton", type));
    EXPECT_EQ(MEControlTypeWindow, type);

    MEControlWindowType windowType = MEControlWindowTypeWindowed;
    EXPECT_EQ(S_OK, Access::WindowType(reader, true, windowType));
    EXPECT_EQ(2, windowType);
    EXPECT_EQ(S_OK, Access::WindowType(reader, false, windowType));
    EXPECT_EQ(1, windowType);
}

TEST(ReaderTypes, OrderedMapKeepsFirstInsertionOrder)
{
    MCOrderedMap<CString, const wchar_t*, CString, CString&> map;
    CString one(L"1"), two(L"2"), three(L"3");
    map.SetAt(L"b", one);
    map.SetAt(L"a", two);
    map.SetAt(L"b", three);
    ASSERT_EQ(2, map.GetKeyCount());
    EXPECT_EQ(CString(L"b"), map.GetKeyAt(0));
    EXPECT_EQ(CString(L"a"), map.GetKeyAt(1));
    CString value;
    EXPECT_TRUE(map.Lookup(L"b", value));
    EXPECT_EQ(three, value);
    map[L"c"] = one;
    EXPECT_EQ(CString(L"c"), map.GetKeyAt(2));
    EXPECT_TRUE(map.RemoveKey(L"a"));
    ASSERT_EQ(2, map.GetKeyCount());
    EXPECT_EQ(CString(L"c"), map.GetKeyAt(1));
    map.RemoveAll();
    EXPECT_EQ(0, map.GetKeyCount());
    EXPECT_EQ(0, map.GetCount());
}
