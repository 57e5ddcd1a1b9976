// afxlite's CString: shared buffers, searching, trimming, formatting, resources.
#include <gtest/gtest.h>
#include <afxwin.h>
#include "AfxliteTestResources.h"
#include "TestSupport.h"

namespace {

const wchar_t* Buffer(const CString& s) { return static_cast<const wchar_t*>(s); }

TEST(CStringShareTest, CopiesShareOneBufferUntilWritten)
{
    // Every writer unshares first; the other copies still share.
    void (*const writers[])(CString&) = {
        [](CString& s) { s.MakeUpper(); },       [](CString& s) { s.MakeLower(); },
        [](CString& s) { s.Trim(); },            [](CString& s) { s.Replace(L'a', L'b'); },
        [](CString& s) { s.Delete(0); },         [](CString& s) { s.Insert(0, L'x'); },
        [](CString& s) { s.GetBuffer()[1] = L'#'; s.ReleaseBuffer(); },
        [](CString& s) { s.Format(L"%d", 5); }, [](CString& s) { s.Empty(); },
        [](CString& s) { s.SetAt(0, L'S'); },    [](CString& s) { s += L"!"; },
    };
    for (auto write : writers) {
        CString original(L" aBc "), copy(original), assigned;
        assigned = original;
        EXPECT_EQ(Buffer(original), Buffer(copy));
        write(copy);
        EXPECT_STREQ(L" aBc ", original) << "writer " << &write - writers;
        EXPECT_EQ(Buffer(original), Buffer(assigned));
    }
}

TEST(CStringTest, PiecesConcatenationAndNarrowText)
{
    const CString s(L"abcdef");
    CString written(s);
    written.SetAt(0, L'A');
    const CString results[] = {s.Mid(2),    s.Mid(2, 3), s.Mid(-2, 3), s.Mid(4, 10),  s.Mid(10),
                               s.Mid(3, -1), s.Mid(0),   s.Left(2),    s.Left(-1),    s.Left(99),
                               s.Right(2),  s.Right(-3), s.Right(99),  CString().Mid(1, 2),
                               L'<' + s + L">", s + s,  CString("plain"), CString("plain", 3),
                               CString(static_cast<const char*>(NULL)), written};
    const wchar_t* const expected[] = {L"cdef", L"cde", L"abc", L"ef",     L"",   L"",       L"abcdef",
                                       L"ab",   L"",    L"abcdef", L"ef", L"",   L"abcdef", L"",
                                       L"<abcdef>", L"abcdefabcdef", L"plain", L"pla", L"",     L"Abcdef"};
    for (size_t i = 0; i < sizeof(expected) / sizeof(expected[0]); i++)
        EXPECT_STREQ(expected[i], results[i]) << "case " << i;
}

TEST(CStringTest, SearchesAndComparisons)
{
    const CString s(L"a.b@c.d"), apple(L"Apple");
    const int found[] = {s.Find(L'.'),       s.Find(L'.', 2),      s.Find(L'x'),         s.Find(L'.', 7),
                         s.Find(L'.', -1),   s.Find(L"@c"),        s.Find(L"@c", 4),     s.Find(L"a", 99),
                         s.ReverseFind(L'.'), s.ReverseFind(L'a'), s.ReverseFind(L'x'), s.FindOneOf(L"@."),
                         s.FindOneOf(L"xyz"), s.FindOneOf(L""),    CString().Find(L'a'),
                         apple == L"Apple",   apple != L"apple",   apple.CompareNoCase(L"APPLE"),
                         apple.Compare(L"Banana") < 0, apple < CString(L"apple")};  // ordinal: upper case first
    const int expected[] = {1, 5, -1, -1, -1, 3, -1, -1, 5, 0, -1, 1, -1, -1, -1, 1, 1, 0, 1, 1};
    for (size_t i = 0; i < sizeof(expected) / sizeof(expected[0]); i++)
        EXPECT_EQ(expected[i], found[i]) << "case " << i;
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
        {L"  ", [](CString& s) -> CString& { return s.TrimRight(); }, L""},
        {L"", [](CString& s) -> CString& { return s.Trim(); }, L""},
    };
    for (const Case& c : cases) {
        CString s(c.text);
        EXPECT_STREQ(c.expected, c.trim(s)) << c.text;
        EXPECT_EQ(static_cast<int>(wcslen(c.expected)), s.GetLength()) << c.text;
    }
}

TEST(CStringTest, FormatBuffersAndConversions)
{
    CString s;
    s.Format(L"%s|%S|%d|%5.2f|%c|%x|%%", L"wide", "narrow", -42, 3.14159, L'W', 255u);
    EXPECT_STREQ(L"wide|narrow|-42| 3.14|W|ff|%", s);
    CString big(L'z', 3000);
    s.Format(L"[%s]", Buffer(big));  // longer than any first guess at the size
    s.AppendFormat(L"%d", 7);
    EXPECT_EQ(L"[" + big + L"]7", s);

    s = L"x";
    s += "yz";
    EXPECT_STREQ(L"xyz", s);
    wcscpy(s.GetBuffer(10), L"hello");  // longer than the text was
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

    for (const CString& text : {CString(L"a\0b", 3), CString()}) {
        BSTR bstr = text.AllocSysString();  // the whole text, embedded nulls included
        ASSERT_NE(nullptr, bstr);
        EXPECT_EQ(static_cast<UINT>(text.GetLength()), ::SysStringLen(bstr));
        EXPECT_EQ(0, memcmp(bstr, Buffer(text), text.GetLength() * sizeof(wchar_t)));
        ::SysFreeString(bstr);
    }
}

TEST(CStringResourceTest, LoadStringFindsTheProgramsStrings)
{
    // The last string of a block, one longer than any first guess, a missing one (which
    // empties the string).
    CString greeting, last, longText, missing(L"previous");
    EXPECT_EQ((Values{1, 1, 1, 0, 320}),
              (Values{greeting.LoadString(IDS_AFX_GREETING), last.LoadString(IDS_AFX_LAST_IN_BLOCK),
                      longText.LoadString(IDS_AFX_LONG), missing.LoadString(IDS_AFX_MISSING), longText.GetLength()}));
    EXPECT_STREQ(L"Hello from the string table|last|079-|",
                 greeting + L"|" + last + L"|" + longText.Right(4) + L"|" + missing);

    CString s;
    s = MAKEINTRESOURCEW(IDS_AFX_LAST_IN_BLOCK);
    EXPECT_STREQ(L"last", s);
    wchar_t buffer[6];
    EXPECT_EQ(5, AfxLoadString(IDS_AFX_GREETING, buffer, 6));  // cut to the buffer
    EXPECT_STREQ(L"Hello", buffer);
}

}  // namespace
