// afxlite's CString: shared buffers, searching, trimming, formatting, resources.
#include <gtest/gtest.h>
#include <afxwin.h>
#include <string>
#include "AfxliteTestResources.h"
#include "TestSupport.h"
#include "frame/Owners.h"

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

// Every result is checked for its length as well: a trim that writes the terminator early
// but keeps the old length would read right.
TEST(CStringTest, PiecesTrimmingConcatenationAndNarrowText)
{
    const CString s(L"abcdef");
    CString written(s);
    written.SetAt(0, L'A');
    const struct {
        CString result;
        const wchar_t* expected;
    } cases[] = {
        {s.Mid(2), L"cdef"}, {s.Mid(2, 3), L"cde"}, {s.Mid(-2, 3), L"abc"}, {s.Mid(4, 10), L"ef"}, {s.Mid(10), L""},
        {s.Mid(10, 2), L""}, {s.Mid(3, -1), L""}, {s.Mid(0), L"abcdef"}, {s.Left(2), L"ab"}, {s.Left(-1), L""},
        {s.Left(99), L"abcdef"}, {s.Right(2), L"ef"}, {s.Right(-3), L""}, {s.Right(99), L"abcdef"},
        {CString().Mid(1, 2), L""}, {L'<' + s + L">", L"<abcdef>"}, {s + s, L"abcdefabcdef"}, {written, L"Abcdef"},
        {CString("plain"), L"plain"}, {CString("plain", 3), L"pla"}, {CString(static_cast<const char*>(NULL)), L""},
        {CString(L"x") += "yz", L"xyz"},
        // White space unless other characters are given.
        {CString(L" \t\r\n a b \n").Trim(), L"a b"}, {CString(L"  a  ").TrimLeft(), L"a  "},
        {CString(L"  a  ").TrimRight(), L"  a"}, {CString(L"xyaxy").Trim(L"xy"), L"a"},
        {CString(L"xxaxx").TrimLeft(L'x'), L"axx"}, {CString(L"xxaxx").TrimRight(L'x'), L"xxa"},
        {CString(L"   ").Trim(), L""}, {CString(L"  ").TrimRight(), L""}, {CString(L"").Trim(), L""},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.expected, c.result) << "case " << &c - cases;
        EXPECT_EQ(static_cast<int>(wcslen(c.expected)), c.result.GetLength()) << "case " << &c - cases;
    }
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
        UniqueAny<BSTR, ::SysFreeString> bstr(text.AllocSysString());  // the whole text, embedded nulls included
        ASSERT_TRUE(bstr);
        EXPECT_EQ(std::wstring(Buffer(text), text.GetLength()), std::wstring(bstr.get(), ::SysStringLen(bstr.get())));
    }
}

TEST(CStringResourceTest, LoadStringFindsTheProgramsStrings)
{
    // The last string of a block, one longer than any first guess, a missing one (which
    // empties the string); a resource identifier assigned as text loads that string.
    CString greeting, last, longText, missing(L"previous"), assigned;
    EXPECT_EQ((Values{1, 1, 1, 0, 320}),
              (Values{greeting.LoadString(IDS_AFX_GREETING), last.LoadString(IDS_AFX_LAST_IN_BLOCK),
                      longText.LoadString(IDS_AFX_LONG), missing.LoadString(IDS_AFX_MISSING), longText.GetLength()}));
    assigned = MAKEINTRESOURCEW(IDS_AFX_LAST_IN_BLOCK);
    EXPECT_STREQ(L"Hello from the string table|last|079-||last",
                 greeting + L"|" + last + L"|" + longText.Right(4) + L"|" + missing + L"|" + assigned);
    wchar_t buffer[6];
    EXPECT_EQ(5, AfxLoadString(IDS_AFX_GREETING, buffer, 6));  // cut to the buffer
    EXPECT_STREQ(L"Hello", buffer);
}

}  // namespace
