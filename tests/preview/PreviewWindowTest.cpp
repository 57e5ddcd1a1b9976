// The preview window built from tests/data/preview/layout.xml, read back from the
// real windows.
#include <gtest/gtest.h>
#include <DialogPreview.h>
#include "TestSupport.h"

namespace {

class PreviewWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        MCXMLReader reader;
        ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"preview\\layout.xml"), 0));
        ASSERT_EQ(S_OK, model.Read(reader));
        CString error;
        ASSERT_TRUE(window.Create(model, error)) << static_cast<const wchar_t*>(error);
    }

    HWND Control(const wchar_t* ids) const
    {
        for (size_t i = 0; i < model.controls.size(); ++i) {
            if (model.controls[i].record->strIDS == ids)
                return window.ControlWindow(i);
        }
        return nullptr;
    }

    // The control's rectangle in the window's client area.
    CRect RectOf(const wchar_t* ids) const
    {
        CRect rect;
        ::GetWindowRect(Control(ids), &rect);
        ::MapWindowPoints(nullptr, window.Handle(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    preview::DialogModel model;
    preview::PreviewWindow window;
};

struct Placement {
    const wchar_t* ids;
    CRect at[3];  // at each of kSizes
};

// The size asked for and the size given: as described, larger, and below the window's least size.
const CSize kSizes[][2] = {{{400, 300}, {400, 300}}, {{500, 350}, {500, 350}}, {{200, 100}, {300, 200}}};

TEST_F(PreviewWindowTest, ControlsFollowTheirAnchorsWithinTheirLimits)
{
    const Placement placements[] = {
        {L"IDC_FIXED", {{10, 10, 110, 30}, {10, 10, 110, 30}, {10, 10, 110, 30}}},
        {L"IDC_CORNER", {{300, 260, 390, 290}, {400, 310, 490, 340}, {200, 160, 290, 190}}},
        {L"IDC_WIDE", {{10, 40, 390, 64}, {10, 40, 490, 64}, {10, 40, 290, 64}}},
        // Width held at cxmax when larger, height at cymin when smaller.
        {L"IDC_AREA", {{10, 70, 390, 170}, {10, 70, 460, 220}, {10, 70, 290, 150}}},
        {L"IDC_HALF", {{10, 180, 210, 200}, {10, 180, 260, 200}, {10, 180, 160, 200}}},
        {L"IDC_CENTRED", {{150, 210, 250, 226}, {200, 235, 300, 251}, {100, 160, 200, 176}}},
        {L"IDC_HIDDEN", {{10, 230, 110, 250}, {10, 230, 110, 250}, {10, 230, 110, 250}}},
    };
    for (int size = 0; size < 3; ++size) {
        if (size > 0) {  // the first layout is the one the window is built with
            EXPECT_EQ(kSizes[size][1], window.Resize(kSizes[size][0]));
        }
        for (const Placement& placement : placements)
            EXPECT_EQ(placement.at[size], RectOf(placement.ids)) << placement.ids << " at size " << size;
    }
}

struct Shown {
    const wchar_t* ids;
    const wchar_t* windowClass;
    const wchar_t* text;
    bool visible;
    bool enabled;
};

TEST_F(PreviewWindowTest, EachControlIsTheStandardControlOfItsType)
{
    const Shown shown[] = {
        {L"IDC_FIXED", L"Static", L"Fixed", true, true},
        {L"IDC_CORNER", L"Button", L"Corner", true, true},
        {L"IDC_HALF", L"Button", L"Text from the table", true, true},
        {L"IDC_AREA", L"ListBox", L"", true, true},
        {L"IDC_HIDDEN", L"msctls_trackbar32", L"", false, false},
        // Skin-only types, and an image button without a picture: labelled boxes.
        {L"IDC_TABS", L"TesvorPreviewBox", L"tabbar IDC_TABS", true, true},
        {L"IDC_PICTURE", L"TesvorPreviewBox", L"imagebutton IDC_PICTURE", true, true},
    };
    window.Show();  // the controls are built hidden
    for (const Shown& expected : shown) {
        HWND control = Control(expected.ids);
        wchar_t text[64] = L"", windowClass[64] = L"";
        ::GetWindowTextW(control, text, 64);
        ::GetClassNameW(control, windowClass, 64);
        EXPECT_STREQ(expected.windowClass, windowClass) << expected.ids;
        EXPECT_STREQ(expected.text, text) << expected.ids;
        EXPECT_EQ(expected.visible, (::GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0) << expected.ids;
        EXPECT_EQ(expected.enabled, ::IsWindowEnabled(control) != FALSE) << expected.ids;
    }
    wchar_t title[64] = L"";
    ::GetWindowTextW(window.Handle(), title, 64);
    EXPECT_STREQ(L"Layout test", title);
    ASSERT_EQ(1u, model.warnings.size());
    EXPECT_NE(-1, model.warnings[0].Find(L"IDC_PICTURE"));

    // The window's font schema reaches controls without a font of their own.
    LOGFONTW font = {};
    ASSERT_NE(0, ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(Control(L"IDC_FIXED"), WM_GETFONT, 0, 0)),
                              sizeof(font), &font));
    EXPECT_EQ((Values{-13, FW_BOLD}), (Values{font.lfHeight, font.lfWeight}));
    EXPECT_STREQ(L"Tahoma", font.lfFaceName);
}

TEST_F(PreviewWindowTest, LiveWindowEndsWhenClosed)
{
    HWND handle = window.Handle();
    ASSERT_TRUE(::PostMessageW(handle, WM_CLOSE, 0, 0));
    EXPECT_EQ(0, window.RunUntilClosed());
    EXPECT_FALSE(::IsWindow(handle));
}

}  // namespace
