#include <gtest/gtest.h>
#include <afxwin.h>
#include "AfxliteTestResources.h"

namespace {

const wchar_t* Buffer(const CString& s) { return static_cast<const wchar_t*>(s); }

TEST(CStringShareTest, CopiesShareOneBufferUntilWritten)
{
    CString a(L"shared text");
    CString b(a);
    CString c;
    c = b;
    EXPECT_EQ(Buffer(a), Buffer(b));
    EXPECT_EQ(Buffer(a), Buffer(c));

    b.SetAt(0, L'S');
    EXPECT_STREQ(L"shared text", a);
    EXPECT_STREQ(L"Shared text", b);
    EXPECT_NE(Buffer(a), Buffer(b));
    EXPECT_EQ(Buffer(a), Buffer(c));  // the untouched copies still share

    c += L"!";
    EXPECT_STREQ(L"shared text", a);
    EXPECT_STREQ(L"shared text!", c);
}

TEST(CStringShareTest, EveryWriterUnsharesFirst)
{
    struct Writer {
        const char* name;
        void (*write)(CString&);
    } const writers[] = {
        {"MakeUpper", [](CString& s) { s.MakeUpper(); }},
        {"MakeLower", [](CString& s) { s.MakeLower(); }},
        {"Trim", [](CString& s) { s.Trim(); }},
        {"Replace", [](CString& s) { s.Replace(L'a', L'b'); }},
        {"Delete", [](CString& s) { s.Delete(0); }},
        {"Insert", [](CString& s) { s.Insert(0, L'x'); }},
        {"GetBuffer", [](CString& s) { s.GetBuffer()[1] = L'#'; s.ReleaseBuffer(); }},
        {"Format", [](CString& s) { s.Format(L"%d", 5); }},
        {"Empty", [](CString& s) { s.Empty(); }},
    };
    for (const Writer& w : writers) {
        CString original(L" aBc ");
        CString copy(original);
        w.write(copy);
        EXPECT_STREQ(L" aBc ", original) << w.name;
    }
}

TEST(CStringTest, MidLeftRightClampToTheString)
{
    const CString s(L"abcdef");
    struct Case {
        CString result;
        const wchar_t* expected;
    } const cases[] = {
        {s.Mid(2), L"cdef"},     {s.Mid(2, 3), L"cde"},   {s.Mid(-2, 3), L"abc"}, {s.Mid(4, 10), L"ef"},
        {s.Mid(10), L""},        {s.Mid(3, -1), L""},     {s.Mid(0), L"abcdef"},  {s.Left(2), L"ab"},
        {s.Left(-1), L""},       {s.Left(99), L"abcdef"}, {s.Right(2), L"ef"},    {s.Right(-3), L""},
        {s.Right(99), L"abcdef"}, {CString().Mid(1, 2), L""},
    };
    for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); i++)
        EXPECT_STREQ(cases[i].expected, cases[i].result) << "case " << i;
}

TEST(CStringTest, FindReverseFindFindOneOf)
{
    const CString s(L"a.b@c.d");
    EXPECT_EQ(1, s.Find(L'.'));
    EXPECT_EQ(5, s.Find(L'.', 2));
    EXPECT_EQ(-1, s.Find(L'x'));
    EXPECT_EQ(-1, s.Find(L'.', 7));
    EXPECT_EQ(-1, s.Find(L'.', -1));
    EXPECT_EQ(3, s.Find(L"@c"));
    EXPECT_EQ(-1, s.Find(L"@c", 4));
    EXPECT_EQ(-1, s.Find(L"a", 99));
    EXPECT_EQ(5, s.ReverseFind(L'.'));
    EXPECT_EQ(0, s.ReverseFind(L'a'));
    EXPECT_EQ(-1, s.ReverseFind(L'x'));
    EXPECT_EQ(1, s.FindOneOf(L"@."));
    EXPECT_EQ(-1, s.FindOneOf(L"xyz"));
    EXPECT_EQ(-1, s.FindOneOf(L""));
    EXPECT_EQ(-1, CString().Find(L'a'));
}

TEST(CStringTest, TrimRemovesWhiteSpaceOrTheGivenCharacters)
{
    struct Case {
        const wchar_t* text;
        CString& (*trim)(CString&);
        const wchar_t* expected;
    } const cases[] = {
        {L" \t\r\n a b \n", [](CString& s) -> CString& { return s.Trim(); }, L"a b"},
        {L"  a  ", [](CString& s) -> CString& { return s.TrimLeft(); }, L"a  "},
        {L"  a  ", [](CString& s) -> CString& { return s.TrimRight(); }, L"  a"},
        {L"xyaxy", [](CString& s) -> CString& { return s.Trim(L"xy"); }, L"a"},
        {L"xxaxx", [](CString& s) -> CString& { return s.TrimLeft(L'x'); }, L"axx"},
        {L"xxaxx", [](CString& s) -> CString& { return s.TrimRight(L'x'); }, L"xxa"},
        {L"   ", [](CString& s) -> CString& { return s.Trim(); }, L""},
        {L"", [](CString& s) -> CString& { return s.Trim(); }, L""},
    };
    for (const Case& c : cases) {
        CString s(c.text);
        EXPECT_STREQ(c.expected, c.trim(s)) << c.text;
        EXPECT_EQ(static_cast<int>(wcslen(c.expected)), s.GetLength()) << c.text;
    }
}

TEST(CStringTest, FormatUsesThePlatformMeaningOfPercentS)
{
    CString s;
    s.Format(L"%s|%S|%d|%5.2f|%c|%x|%%", L"wide", "narrow", -42, 3.14159, L'W', 255u);
    EXPECT_STREQ(L"wide|narrow|-42| 3.14|W|ff|%", s);

    // Longer than any first guess at the size.
    CString big(L'z', 3000);
    s.Format(L"[%s]", Buffer(big));
    EXPECT_EQ(3002, s.GetLength());
    EXPECT_EQ(L']', s[3001]);

    s.AppendFormat(L"%d", 7);
    EXPECT_EQ(L'7', s[3002]);
}

TEST(CStringTest, GetBufferAndReleaseBuffer)
{
    CString s;
    wchar_t* p = s.GetBuffer(10);
    wcscpy(p, L"hello");
    s.ReleaseBuffer();
    EXPECT_STREQ(L"hello", s);
    EXPECT_EQ(5, s.GetLength());

    s.GetBuffer(20);
    s.ReleaseBuffer(3);
    EXPECT_STREQ(L"hel", s);

    wchar_t* q = s.GetBufferSetLength(5);
    q[3] = L'p';
    q[4] = L'!';
    s.ReleaseBuffer();
    EXPECT_STREQ(L"help!", s);

    CString empty;
    empty.GetBuffer(0)[0] = L'\0';
    empty.ReleaseBuffer();
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(CStringTest, AllocSysStringCopiesTheWholeText)
{
    CString s(L"a\0b", 3);
    BSTR bstr = s.AllocSysString();
    ASSERT_NE(nullptr, bstr);
    EXPECT_EQ(3u, ::SysStringLen(bstr));
    EXPECT_EQ(0, memcmp(bstr, L"a\0b", 3 * sizeof(wchar_t)));
    ::SysFreeString(bstr);

    BSTR empty = CString().AllocSysString();
    ASSERT_NE(nullptr, empty);
    EXPECT_EQ(0u, ::SysStringLen(empty));
    ::SysFreeString(empty);
}

TEST(CStringTest, NarrowTextIsConverted)
{
    EXPECT_STREQ(L"plain ascii", CString("plain ascii"));
    EXPECT_STREQ(L"pla", CString("plain", 3));
    EXPECT_STREQ(L"", CString(static_cast<const char*>(NULL)));
    CString s(L"x");
    s += "yz";
    EXPECT_STREQ(L"xyz", s);
}

TEST(CStringTest, ComparisonsAndConcatenation)
{
    CString a(L"Apple");
    EXPECT_TRUE(a == L"Apple");
    EXPECT_TRUE(a != L"apple");
    EXPECT_EQ(0, a.CompareNoCase(L"APPLE"));
    EXPECT_LT(a.Compare(L"Banana"), 0);
    EXPECT_TRUE(a < CString(L"apple"));  // ordinal: upper case first
    EXPECT_STREQ(L"<Apple>", L'<' + a + L">");
    EXPECT_STREQ(L"AppleApple", a + a);
}

TEST(CStringResourceTest, LoadStringFindsTheProgramsStrings)
{
    CString s;
    EXPECT_TRUE(s.LoadString(IDS_AFX_GREETING));
    EXPECT_STREQ(L"Hello from the string table", s);
    EXPECT_TRUE(s.LoadString(IDS_AFX_LAST_IN_BLOCK));
    EXPECT_STREQ(L"last", s);

    EXPECT_TRUE(s.LoadString(IDS_AFX_LONG));
    EXPECT_EQ(320, s.GetLength());
    EXPECT_STREQ(L"079-", s.Right(4));

    s = L"previous";
    EXPECT_FALSE(s.LoadString(IDS_AFX_MISSING));
    EXPECT_TRUE(s.IsEmpty());

    EXPECT_STREQ(L"Hello from the string table", CString(MAKEINTRESOURCEW(IDS_AFX_GREETING)));
    s = MAKEINTRESOURCEW(IDS_AFX_LAST_IN_BLOCK);
    EXPECT_STREQ(L"last", s);

    wchar_t buffer[6];
    EXPECT_EQ(5, AfxLoadString(IDS_AFX_GREETING, buffer, 6));  // cut to the buffer
    EXPECT_STREQ(L"Hello", buffer);
}

}  // namespace
