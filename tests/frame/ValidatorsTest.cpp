// Validators of VLR numbers, Tesvor IDs and e-mail addresses.
#include <gtest/gtest.h>
#include "MCEmailAddressChecker.h"
#include "MErrorUtils.h"

namespace {

TEST(CharacterClassTest, AsciiLettersAndDigitsOnly)
{
    const wchar_t* const letters = L"AZaz";
    const wchar_t* const digits = L"09";
    // Neighbours of the ranges, blanks, punctuation and non-ASCII letters and digits.
    const wchar_t others[] = {L'@', L'[', L'`', L'{', L'/', L':', L' ', L'_', L'\0', 0x00E9, 0x0663, 0xFF21};
    for (const wchar_t* c = letters; *c; ++c)
        EXPECT_TRUE(MErrorUtils::IsAlpha(*c, L"@_ ") && MErrorUtils::IsAlphaNum(*c, L"@_ ")) << *c;
    for (const wchar_t* c = digits; *c; ++c)
        EXPECT_TRUE(!MErrorUtils::IsAlpha(*c, L"@_ ") && MErrorUtils::IsAlphaNum(*c, L"@_ ")) << *c;
    for (wchar_t c : others)  // the extra characters are ignored
        EXPECT_TRUE(!MErrorUtils::IsAlpha(c, L"@_ ") && !MErrorUtils::IsAlphaNum(c, L"@_ ")) << static_cast<int>(c);
}

TEST(VLRNumberTest, RangeAndDigitsOnlyText)
{
    // Once the text is read, both columns come from the number overload: its bounds show here.
    struct Case {
        const wchar_t* text;
        bool valid;      // IsValidVLRNumber(text)
        UINT converted;  // ConvertStringToVLRNumber(text)
    } const cases[] = {
        {L"10000", true, 10000},       {L"010000", true, 10000},          {L" 10000", false, 10000},
        {L"+10000", false, 10000},     {L"12345abc", false, 12345},       {L"9999", false, 0},
        {L"2147483646", true, 2147483646}, {L"2147483647", false, 0},    {L"99999999999", false, 0},  // saturates
        {L"-10000", false, 0},         {L"", false, 0},                   {L"abc", false, 0},
        {L"10000 ", false, 10000},     {NULL, false, 0},                  {L"0", false, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.valid, MErrorUtils::IsValidVLRNumber(c.text)) << (c.text ? c.text : L"(null)");
        EXPECT_EQ(c.converted, MErrorUtils::ConvertStringToVLRNumber(c.text)) << (c.text ? c.text : L"(null)");
    }
}

TEST(TesvorIDTest, LengthFirstCharacterAndAlphabet)
{
    // 16 characters fit, 17 do not; no trimming.
    for (const wchar_t* id : {L"abc", L"ABC", L"a1b", L"abcdefghijklmnop"})
        EXPECT_TRUE(MErrorUtils::IsValidTesvorID(CString(id))) << id;
    for (const wchar_t* id : {L"ab", L"1ab", L"abcdefghijklmnopq", L"ab_c", L"ab c", L" abc", L"abc\x00E9", L""})
        EXPECT_FALSE(MErrorUtils::IsValidTesvorID(CString(id))) << id;
}

TEST(EmailCheckerTest, ResultCodesAndParts)
{
    struct Case {
        const wchar_t* address;
        DWORD code;
        const wchar_t* parts;  // name|domain|extension after Test
    } const cases[] = {
        {L"a@b.c", 0, L"a|b|c"},
        {L"  John.Doe@Example.COM \t", 0, L"john.doe|example|com"},
        {L"user@mail.example.de", 0, L"user|mail.example|de"},
        {L"a@b_c-d.info", 0, L"a|b_c-d|info"},
        {L"!#$%@b.c", 0, L"!#$%|b|c"},  // the name takes anything but a space
        {L"a@b.museum", 0x40000020, L"a|b|museum"},
        {L"a b@c.de", 0x10000080, L"a b|c|de"},
        {L"a@b!.de", 0x20000010, L"a|b!|de"},
        {L"a@b c.de", 0x20000010, L"a|b c|de"},
        {L"a@b@c.de", 0x20000040, L"a|b@c|de"},
        {L"a@b.d3", 0x40000040, L"a|b|d3"},
        {L"a@b.d e", 0x40000040, L"a|b|d e"},
        {L"@b.de", 0x10000002, L"|b|de"},
        {L"a@.de", 0x20000002, L"a||de"},
        {L"a@bde", 0x40000002, L"a|bde|"},
        {L"a@b.", 0x40000002, L"a|b|"},
        {L"", 0x00000002, L"||"},
        {L" \t ", 0x00000002, L"||"},
        {L"first.last@host", 0x20000002, L"first.last||last@host"},
        {L"nobody.de", 0x10000002, L"|nobody|de"},
        {NULL, 0x00000002, L"||"},
    };
    for (const Case& c : cases) {
        const wchar_t* label = c.address != NULL ? c.address : L"(null)";
        MCEmailAddressChecker checker(c.address);
        EXPECT_STREQ(L"||", checker.GetName() + L"|" + checker.GetDomain() + L"|" + checker.GetExtension())
            << label << ": nothing is split before the first test";
        EXPECT_EQ(c.code, checker.Test()) << label;
        MCEmailAddressChecker copy(checker), assigned;
        assigned = checker;
        for (MCEmailAddressChecker* k : {&checker, &copy, &assigned})
            EXPECT_STREQ(c.parts, k->GetName() + L"|" + k->GetDomain() + L"|" + k->GetExtension()) << label;
        EXPECT_EQ(c.code, copy.Test()) << label;

        DWORD code = 0xDEADBEEF;
        EXPECT_EQ(c.code == 0, MErrorUtils::IsValidEmail(c.address, &code)) << label;
        EXPECT_EQ(c.code, code) << label;
    }
    EXPECT_EQ(0x00000002u, MCEmailAddressChecker().Test());

    CString text(L"  Mixed Case ");
    EXPECT_EQ(0u, MCEmailAddressChecker(L"A@B.C").Normalize(text));
    EXPECT_STREQ(L"  Mixed Case ", text);
}

}  // namespace
