// String, number, error-text and font-record helpers.
#include <gtest/gtest.h>
#include "MUIUtils.h"
#include "TestSupport.h"
#include "frame/Owners.h"

TEST(UIStrings, CompareFindNumbersAndReplication)
{
    const Values results = {
        MUIUtils::CompareStrings(L"Abc", L"Abc", true), MUIUtils::CompareStrings(L"Abc", L"aBC", true),
        MUIUtils::CompareStrings(L"Abc", L"aBC", false), MUIUtils::CompareStrings(L"Abc", L"Abcd", false),
        MUIUtils::FindStr(L"xxabc", L"ABC", false), MUIUtils::FindStr(L"xxabc", L"ABC", true),
        MUIUtils::FindStr(L"xxabc", L"abc", true), MUIUtils::FindStr(L"xxabc", L"abd", false),
        MUIUtils::StringToNumber(L"123abc"), MUIUtils::StringToNumber(L"abc"), MUIUtils::StringToNumber(NULL),
        MUIUtils::StringToNumber(L"4294967295"),  // wraps to -1
        MUIUtils::ConvertStringToInt(L" -17x"), MUIUtils::ConvertStringToInt(L"x")};
    EXPECT_EQ((Values{1, 0, 1, 0, 2, -1, 2, -1, 123, 0, 0, -1, -17, 0}), results);

    GUID clsid = {0x12345678, 0x9ABC, 0xDEF0, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}};
    EXPECT_EQ((std::vector<CString>{L"-42", L"", L"", L"xxxx", L"   ", L"{12345678-9ABC-DEF0-0123-456789ABCDEF}",
                                    L"12345678-9ABC-DEF0-0123-456789ABCDEF", L""}),
              (std::vector<CString>{MUIUtils::NumberToString(-42), MUIUtils::ReplicateChar(L'x', 0),
                                    MUIUtils::ReplicateChar(L'x', -3), MUIUtils::ReplicateChar(L'x', 4),
                                    MUIUtils::ReplicateSpaces(3), MUIUtils::GetStringFromCLSID(&clsid, false),
                                    MUIUtils::GetStringFromCLSID(&clsid, true), MUIUtils::GetStringFromCLSID(NULL, true)}));
}

TEST(UIStrings, ErrorTextsAndIds)
{
    ::SetLastError(ERROR_FILE_NOT_FOUND);
    const CString known = MUIUtils::GetLastError();
    EXPECT_FALSE(known.IsEmpty());
    EXPECT_EQ(-1, known.Find(L"Error ="));
    ::SetLastError(0x2FFFFFFF);  // no system text: the fallback keeps its trailing space
    EXPECT_EQ(CString(L"Error = 805306367 "), MUIUtils::GetLastError());
    EXPECT_FALSE(MUIUtils::GetComError(E_OUTOFMEMORY).IsEmpty());
    EXPECT_EQ(CString(), MUIUtils::GetComError(static_cast<HRESULT>(0xA0FF1234)));

    UniqueAny<BSTR, ::SysFreeString> empty(::SysAllocString(L"")), id(::SysAllocString(L"ok"));
    EXPECT_FALSE(MUIUtils::IsValidID(NULL));
    EXPECT_FALSE(MUIUtils::IsValidID(empty.get()));
    EXPECT_TRUE(MUIUtils::IsValidID(id.get()));
}

TEST(UIFonts, LogFontCopyKeepsAnExistingFaceName)
{
    const LOGFONTW lf = {-13, 7, 900, 450, FW_BOLD, 1, 1, 0, RUSSIAN_CHARSET, OUT_TT_PRECIS, CLIP_STROKE_PRECIS,
                         CLEARTYPE_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Tahoma"};
    tagGDILogFont fresh = {}, named = {};
    named.bstrFaceName = ::SysAllocString(L"Arial");
    MUIUtils::LOGFONTtoMDGDILOGFONT(lf, fresh);
    MUIUtils::LOGFONTtoMDGDILOGFONT(lf, named);
    for (const tagGDILogFont* f : {&fresh, &named}) {
        EXPECT_EQ((Values{-13, 7, 900, 450, FW_BOLD, 1, 1, 0, RUSSIAN_CHARSET, OUT_TT_PRECIS, CLIP_STROKE_PRECIS,
                          CLEARTYPE_QUALITY, VARIABLE_PITCH | FF_SWISS}),
                  (Values{f->lfHeight, f->lfWidth, f->lfEscapement, f->lfOrientation, f->lfWeight, f->lfItalic,
                          f->lfUnderline, f->lfStrikeOut, f->lfCharSet, f->lfOutPrecision, f->lfClipPrecision,
                          f->lfQuality, f->lfPitchAndFamily}));
    }
    EXPECT_STREQ(L"Tahoma", fresh.bstrFaceName);
    EXPECT_STREQ(L"Arial", named.bstrFaceName);
    ::SysFreeString(fresh.bstrFaceName);
    ::SysFreeString(named.bstrFaceName);
}
