// The picture holder: pictures from files, memory and resources, drawn exactly,
// shared by copies, and turned into surfaces and image lists.
#include <gtest/gtest.h>
#include <cstdlib>
#include "DrawingTestResources.h"
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MCPictureHolder.h"
#include "TestSupport.h"

namespace {

// Draws the holder's picture at (x0, y0) on a white surface and checks every pixel;
// the picture's columns appear in the order `columns` gives (as an image list, with
// `columns`, when that is not null).
void ExpectDrawn(MCPictureHolder& holder, int x0, int y0, const int* columns = nullptr)
{
    MCDC surface(x0 + 10, y0 + 8);
    surface.Fill(kWhite);
    if (columns == nullptr) {
        ASSERT_TRUE(holder.Draw(surface, x0, y0, 0, 0));  // at the picture's own size
    } else {
        HIMAGELIST hList = NULL;
        ASSERT_TRUE(holder.CreateImageList(hList, 2, kMask));
        UniqueImageList list(hList);
        ASSERT_EQ(1, ::ImageList_GetImageCount(hList));
        ASSERT_TRUE(::ImageList_Draw(hList, 0, surface.m_hDC, x0, y0, ILD_NORMAL));
    }
    ExpectPixels(surface.GetBitmap(), x0 + 10, y0 + 8, [=](int x, int y) {
        const bool inside = x >= x0 && x < x0 + 8 && y >= y0 && y < y0 + 6;
        return inside ? ColumnColour(columns ? columns[x - x0] : x - x0) : kWhite;
    });
}

TEST(PictureHolder, LoadsFromFilesMemoryAndResourcesAndDrawsExactly)
{
    for (const wchar_t* name : {L"drawing\\picture.bmp", L"drawing\\picture.gif", L"drawing\\picture.ico"}) {
        MCPictureHolder holder;
        ASSERT_TRUE(holder.CreatePicture(TestDataPath(name))) << name;
        CSize size;
        ASSERT_TRUE(holder.GetSize(size));
        EXPECT_EQ(CSize(8, 6), size);
        ExpectDrawn(holder, 0, 0);
    }
    MCPictureHolder holder;
    ASSERT_TRUE(holder.CreatePicture(L"PICTURE", IDR_PICTURE_GIF, reinterpret_cast<HINSTANCE>(0x1234)));  // ignored
    ExpectDrawn(holder, 5, 5);  // top down, from (5, 5)
    MCDC wide(16, 6);  // stretched to twice the width: every column twice
    ASSERT_TRUE(holder.Draw(wide, 0, 0, 16, 6));
    ExpectPixels(wide.GetBitmap(), 16, 6, [](int x, int) { return ColumnColour(x / 2); });
    EXPECT_TRUE(holder.CreatePicture(L"PICTURE", 0x10000 | IDR_PICTURE_BMP, NULL));  // the low 16 bits name it
    for (UINT missing : {static_cast<UINT>(IDR_EMPTY_DATA), 999u})
        EXPECT_FALSE(holder.CreatePicture(L"PICTURE", missing, NULL));
    EXPECT_FALSE(holder.CreatePicture(L"NOSUCHTYPE", IDR_PICTURE_GIF, NULL));

    // A JPEG from memory: lossy, two flat halves.
    std::vector<BYTE> jpeg = FileBytes(TestDataPath(L"drawing\\picture.jpg"));
    ASSERT_TRUE(holder.CreatePicture(jpeg.data(), static_cast<DWORD>(jpeg.size())));
    EXPECT_EQ(16, holder.GetWidth());
    MCDC surface(16, 16);
    ASSERT_TRUE(holder.Draw(surface, 0, 0, 0, 0));
    for (auto sample : {std::make_pair(2, kRed), std::make_pair(13, kBlue)}) {
        const COLORREF c = surface.GetPixel(sample.first, 8);
        EXPECT_LE(std::max({std::abs(GetRValue(c) - GetRValue(sample.second)), std::abs(GetGValue(c) - GetGValue(sample.second)),
                            std::abs(GetBValue(c) - GetBValue(sample.second))}), 40) << sample.first;
    }
}

TEST(PictureHolder, BadInputKeepsOrEmptiesThePicture)
{
    MCPictureHolder holder;
    CSize size;
    MCDC surface(8, 6);
    MCDC* pSurface = nullptr;
    EXPECT_FALSE(holder.GetSize(size));
    EXPECT_FALSE(holder.Draw(surface, 0, 0, 0, 0));
    EXPECT_FALSE(holder.CreateDCW(pSurface, true, 0, 0, 0, 0));
    EXPECT_EQ(pSurface, nullptr);
    HIMAGELIST hRaw = reinterpret_cast<HIMAGELIST>(static_cast<ULONG_PTR>(1));
    EXPECT_FALSE(holder.CreateImageList(hRaw, 1, kWhite));

    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.gif")));
    BYTE byte = 0;
    EXPECT_FALSE(holder.CreatePicture(nullptr, 10));
    EXPECT_FALSE(holder.CreatePicture(&byte, 0));
    EXPECT_TRUE(holder.GetSize(size)) << "still the GIF";
    std::vector<BYTE> text = FileBytes(TestDataPath(L"drawing\\not-a-picture.bin"));
    EXPECT_FALSE(holder.CreatePicture(text.data(), static_cast<DWORD>(text.size())));
    EXPECT_FALSE(holder.GetSize(size));
    EXPECT_EQ(holder.GetWidth(), 8) << "sizes are written only by a successful load";
    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.gif")));
    // A buffer that is not memory at all: the copy faults and is caught.
    EXPECT_FALSE(holder.CreatePicture(reinterpret_cast<BYTE*>(static_cast<ULONG_PTR>(0x10)), 64));
    EXPECT_FALSE(holder.GetSize(size));
    EXPECT_FALSE(holder.CreatePicture(static_cast<const wchar_t*>(nullptr)));
    EXPECT_FALSE(holder.CreatePicture(L""));
    EXPECT_FALSE(holder.CreatePicture(TestDataPath(L"drawing\\missing.bmp")));

    // LoadBinaryResource checks its arguments first.
    BYTE* data = nullptr;
    const DWORD length = MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &data, NULL);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(FileBytes(TestDataPath(L"drawing\\picture.gif")), std::vector<BYTE>(data, data + length));
    delete[] data;
    BYTE sentinel = 7;
    BYTE *taken = &sentinel, *none = nullptr;
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &taken, NULL), 0u);
    EXPECT_EQ(taken, &sentinel);
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, nullptr, NULL), 0u);
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(nullptr, IDR_PICTURE_GIF, &none, NULL), 0u);
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", 999, &none, NULL), 0u);
    EXPECT_EQ(none, nullptr);
    // An explicit module is used as given.
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &none, ::GetModuleHandleW(L"TesvorUtil.dll")), 0u);
}

TEST(PictureHolder, CopiesShareOnePictureAndMakeSurfacesAndImageLists)
{
    MCPictureHolder copy, assigned;
    {
        MCPictureHolder original;
        ASSERT_TRUE(original.CreatePicture(TestDataPath(L"drawing\\picture.bmp")));
        original.SetEffect(ImageEffectMirror);
        MCPictureHolder constructed(original);
        copy = constructed;
        assigned = original;
        assigned = assigned;  // self-assignment keeps the picture
    }
    const int mirrored[] = {0, 7, 6, 5, 4, 3, 2, 1};  // about column 4; column 0 stays
    for (MCPictureHolder* holder : {&copy, &assigned}) {
        ExpectDrawn(*holder, 0, 0);
        ExpectDrawn(*holder, 0, 0, mirrored);  // the effect is copied too
    }
    const int straight[] = {0, 1, 2, 3, 4, 5, 6, 7};
    for (MEImageEffect effect : {ImageEffectNone, static_cast<MEImageEffect>(5)}) {
        copy.SetEffect(effect);
        ExpectDrawn(copy, 1, 1, straight);
    }
    HIMAGELIST hList = NULL;
    ASSERT_TRUE(copy.CreateImageList(TestDataPath(L"drawing\\picture.gif"), hList, 2, kMask));
    ::ImageList_Destroy(hList);

    for (bool drawn : {false, true}) {
        MCDC* pSurface = nullptr;
        ASSERT_TRUE(copy.CreateDCW(pSurface, drawn, 0, 0, 0, 0));
        ASSERT_NE(pSurface, nullptr);
        EXPECT_EQ(pSurface->GetSize(), CSize(8, 6));
        if (drawn)
            ExpectPixels(pSurface->GetBitmap(), 8, 6, [](int x, int) { return ColumnColour(x); });
        delete pSurface;
    }
}

TEST(PictureHolder, AnchorRectanglesArePercentages)
{
    struct Case { CRect rc; bool valid; } const cases[] = {
        {CRect(0, 0, 100, 100), true}, {CRect(50, 0, 40, 100), false}, {CRect(0, 0, 101, 100), false},
        {CRect(-1, 0, 0, 0), false},   {CRect(30, 30, 30, 30), true},  {CRect(0, 60, 100, 50), false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(IsValidAnchorsRect(c.rc) != 0, c.valid) << c.rc.left << "," << c.rc.top << "," << c.rc.right;
}

}  // namespace
