#include <gtest/gtest.h>
#include "MCUserNames.h"
#include "MNOwnerUtils.h"

namespace {

struct NamesCase {
    const wchar_t* displayName;
    const wchar_t* id;
    const wchar_t* nickname;
    const wchar_t* firstName;
    const wchar_t* lastName;
    const wchar_t* loginAlias;
    // Expected results
    const wchar_t* fullName;
    const wchar_t* displayed;
    const wchar_t* forLogin;
};

const NamesCase kNamesCases[] = {
    {L"q#EXT", L"id", L"", L"Aa", L"Bb", L"", L"Aa Bb", L"q#EXT", L"id"},
    {L"Chosen", L"id", L"nick", L"Aa", L"Bb", L"alias", L"Chosen", L"Chosen", L"nick"},
    {L"", L"id", L"", L"", L"Bb", L"", L"Bb", L"id", L"id"},
    {L"", L"id", L"", L"Aa", L"", L"", L"Aa", L"id", L"id"},
    {L"", L"id", L"nick", L"", L"", L"alias", L"nick", L"nick", L"nick"},
    {L"x#ext", L"id", L"", L"", L"", L"alias", L"id", L"x#ext", L"alias"},
    {L"#Ext", L"", L"nick", L"", L"", L"", L"nick", L"#Ext", L"nick"},
    {L"ext", L"id", L"", L"", L"", L"", L"ext", L"ext", L"id"},  // too short to be external
    {L"", L"", L"", L"", L"", L"", L"", L"", L""},
};

MCUserNames MakeNames(const NamesCase& c)
{
    MCUserNames names;
    names.m_strDisplayName = c.displayName;
    names.m_strID = c.id;
    names.m_strNickname = c.nickname;
    names.m_strFirstName = c.firstName;
    names.m_strLastName = c.lastName;
    names.m_strLoginAlias = c.loginAlias;
    return names;
}

TEST(UserNamesTest, FormatsByPreference)
{
    for (const NamesCase& c : kNamesCases) {
        SCOPED_TRACE(testing::Message() << "display '" << c.displayName << "' id '" << c.id << "'");
        MCUserNames names = MakeNames(c);
        EXPECT_STREQ(c.fullName, names.FormatFullName());
        EXPECT_STREQ(c.displayed, names.FormatDisplayName());
        EXPECT_STREQ(c.forLogin, names.FormatDisplayNameForLogin());
        EXPECT_STREQ(c.forLogin, MNOwnerUtils::FormatDisplayName(names.m_strID, names.m_strNickname,
                                                                 names.m_strLoginAlias));
    }
}

TEST(UserNamesTest, CopiesCarryAllSixStrings)
{
    MCUserNames names = MakeNames({L"d", L"i", L"n", L"f", L"l", L"a", L"", L"", L""});
    MCUserNames copy(names);
    MCUserNames assigned;
    assigned = names;
    for (const MCUserNames* n : {&copy, &assigned}) {
        EXPECT_STREQ(L"d", n->m_strDisplayName);
        EXPECT_STREQ(L"i", n->m_strID);
        EXPECT_STREQ(L"n", n->m_strNickname);
        EXPECT_STREQ(L"f", n->m_strFirstName);
        EXPECT_STREQ(L"l", n->m_strLastName);
        EXPECT_STREQ(L"a", n->m_strLoginAlias);
    }
}

TEST(UserNamesTest, ExternalSuffixIgnoresCase)
{
    MCUserNames names;
    struct Case {
        const wchar_t* id;
        bool external;
    } const cases[] = {
        {L"name#ext", true}, {L"NAME#EXT", true}, {L"#eXt", true},  {L"#ex", false},
        {L"name#ext ", false}, {L"name#exta", false}, {L"", false}, {L"ext", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.external, names.IsExternalID(CString(c.id))) << c.id;
}

TEST(OwnerUtilsTest, AnalyzeTrimsAndClassifies)
{
    struct Case {
        const wchar_t* text;
        MELoginIDType type;
        const wchar_t* trimmed;
    } const cases[] = {
        {L"  123456 ", LoginIDVLRNumber, L"123456"},
        {L"abc12", LoginIDTesvor, L"abc12"},
        {L"9999", LoginIDUnknown, L"9999"},
        {L"\tUser@Example.com\n", LoginIDEmail, L"User@Example.com"},  // the checker lower-cases its own copy
        {L"", LoginIDUnknown, L""},
        {L"   ", LoginIDUnknown, L""},
        {L"ab", LoginIDUnknown, L"ab"},
        {L"a_b_c", LoginIDUnknown, L"a_b_c"},
        {L"12345678901234567", LoginIDUnknown, L"12345678901234567"},
        {L"x1234567", LoginIDTesvor, L"x1234567"},
    };
    for (const Case& c : cases) {
        CString text(c.text);
        EXPECT_EQ(c.type, MNOwnerUtils::AnalyzeUIDString(text)) << c.text;
        EXPECT_STREQ(c.trimmed, text) << c.text;
    }
}

TEST(OwnerUtilsTest, CleanRemovesControlsSpacesAndSymbols)
{
    struct Case {
        const wchar_t* text;
        const wchar_t* symbols;
        const wchar_t* cleaned;
    } const cases[] = {
        {L"a b-c", L"-", L"abc"},
        {L"\t(0)12\r\n-34 ", L"()-", L"01234"},
        {L"a!b", L"", L"a!b"},
        {L"", L"-", L""},
        {L"\x00A0x\x0001y\x007F", L"", L"\x00A0xy\x007F"},  // only codes up to 32 count as blanks
    };
    for (const Case& c : cases)
        EXPECT_STREQ(c.cleaned, MNOwnerUtils::CleanStringFromSymbols(CString(c.text), CString(c.symbols)))
            << c.text;
}

}  // namespace
