#include <gtest/gtest.h>
#include "MCEmailAddressChecker.h"
#include "MErrorUtils.h"

namespace {

TEST(CharacterClassTest, AsciiLettersAndDigitsOnly)
{
    struct Case {
        wchar_t c;
        bool alpha;
        bool alphaNum;
    } const cases[] = {
        {L'A', true, true},   {L'Z', true, true},     {L'a', true, true},     {L'z', true, true},
        {L'0', false, true},  {L'9', false, true},    {L'@', false, false},   {L'[', false, false},
        {L'`', false, false}, {L'{', false, false},   {L'/', false, false},   {L':', false, false},
        {L' ', false, false}, {L'_', false, false},   {L'\0', false, false},  {0x00E9, false, false},
        {0x0663, false, false} /* Arabic-Indic three */, {0xFF21, false, false} /* fullwidth A */,
    };
    for (const Case& c : cases) {
        // The extra characters are ignored.
        EXPECT_EQ(c.alpha, MErrorUtils::IsAlpha(c.c, L"@_ ")) << static_cast<int>(c.c);
        EXPECT_EQ(c.alphaNum, MErrorUtils::IsAlphaNum(c.c, L"@_ ")) << static_cast<int>(c.c);
    }
}

TEST(VLRNumberTest, RangeOfTheNumber)
{
    struct Case {
        UINT number;
        bool valid;
    } const cases[] = {
        {0, false}, {9999, false}, {10000, true}, {123456, true}, {2147483646, true}, {2147483647, false},
        {0xFFFFFFFF, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.valid, MErrorUtils::IsValidVLRNumber(c.number)) << c.number;
}

TEST(VLRNumberTest, TextMustBeDigitsOnly)
{
    struct Case {
        const wchar_t* text;
        bool valid;       // IsValidVLRNumber(text)
        UINT converted;   // ConvertStringToVLRNumber(text)
    } const cases[] = {
        {L"10000", true, 10000},
        {L"010000", true, 10000},
        {L" 10000", false, 10000},
        {L"+10000", false, 10000},
        {L"12345abc", false, 12345},
        {L"9999", false, 0},
        {L"2147483646", true, 2147483646},
        {L"2147483647", false, 0},
        {L"99999999999", false, 0},  // saturates
        {L"-10000", false, 0},
        {L"", false, 0},
        {L"abc", false, 0},
        {L"10000 ", false, 10000},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.valid, MErrorUtils::IsValidVLRNumber(c.text)) << c.text;
        EXPECT_EQ(c.converted, MErrorUtils::ConvertStringToVLRNumber(c.text)) << c.text;
    }
    EXPECT_FALSE(MErrorUtils::IsValidVLRNumber(static_cast<const wchar_t*>(NULL)));
    EXPECT_EQ(0u, MErrorUtils::ConvertStringToVLRNumber(NULL));
}

TEST(TesvorIDTest, LengthFirstCharacterAndAlphabet)
{
    struct Case {
        const wchar_t* id;
        bool valid;
    } const cases[] = {
        {L"ab", false},
        {L"abc", true},
        {L"ABC", true},
        {L"a1b", true},
        {L"1ab", false},
        {L"abcdefghijklmnop", true},   // 16
        {L"abcdefghijklmnopq", false}, // 17
        {L"ab_c", false},
        {L"ab c", false},
        {L" abc", false},  // no trimming
        {L"abc\x00E9", false},
        {L"", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.valid, MErrorUtils::IsValidTesvorID(CString(c.id))) << c.id;
}

struct EmailCase {
    const wchar_t* address;
    DWORD code;
    const wchar_t* name;  // the parts after Test
    const wchar_t* domain;
    const wchar_t* extension;
};

const EmailCase kEmailCases[] = {
    {L"a@b.c", 0, L"a", L"b", L"c"},
    {L"  John.Doe@Example.COM \t", 0, L"john.doe", L"example", L"com"},
    {L"user@mail.example.de", 0, L"user", L"mail.example", L"de"},
    {L"a@b_c-d.info", 0, L"a", L"b_c-d", L"info"},
    {L"!#$%@b.c", 0, L"!#$%", L"b", L"c"},  // the name takes anything but a space
    {L"a@b.museum", 0x40000020, L"a", L"b", L"museum"},
    {L"a b@c.de", 0x10000080, L"a b", L"c", L"de"},
    {L"a@b!.de", 0x20000010, L"a", L"b!", L"de"},
    {L"a@b c.de", 0x20000010, L"a", L"b c", L"de"},
    {L"a@b@c.de", 0x20000040, L"a", L"b@c", L"de"},
    {L"a@b.d3", 0x40000040, L"a", L"b", L"d3"},
    {L"a@b.d e", 0x40000040, L"a", L"b", L"d e"},
    {L"@b.de", 0x10000002, L"", L"b", L"de"},
    {L"a@.de", 0x20000002, L"a", L"", L"de"},
    {L"a@bde", 0x40000002, L"a", L"bde", L""},
    {L"a@b.", 0x40000002, L"a", L"b", L""},
    {L"", 0x00000002, L"", L"", L""},
    {L" \t ", 0x00000002, L"", L"", L""},
    {L"first.last@host", 0x20000002, L"first.last", L"", L"last@host"},
    {L"nobody.de", 0x10000002, L"", L"nobody", L"de"},
};

TEST(EmailCheckerTest, ResultCodesAndParts)
{
    for (const EmailCase& c : kEmailCases) {
        MCEmailAddressChecker checker(c.address);
        EXPECT_EQ(c.code, checker.Test()) << c.address;
        EXPECT_STREQ(c.name, checker.GetName()) << c.address;
        EXPECT_STREQ(c.domain, checker.GetDomain()) << c.address;
        EXPECT_STREQ(c.extension, checker.GetExtension()) << c.address;

        DWORD code = 0xDEADBEEF;
        EXPECT_EQ(c.code == 0, MErrorUtils::IsValidEmail(c.address, &code)) << c.address;
        EXPECT_EQ(c.code, code) << c.address;
    }
}

TEST(EmailCheckerTest, NothingIsSplitBeforeTheFirstTest)
{
    MCEmailAddressChecker checker(L"a@b.c");
    EXPECT_TRUE(checker.GetName().IsEmpty());
    EXPECT_TRUE(checker.GetDomain().IsEmpty());
    EXPECT_TRUE(checker.GetExtension().IsEmpty());
    MCEmailAddressChecker empty;
    EXPECT_EQ(0x00000002u, empty.Test());
}

TEST(EmailCheckerTest, CopiesKeepTheParts)
{
    MCEmailAddressChecker checker(L"Ann@Host.Org");
    ASSERT_EQ(0u, checker.Test());
    MCEmailAddressChecker copy(checker);
    MCEmailAddressChecker assigned;
    assigned = checker;
    for (MCEmailAddressChecker* c : {&copy, &assigned}) {
        EXPECT_STREQ(L"ann", c->GetName());
        EXPECT_STREQ(L"host", c->GetDomain());
        EXPECT_STREQ(L"org", c->GetExtension());
        EXPECT_EQ(0u, c->Test());
    }
}

TEST(EmailCheckerTest, NormalizeChangesNothing)
{
    MCEmailAddressChecker checker(L"A@B.C");
    CString text(L"  Mixed Case ");
    EXPECT_EQ(0u, checker.Normalize(text));
    EXPECT_STREQ(L"  Mixed Case ", text);
}

TEST(EmailCheckerTest, UnreadableInputIsEmpty)
{
    DWORD code = 0;
    EXPECT_FALSE(MErrorUtils::IsValidEmail(NULL, &code));
    EXPECT_EQ(0x00000002u, code);
    EXPECT_FALSE(MErrorUtils::IsValidEmail(L"a@b", NULL));  // a null result pointer is allowed
}

}  // namespace
