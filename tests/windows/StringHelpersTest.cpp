#include <gtest/gtest.h>
#include "MUIUtils.h"

TEST(UIStrings, CompareAndFind)
{
    EXPECT_TRUE(MUIUtils::CompareStrings(L"Abc", L"Abc", true));
    EXPECT_FALSE(MUIUtils::CompareStrings(L"Abc", L"aBC", true));
    EXPECT_TRUE(MUIUtils::CompareStrings(L"Abc", L"aBC", false));
    EXPECT_FALSE(MUIUtils::CompareStrings(L"Abc", L"Abcd", false));

    EXPECT_EQ(2, MUIUtils::FindStr(L"xxabc", L"ABC", false));
    EXPECT_EQ(-1, MUIUtils::FindStr(L"xxabc", L"ABC", true));
    EXPECT_EQ(2, MUIUtils::FindStr(L"xxabc", L"abc", true));
    EXPECT_EQ(-1, MUIUtils::FindStr(L"xxabc", L"abd", false));
}

TEST(UIStrings, NumbersAndReplication)
{
    EXPECT_STREQ(L"-42", MUIUtils::NumberToString(-42));
    EXPECT_EQ(123, MUIUtils::StringToNumber(L"123abc"));
    EXPECT_EQ(0, MUIUtils::StringToNumber(L"abc"));
    EXPECT_EQ(0, MUIUtils::StringToNumber(NULL));
    // Parsed unsigned, returned signed: 4294967295 wraps to -1.
    EXPECT_EQ(-1L, MUIUtils::StringToNumber(L"4294967295"));
    EXPECT_EQ(-17, MUIUtils::ConvertStringToInt(L" -17x"));
    EXPECT_EQ(0, MUIUtils::ConvertStringToInt(L"x"));

    EXPECT_STREQ(L"", MUIUtils::ReplicateChar(L'x', 0));
    EXPECT_STREQ(L"", MUIUtils::ReplicateChar(L'x', -3));
    EXPECT_STREQ(L"xxxx", MUIUtils::ReplicateChar(L'x', 4));
    EXPECT_STREQ(L"   ", MUIUtils::ReplicateSpaces(3));
}

TEST(UIStrings, ClsidText)
{
    GUID clsid = {0x12345678, 0x9ABC, 0xDEF0, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}};
    EXPECT_STREQ(L"{12345678-9ABC-DEF0-0123-456789ABCDEF}", MUIUtils::GetStringFromCLSID(&clsid, false));
    CString bare = MUIUtils::GetStringFromCLSID(&clsid, true);
    EXPECT_EQ(36, bare.GetLength());
    EXPECT_STREQ(L"12345678-9ABC-DEF0-0123-456789ABCDEF", bare);
    EXPECT_STREQ(L"", MUIUtils::GetStringFromCLSID(NULL, true));
}

TEST(UIStrings, ErrorTexts)
{
    ::SetLastError(ERROR_FILE_NOT_FOUND);
    CString known = MUIUtils::GetLastError();
    EXPECT_FALSE(known.IsEmpty());
    EXPECT_EQ(-1, known.Find(L"Error ="));

    // A code the system has no text for: the fallback keeps its trailing space.
    ::SetLastError(0x2FFFFFFF);
    EXPECT_STREQ(L"Error = 805306367 ", MUIUtils::GetLastError());

    EXPECT_FALSE(MUIUtils::GetComError(E_OUTOFMEMORY).IsEmpty());
    EXPECT_STREQ(L"", MUIUtils::GetComError(static_cast<HRESULT>(0xA0FF1234)));
}

TEST(UIStrings, ValidIdNeedsLength)
{
    BSTR empty = ::SysAllocString(L"");
    BSTR id = ::SysAllocString(L"ok");
    EXPECT_FALSE(MUIUtils::IsValidID(NULL));
    EXPECT_FALSE(MUIUtils::IsValidID(empty));
    EXPECT_TRUE(MUIUtils::IsValidID(id));
    ::SysFreeString(empty);
    ::SysFreeString(id);
}

TEST(UIFonts, LogFontCopyKeepsAnExistingFaceName)
{
    LOGFONTW lf = {};
    lf.lfHeight = -13;
    lf.lfWidth = 7;
    lf.lfEscapement = 900;
    lf.lfOrientation = 450;
    lf.lfWeight = FW_BOLD;
    lf.lfItalic = 1;
    lf.lfUnderline = 1;
    lf.lfStrikeOut = 0;
    lf.lfCharSet = RUSSIAN_CHARSET;
    lf.lfOutPrecision = OUT_TT_PRECIS;
    lf.lfClipPrecision = CLIP_STROKE_PRECIS;
    lf.lfQuality = CLEARTYPE_QUALITY;
    lf.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    wcscpy(lf.lfFaceName, L"Tahoma");

    tagGDILogFont fresh = {};
    MUIUtils::LOGFONTtoMDGDILOGFONT(lf, fresh);
    ASSERT_NE(nullptr, fresh.bstrFaceName);
    EXPECT_STREQ(L"Tahoma", fresh.bstrFaceName);
    EXPECT_EQ(-13, fresh.lfHeight);
    EXPECT_EQ(7, fresh.lfWidth);
    EXPECT_EQ(900, fresh.lfEscapement);
    EXPECT_EQ(450, fresh.lfOrientation);
    EXPECT_EQ(FW_BOLD, fresh.lfWeight);
    EXPECT_EQ(1, fresh.lfItalic);
    EXPECT_EQ(1, fresh.lfUnderline);
    EXPECT_EQ(0, fresh.lfStrikeOut);
    EXPECT_EQ(RUSSIAN_CHARSET, fresh.lfCharSet);
    EXPECT_EQ(OUT_TT_PRECIS, fresh.lfOutPrecision);
    EXPECT_EQ(CLIP_STROKE_PRECIS, fresh.lfClipPrecision);
    EXPECT_EQ(CLEARTYPE_QUALITY, fresh.lfQuality);
    EXPECT_EQ(VARIABLE_PITCH | FF_SWISS, fresh.lfPitchAndFamily);
    ::SysFreeString(fresh.bstrFaceName);

    tagGDILogFont named = {};
    named.bstrFaceName = ::SysAllocString(L"Arial");
    MUIUtils::LOGFONTtoMDGDILOGFONT(lf, named);
    EXPECT_STREQ(L"Arial", named.bstrFaceName);
    EXPECT_EQ(-13, named.lfHeight);
    ::SysFreeString(named.bstrFaceName);
}

TEST(UIUnits, PointsAndTwips)
{
    EXPECT_EQ(240, MUIUtils::PointsToTwips(12));
    EXPECT_EQ(1, MUIUtils::TwipsToPoints(39));
    EXPECT_EQ(-1, MUIUtils::TwipsToPoints(-39));
    EXPECT_EQ(0, MUIUtils::TwipsToPoints(19));
}
