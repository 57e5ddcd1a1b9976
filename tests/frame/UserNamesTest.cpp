// Display names by preference, and login identifiers told apart.
#include <gtest/gtest.h>
#include "MCUserNames.h"
#include "MNOwnerUtils.h"

namespace {

TEST(UserNamesTest, FormatsByPreferenceAndCopiesAllSixStrings)
{
    struct Case {
        const wchar_t* names[6];  // display name, id, nickname, first, last, login alias
        const wchar_t* fullName;
        const wchar_t* displayed;
        const wchar_t* forLogin;
    } const cases[] = {
        {{L"q#EXT", L"id", L"", L"Aa", L"Bb", L""}, L"Aa Bb", L"q#EXT", L"id"},
        {{L"Chosen", L"id", L"nick", L"Aa", L"Bb", L"alias"}, L"Chosen", L"Chosen", L"nick"},
        {{L"", L"id", L"", L"", L"Bb", L""}, L"Bb", L"id", L"id"},
        {{L"", L"id", L"", L"Aa", L"", L""}, L"Aa", L"id", L"id"},
        {{L"", L"id", L"nick", L"", L"", L"alias"}, L"nick", L"nick", L"nick"},
        {{L"x#ext", L"id", L"", L"", L"", L"alias"}, L"id", L"x#ext", L"alias"},
        {{L"#Ext", L"", L"nick", L"", L"", L""}, L"nick", L"#Ext", L"nick"},
        // Not external: too short for the "#ext" suffix, or anything after it.
        {{L"ext", L"id", L"", L"", L"", L""}, L"ext", L"ext", L"id"},
        {{L"#ex", L"id", L"", L"Aa", L"", L""}, L"#ex", L"#ex", L"id"},
        {{L"name#ext ", L"id", L"", L"Aa", L"", L""}, L"name#ext ", L"name#ext ", L"id"},
        {{L"name#exta", L"id", L"", L"Aa", L"", L""}, L"name#exta", L"name#exta", L"id"},
        {{L"", L"", L"", L"", L"", L""}, L"", L"", L""},
    };
    for (const Case& c : cases) {
        MCUserNames filled;
        CString* fields[] = {&filled.m_strDisplayName, &filled.m_strID,       &filled.m_strNickname,
                             &filled.m_strFirstName,   &filled.m_strLastName, &filled.m_strLoginAlias};
        for (int i = 0; i < 6; ++i)
            *fields[i] = c.names[i];
        MCUserNames copy(filled), assigned;
        assigned = filled;
        for (MCUserNames* names : {&filled, &copy, &assigned}) {
            SCOPED_TRACE(testing::Message() << "display '" << c.names[0] << "' last '" << c.names[4] << "'");
            EXPECT_STREQ(c.fullName, names->FormatFullName());
            EXPECT_STREQ(c.displayed, names->FormatDisplayName());
            EXPECT_STREQ(c.forLogin, names->FormatDisplayNameForLogin());
            EXPECT_STREQ(c.forLogin, MNOwnerUtils::FormatDisplayName(names->m_strID, names->m_strNickname,
                                                                     names->m_strLoginAlias));
        }
    }
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
        {L"a_b_c", LoginIDUnknown, L"a_b_c"},  // where each kind ends is for the validators' tests
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
        EXPECT_STREQ(c.cleaned, MNOwnerUtils::CleanStringFromSymbols(CString(c.text), CString(c.symbols))) << c.text;
}

}  // namespace
