// Image lists of UI descriptions made live from the 8-by-6 test picture, as a
// file and as a bitmap resource: the pixels of every image, mirrored or not,
// icons, cursors with their hot spots, and failures that leave nothing behind.
#include <gtest/gtest.h>
#include <string>
#include "DrawingTestResources.h"
#include "DrawingTestSupport.h"
#include "MCUIImageList.h"
#include "MCUIImageListData.h"
#include "MImageUtils.h"
#include "TestSupport.h"

namespace {

const COLORREF kBack = RGB(0, 255, 0);
const int kTransparentColumn = 6;  // its colour is the mask below

// Two images 4 pixels wide, named "a" and "b"; a cursor list puts b's hot spot at (3, 5).
void MakeStrip(MCUIImageListData& data, MEUIImageKind kind, const wchar_t* file, DWORD resourceID)
{
    data.eKind = kind;
    data.strFile = file;
    data.dwResID = resourceID;
    data.nWidth = 4;
    data.crMask = ColumnColour(kTransparentColumn);
    data.images[L"a"];
    MCUIImageData& b = data.images[L"b"];
    b.nIndex = 1;
    b.nHotX = 3;
    b.nHotY = 5;
}

// "icon", or "cursor x,y" with its hot spot; then the colour of the top left pixel.
std::string Describe(HICON image)
{
    ICONINFO info = {};
    if (!::GetIconInfo(image, &info))
        return "none";
    const Pixels colour = ReadPixels(info.hbmColor);
    MImageUtils::DestroyIconInfoData(info);
    const std::string kind =
        info.fIcon ? "icon" : "cursor " + std::to_string(info.xHotspot) + "," + std::to_string(info.yHotspot);
    return kind + " " + std::to_string(colour.width > 0 ? colour.At(0, 0) : CLR_INVALID);
}

TEST(UIImageList, CutsTheStripIntoMaskedImagesEachMirroredInItsPlace)
{
    const struct {
        const wchar_t* file;
        DWORD resourceID;
    } sources[] = {{L"picture.bmp", 0}, {L"", IDB_STRIP}};
    const struct {
        MEImageEffect effect;
        int columnSeenAt[4];
    } effects[] = {{ImageEffectNone, {0, 1, 2, 3}}, {ImageEffectMirror, {0, 3, 2, 1}}};  // column 0 stays
    for (const auto& source : sources) {
        for (const auto& effect : effects) {
            for (MEUIImageKind kind : {MEUIImageKindIcon, MEUIImageKindCursor}) {
                MCUIImageListData data;
                MakeStrip(data, kind, source.file, source.resourceID);
                data.eEffect = effect.effect;
                MCUIImageList live;
                SCOPED_TRACE(testing::Message() << "resource " << source.resourceID << " effect " << effect.effect);
                // The description's file, or its folder, which names itself.
                const CString description = TestDataPath(kind == MEUIImageKindIcon ? L"drawing\\strip.xml" : L"drawing");
                ASSERT_EQ(S_OK, live.Create(data, description));
                ASSERT_EQ(2, ::ImageList_GetImageCount(live.GetImageList()));
                for (int image = 0; image < 2; ++image) {
                    HBITMAP drawn = NULL;
                    ASSERT_TRUE(MImageUtils::GetBitmapByIndex(live.GetImageList(), image, kBack, drawn));
                    UniqueBitmap owned(drawn);
                    ExpectPixels(drawn, 4, 6, [&](int x, int) {
                        const int column = image * 4 + effect.columnSeenAt[x];
                        return column == kTransparentColumn ? kBack : ColumnColour(column);
                    });
                }
                const bool cursors = kind == MEUIImageKindCursor;
                auto get = [&](const wchar_t* name) { return cursors ? live.GetCursor(name) : live.GetIcon(name); };
                EXPECT_EQ((cursors ? "cursor 3,5 " : "icon ") + std::to_string(ColumnColour(4)), Describe(get(L"b")));
                EXPECT_EQ((cursors ? "cursor 0,0 " : "icon ") + std::to_string(ColumnColour(0)), Describe(get(L"a")));
                EXPECT_EQ(nullptr, get(L"c"));
                EXPECT_EQ(nullptr, cursors ? live.GetIcon(L"b") : live.GetCursor(L"b")) << "not of the list's kind";
            }
        }
    }
}

struct Failure {
    const wchar_t* file;
    DWORD resourceID;
    int width;
    int index;  // of image "b"
    HRESULT expected;
} const kFailures[] = {
    {L"", 0, 4, 1, E_INVALIDARG},  // no source
    {L"no-such-picture.bmp", IDB_STRIP, 4, 1, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)},  // the file wins
    {L"not-a-picture.bin", 0, 4, 1, HRESULT_FROM_WIN32(ERROR_INVALID_DATA)},
    {L"truncated.bmp", 0, 4, 1, HRESULT_FROM_WIN32(ERROR_INVALID_DATA)},
    {L"", 999, 4, 1, HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND)},
    {L"picture.bmp", 0, 9, 0, E_INVALIDARG},                          // wider than the strip
    {L"picture.bmp", 0, -4, 0, E_INVALIDARG},
    {L"picture.bmp", 0, 4, 2, HRESULT_FROM_WIN32(ERROR_INVALID_INDEX)},
    {L"picture.bmp", 0, 4, -1, HRESULT_FROM_WIN32(ERROR_INVALID_INDEX)},
};

TEST(UIImageList, FailuresLeaveTheObjectEmptyAndNoHandlesBehind)
{
    MCUIImageList live;
    const int count = sizeof(kFailures) / sizeof(kFailures[0]);
    ExpectNoGdiGrowth(count, 1000, [&](int i) {  // every path taken once before counting
        const Failure& failure = kFailures[i % count];
        MCUIImageListData data;
        MakeStrip(data, MEUIImageKindCursor, failure.file, failure.resourceID);
        data.nWidth = failure.width;
        data.images[L"b"].nIndex = failure.index;
        const HRESULT hr = live.Create(data, TestDataPath(L"drawing\\strip.xml"));
        EXPECT_EQ(failure.expected, hr) << "case " << i % count;
        return hr == failure.expected && live.GetImageList() == nullptr && live.GetCursor(L"a") == nullptr;
    });
}

}  // namespace
