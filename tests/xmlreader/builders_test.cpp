// Window, control, footer, font and schema records built from hand-written descriptions.
#include <gtest/gtest.h>
#include <TesvorUtil.h>
#include "TestSupport.h"

namespace {

using FontTable = MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>;
using ControlTable = MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>;

const MEControlType kWindowType = static_cast<MEControlType>(1);
const MEControlType kButton = static_cast<MEControlType>(3);
const MEControlType kEdit = static_cast<MEControlType>(4);
const MEControlType kGroupBox = static_cast<MEControlType>(12);

template <class Map, class Value>
void DeleteValues(Map& map)
{
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        CString key;
        Value value = nullptr;
        map.GetNextAssoc(position, key, value);
        delete value;
    }
    map.RemoveAll();
}

class BuildersTest : public ::testing::Test {
protected:
    void Open(const wchar_t* file)
    {
        ASSERT_EQ(S_OK, reader.Open(TestDataPath(CString(L"xmlreader\\dialogs\\") + file), 0));
    }
    const MCUIDataControl* ControlByIds(const MCUIWindowData& window, const wchar_t* ids)
    {
        for (INT_PTR i = 0; i < window.arrControls.GetSize(); ++i)
            if (window.arrControls[i]->strIDS == ids)
                return window.arrControls[i];
        ADD_FAILURE() << "no control " << ids;
        return nullptr;
    }
    void TearDown() override
    {
        DeleteValues<FontTable, MCUIDataFont*>(fonts);
        DeleteValues<ControlTable, MCUIDataControl*>(controls);
    }

    MCXMLReader reader;
    FontTable fonts;
    ControlTable controls;
};

void ExpectRect(const CRect& actual, LONG l, LONG t, LONG r, LONG b)
{
    EXPECT_EQ(l, actual.left);
    EXPECT_EQ(t, actual.top);
    EXPECT_EQ(r, actual.right);
    EXPECT_EQ(b, actual.bottom);
}

TEST_F(BuildersTest, WindowTakesRectExOverRectAndReadsItsOwnFieldsAndFooter)
{
    Open(L"controls.xml");
    MCUIWindowData window;
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    ExpectRect(window.rcRect, 10, 20, 110, 70);
    EXPECT_EQ(L"form", window.strSkinForm);
    EXPECT_EQ(2, window.eMoveType);
    EXPECT_EQ(2, window.eResizeType);
    EXPECT_EQ(2, window.eWindowType);
    EXPECT_EQ(L"Ready", window.footer.strStatus);
    EXPECT_EQ(77u, window.footer.dwStatusID);
    EXPECT_EQ(19, window.arrControls.GetSize());
}

TEST_F(BuildersTest, ControlWithoutAttributesKeepsEveryDefaultAndStillReadsItsFont)
{
    Open(L"controls.xml");
    MCUIWindowData window;
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    const MCUIDataControl& bare = *window.arrControls[0];
    const MCUIDataControl defaults;
    EXPECT_EQ(1, bare.eType);
    EXPECT_EQ(1, bare.eState);
    EXPECT_EQ(1, bare.eWindowType);
    EXPECT_TRUE(bare.bEnabled);
    EXPECT_TRUE(bare.bVisible);
    EXPECT_TRUE(bare.bAutoSkin);
    EXPECT_FALSE(bare.bActualSize);
    EXPECT_TRUE(bare.strIDS.IsEmpty() && bare.strText.IsEmpty() && bare.strSkinPhObjPath.IsEmpty());
    EXPECT_EQ(defaults.rcRect, bare.rcRect);
    EXPECT_EQ(defaults.rcAnchors, bare.rcAnchors);
    EXPECT_EQ(0u, bare.dwIDV + bare.dwTextID + bare.dwToolTipID + bare.dwSt + bare.dwStEx + bare.dwReserved);
    EXPECT_EQ(0, bare.nCxMin + bare.nCyMin + bare.nCxMax + bare.nCyMax);
    EXPECT_FALSE(bare.font.bSchemaOnly);
    EXPECT_EQ(-9, bare.font.logFont.lfHeight);
    EXPECT_STREQ(L"Arial", bare.font.logFont.lfFaceName);
}

TEST_F(BuildersTest, SkinObjectPathSuppressesAnchorsAndLimits)
{
    Open(L"controls.xml");
    MCUIWindowData window;
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    const MCUIDataControl* skinned = ControlByIds(window, L"skinpath");
    ASSERT_NE(nullptr, skinned);
    EXPECT_EQ(L"obj/path", skinned->strSkinPhObjPath);
    ExpectRect(skinned->rcAnchors, 0, 0, 0, 0);
    EXPECT_EQ(0, skinned->nCxMin + skinned->nCyMin + skinned->nCxMax + skinned->nCyMax);

    const MCUIDataControl* plain = ControlByIds(window, L"limits");
    ASSERT_NE(nullptr, plain);
    ExpectRect(plain->rcAnchors, 10, 20, 30, 40);
    EXPECT_EQ(1, plain->nCxMin);
    EXPECT_EQ(2, plain->nCyMin);
    EXPECT_EQ(3, plain->nCxMax);
    EXPECT_EQ(4, plain->nCyMax);
}

TEST_F(BuildersTest, AnchorLettersAndNumbers)
{
    struct Case { const wchar_t* ids; LONG l, t, r, b; };
    const Case cases[] = {
        {L"letters RB", 100, 100, 100, 100},   // upper case is folded
        {L"letters rtlb", 0, 0, 0, 0},         // left 100 beyond right 0
        {L"letters cc", 50, 50, 50, 50},       // blanks around are trimmed
        {L"letters lt", 0, 0, 0, 0},           // unknown letters mean the near edge
        {L"letters ltrb", 0, 0, 100, 100},
        {L"letters three", 0, 0, 0, 0},
        {L"letters empty", 0, 0, 0, 0},        // present but empty: the numbers are not tried
        {L"numbers commas", 0, 0, 100, 100},
        {L"numbers blanks", 0, 0, 100, 100},
        {L"numbers extra", 5, 10, 50, 60},     // tokens after the fourth are ignored
        {L"numbers over", 0, 0, 0, 0},
        {L"numbers crossed", 0, 0, 0, 0},
        {L"numbers three", 0, 0, 0, 0},
        {L"numbers text", 0, 0, 50, 100},      // a token without digits is 0; digits stop at text
    };
    Open(L"controls.xml");
    MCUIWindowData window;
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ids);
        const MCUIDataControl* control = ControlByIds(window, c.ids);
        ASSERT_NE(nullptr, control);
        ExpectRect(control->rcAnchors, c.l, c.t, c.r, c.b);
    }
}

TEST_F(BuildersTest, RectAloneKeywordsAndExplicitWindowed)
{
    Open(L"controls.xml");
    MCUIWindowData window;
    window.arrControls.Add(new MCUIDataControl);   // the reader appends after it
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    EXPECT_EQ(20, window.arrControls.GetSize());
    ExpectRect(ControlByIds(window, L"rectonly")->rcRect, 16, 0, 0, 8);

    const MCUIDataControl* windowed = ControlByIds(window, L"windowed");
    EXPECT_EQ(1, windowed->eWindowType);
    EXPECT_EQ(1, windowed->eType);   // keywords are case-sensitive
    EXPECT_EQ(3, windowed->eState);
}

TEST_F(BuildersTest, FaceNameCopiedOnlyWhenItFitsAndPitchFamilyAlwaysReplaced)
{
    Open(L"fonts.xml");
    MCUIWindowData window;
    wcscpy(window.font.logFont.lfFaceName, L"Kept");
    window.font.logFont.lfPitchAndFamily = 0x22;
    window.eWindowType = static_cast<MEControlWindowType>(2);
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    EXPECT_EQ(1, window.eWindowType);   // windowless="0" is written, not skipped
    EXPECT_STREQ(L"Kept", window.font.logFont.lfFaceName);   // 32 characters do not fit
    EXPECT_EQ(700, window.font.logFont.lfWeight);
    EXPECT_EQ(0, window.font.logFont.lfPitchAndFamily);      // neither given: reset to 0

    const MCUIDataControl* face31 = ControlByIds(window, L"face31");
    EXPECT_STREQ(L"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234", face31->font.logFont.lfFaceName);
    EXPECT_EQ(1 | 16, face31->font.logFont.lfPitchAndFamily);
    EXPECT_EQ(2, ControlByIds(window, L"pitchonly")->font.logFont.lfPitchAndFamily);
}

TEST_F(BuildersTest, FontSchemasSkipChildrenOnlyForExplicitSchemaOnlyAndKeepTheFirstDuplicate)
{
    Open(L"fonts.xml");
    ASSERT_EQ(S_OK, reader.GetAllFontsSchemaData(fonts));
    EXPECT_EQ(3, fonts.GetCount());   // "skipped", "read" and the empty name

    MCUIDataFont* skipped = nullptr;
    ASSERT_TRUE(fonts.Lookup(L"skipped", skipped));
    EXPECT_TRUE(skipped->bSchemaOnly);
    EXPECT_EQ(0, skipped->logFont.lfHeight);
    EXPECT_EQ(0, skipped->textStyle.eEffect);

    MCUIDataFont* read = nullptr;
    ASSERT_TRUE(fonts.Lookup(L"read", read));
    EXPECT_TRUE(read->bSchemaOnly);   // absent: the default stays, the children are read all the same
    const MCSkinTextStyle& style = read->textStyle;
    EXPECT_EQ(2, style.eEffect);
    EXPECT_EQ(10, style.eFlags);
    EXPECT_EQ(1, style.rgbText.red);
    EXPECT_EQ(3, style.rgbText.blue);
    EXPECT_EQ(10, style.argbEffect.red);
    EXPECT_EQ(40, style.argbEffect.alpha);
    EXPECT_TRUE(style.bEllipsis);
    EXPECT_FALSE(style.bRightToLeft);   // only "1" is true
    const LOGFONTW& lf = read->logFont;
    EXPECT_EQ(-20, lf.lfHeight);
    EXPECT_EQ(7, lf.lfWidth);
    EXPECT_EQ(900, lf.lfEscapement);
    EXPECT_EQ(450, lf.lfOrientation);
    EXPECT_EQ(1, lf.lfItalic);
    EXPECT_EQ(1, lf.lfUnderline);
    EXPECT_EQ(0, lf.lfStrikeOut);   // 256 does not fit a byte
    EXPECT_EQ(550, lf.lfWeight);
    EXPECT_EQ(136, lf.lfCharSet);
    EXPECT_EQ(10, lf.lfOutPrecision);
    EXPECT_EQ(3, lf.lfClipPrecision);   // the output precision table serves both
    EXPECT_EQ(0, lf.lfQuality);         // "cleartype" resolves to nothing
    EXPECT_STREQ(L"Read", lf.lfFaceName);

    MCUIDataFont* unnamed = nullptr;
    ASSERT_TRUE(fonts.Lookup(L"", unnamed));
    EXPECT_FALSE(unnamed->bSchemaOnly);   // the first of the two unnamed ones
}

TEST_F(BuildersTest, ControlSchemasHoldOneTypeAndKeepTheFirstDuplicate)
{
    Open(L"schemas.xml");
    ASSERT_EQ(S_OK, reader.GetAllControlsSchemaDataByType(kButton, controls));
    EXPECT_EQ(2, controls.GetCount());
    MCUIDataControl* ok = nullptr;
    ASSERT_TRUE(controls.Lookup(L"ok", ok));
    EXPECT_EQ(L"first", ok->strSkinObjName);
    MCUIDataControl* unnamed = nullptr;
    ASSERT_TRUE(controls.Lookup(L"", unnamed));
    EXPECT_TRUE(unnamed->strSkinObjName.IsEmpty());

    ControlTable windows;
    ASSERT_EQ(S_OK, reader.GetAllControlsSchemaDataByType(kWindowType, windows));
    EXPECT_EQ(1, windows.GetCount());
    DeleteValues<ControlTable, MCUIDataControl*>(windows);

    ASSERT_EQ(S_OK, reader.GetAllControlsSchemaDataByType(kEdit, controls));
    EXPECT_EQ(3, controls.GetCount());   // added to what the table held
    ASSERT_EQ(S_OK, reader.GetAllControlsSchemaDataByType(kGroupBox, controls));
    EXPECT_EQ(3, controls.GetCount());
}

TEST_F(BuildersTest, NothingOpenOrNothingThere)
{
    MCUIWindowData window;
    EXPECT_EQ(E_FAIL, reader.GetDialogData(window));
    EXPECT_EQ(E_FAIL, reader.GetAllFontsSchemaData(fonts));
    EXPECT_EQ(E_FAIL, reader.GetAllControlsSchemaDataByType(kButton, controls));

    Open(L"schemas.xml");
    window.strSkinForm = L"untouched";
    EXPECT_EQ(S_FALSE, reader.GetDialogData(window));
    EXPECT_EQ(L"untouched", window.strSkinForm);
    EXPECT_EQ(S_OK, reader.GetAllFontsSchemaData(fonts));
    EXPECT_EQ(0, fonts.GetCount());
}

TEST(WindowRecordTest, CopiesOwnTheirControls)
{
    MCUIWindowData window;
    window.arrControls.Add(new MCUIDataControl);
    window.arrControls[0]->strIDS = L"one";
    MCUIWindowData copy(window);
    ASSERT_EQ(1, copy.arrControls.GetSize());
    EXPECT_NE(window.arrControls[0], copy.arrControls[0]);
    EXPECT_EQ(L"one", copy.arrControls[0]->strIDS);
    MCUIWindowData assigned;
    assigned.arrControls.Add(new MCUIDataControl);
    assigned.arrControls.Add(new MCUIDataControl);
    assigned = window;
    ASSERT_EQ(1, assigned.arrControls.GetSize());
    EXPECT_EQ(L"one", assigned.arrControls[0]->strIDS);
}

}  // namespace
