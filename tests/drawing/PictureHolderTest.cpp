#include <gtest/gtest.h>
#include <cstdlib>
#include "DrawingTestResources.h"
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MCPictureHolder.h"
#include "TestSupport.h"

namespace {

const COLORREF kWhite = RGB(255, 255, 255);

// The column colours of the 8-by-6 test pictures (see make_pictures.py).
COLORREF ColumnColour(int x) { return RGB(30 * x + 10, 200 - 20 * x, 40 + 25 * x); }

bool Near(COLORREF a, COLORREF b, int tolerance)
{
    return std::abs(GetRValue(a) - GetRValue(b)) <= tolerance && std::abs(GetGValue(a) - GetGValue(b)) <= tolerance &&
           std::abs(GetBValue(a) - GetBValue(b)) <= tolerance;
}

std::vector<BYTE> FileBytes(const wchar_t* name)
{
    std::vector<BYTE> bytes;
    CFile file;
    if (file.Open(TestDataPath(name), CFile::modeRead)) {
        bytes.resize(static_cast<size_t>(file.GetLength()));
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    }
    return bytes;
}

void ExpectColumns(MCDC& surface, int x0, int y0)
{
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 8; ++x)
            ASSERT_EQ(surface.GetPixel(x0 + x, y0 + y), ColumnColour(x)) << x << "," << y;
}

TEST(PictureHolder, LoadsLosslessFormatsFromFilesAndDrawsThemExactly)
{
    for (const wchar_t* name : {L"drawing\\picture.bmp", L"drawing\\picture.gif", L"drawing\\picture.ico"}) {
        MCPictureHolder holder;
        ASSERT_TRUE(holder.CreatePicture(TestDataPath(name))) << name;
        CSize size;
        ASSERT_TRUE(holder.GetSize(size));
        EXPECT_EQ(size, CSize(8, 6));
        EXPECT_EQ(holder.GetWidth(), 8);
        EXPECT_EQ(holder.GetHeight(), 6);
        MCDC surface(8, 6);
        ASSERT_TRUE(holder.Draw(surface, 0, 0, 0, 0));
        ExpectColumns(surface, 0, 0);
    }
}

TEST(PictureHolder, LoadsAJpegFromMemory)
{
    std::vector<BYTE> bytes = FileBytes(L"drawing\\picture.jpg");
    ASSERT_FALSE(bytes.empty());
    MCPictureHolder holder;
    ASSERT_TRUE(holder.CreatePicture(bytes.data(), static_cast<DWORD>(bytes.size())));
    EXPECT_EQ(holder.GetWidth(), 16);
    MCDC surface(16, 16);
    ASSERT_TRUE(holder.Draw(surface, 0, 0, 0, 0));
    EXPECT_TRUE(Near(surface.GetPixel(2, 8), RGB(255, 0, 0), 40));
    EXPECT_TRUE(Near(surface.GetPixel(13, 8), RGB(0, 0, 255), 40));
}

TEST(PictureHolder, DrawsTopDownAtItsOwnSizeWhereAsked)
{
    MCPictureHolder holder;
    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.bmp")));
    MCDC surface(20, 20);
    surface.Fill(kWhite);
    ASSERT_TRUE(holder.Draw(surface, 5, 5, 0, 0));
    ExpectColumns(surface, 5, 5);
    EXPECT_EQ(surface.GetPixel(4, 4), kWhite);
    EXPECT_EQ(surface.GetPixel(13, 11), kWhite);
    EXPECT_EQ(surface.GetPixel(12, 10), ColumnColour(7));

    // Stretched to twice the width: every column twice.
    MCDC wide(16, 6);
    ASSERT_TRUE(holder.Draw(wide, 0, 0, 16, 6));
    EXPECT_EQ(wide.GetPixel(14, 3), ColumnColour(7));
    EXPECT_EQ(wide.GetPixel(3, 3), ColumnColour(1));
}

TEST(PictureHolder, BadInputKeepsOrEmptiesThePictureAsDocumented)
{
    MCPictureHolder holder;
    CSize size;
    EXPECT_FALSE(holder.GetSize(size));
    MCDC surface(8, 6);
    EXPECT_FALSE(holder.Draw(surface, 0, 0, 0, 0));
    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.gif")));

    BYTE byte = 0;
    EXPECT_FALSE(holder.CreatePicture(nullptr, 10));
    EXPECT_FALSE(holder.CreatePicture(&byte, 0));
    EXPECT_TRUE(holder.GetSize(size));  // still the GIF

    std::vector<BYTE> text = FileBytes(L"drawing\\not-a-picture.bin");
    EXPECT_FALSE(holder.CreatePicture(text.data(), static_cast<DWORD>(text.size())));
    EXPECT_FALSE(holder.GetSize(size));
    EXPECT_EQ(holder.GetWidth(), 8);  // sizes are written only by a successful load

    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.gif")));
    // A buffer that is not memory at all: the copy faults and is caught.
    EXPECT_FALSE(holder.CreatePicture(reinterpret_cast<BYTE*>(static_cast<ULONG_PTR>(0x10)), 64));
    EXPECT_FALSE(holder.GetSize(size));

    EXPECT_FALSE(holder.CreatePicture(static_cast<const wchar_t*>(nullptr)));
    EXPECT_FALSE(holder.CreatePicture(L""));
    EXPECT_FALSE(holder.CreatePicture(TestDataPath(L"drawing\\missing.bmp")));
}

TEST(PictureHolder, LoadsCustomResourcesOfTheCurrentResourceModule)
{
    MCPictureHolder holder;
    HINSTANCE ignored = reinterpret_cast<HINSTANCE>(static_cast<ULONG_PTR>(0x1234));
    ASSERT_TRUE(holder.CreatePicture(L"PICTURE", IDR_PICTURE_GIF, ignored));
    EXPECT_EQ(holder.GetWidth(), 8);
    MCDC surface(8, 6);
    ASSERT_TRUE(holder.Draw(surface, 0, 0, 0, 0));
    ExpectColumns(surface, 0, 0);
    EXPECT_TRUE(holder.CreatePicture(L"PICTURE", 0x10000 | IDR_PICTURE_BMP, NULL));  // low 16 bits name it
    EXPECT_FALSE(holder.CreatePicture(L"PICTURE", IDR_EMPTY_DATA, NULL));
    EXPECT_FALSE(holder.CreatePicture(L"PICTURE", 999, NULL));
    EXPECT_FALSE(holder.CreatePicture(L"NOSUCHTYPE", IDR_PICTURE_GIF, NULL));
}

TEST(PictureHolder, LoadBinaryResourceChecksItsArgumentsFirst)
{
    BYTE* data = nullptr;
    DWORD size = MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &data, NULL);
    std::vector<BYTE> file = FileBytes(L"drawing\\picture.gif");
    ASSERT_EQ(size, file.size());
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(memcmp(data, file.data(), size), 0);
    delete[] data;

    BYTE sentinel = 7;
    BYTE* taken = &sentinel;
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &taken, NULL), 0u);
    EXPECT_EQ(taken, &sentinel);
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, nullptr, NULL), 0u);
    BYTE* none = nullptr;
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(nullptr, IDR_PICTURE_GIF, &none, NULL), 0u);
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", 999, &none, NULL), 0u);
    EXPECT_EQ(none, nullptr);
    // An explicit module is used as given.
    EXPECT_EQ(MCPictureHolder::LoadBinaryResource(L"PICTURE", IDR_PICTURE_GIF, &none, ::GetModuleHandleW(L"TesvorUtil.dll")), 0u);
}

TEST(PictureHolder, CopiesShareOnePicture)
{
    MCPictureHolder copy;
    MCPictureHolder assigned;
    {
        MCPictureHolder original;
        ASSERT_TRUE(original.CreatePicture(TestDataPath(L"drawing\\picture.bmp")));
        original.SetEffect(ImageEffectMirror);
        MCPictureHolder constructed(original);
        copy = constructed;
        assigned = original;
        assigned = assigned;  // self-assignment keeps the picture
    }
    for (MCPictureHolder* holder : {&copy, &assigned}) {
        CSize size;
        ASSERT_TRUE(holder->GetSize(size));
        EXPECT_EQ(size, CSize(8, 6));
        MCDC surface(8, 6);
        ASSERT_TRUE(holder->Draw(surface, 0, 0, 0, 0));
        ExpectColumns(surface, 0, 0);
    }
}

TEST(PictureHolder, CreatesSurfacesDrawnOrNot)
{
    MCPictureHolder holder;
    MCDC* pSurface = nullptr;
    EXPECT_FALSE(holder.CreateDCW(pSurface, true, 0, 0, 0, 0));
    EXPECT_EQ(pSurface, nullptr);
    ASSERT_TRUE(holder.CreatePicture(TestDataPath(L"drawing\\picture.gif")));

    ASSERT_TRUE(holder.CreateDCW(pSurface, false, 0, 0, 0, 0));
    ASSERT_NE(pSurface, nullptr);
    EXPECT_EQ(pSurface->GetSize(), CSize(8, 6));
    pSurface->Delete();

    pSurface = nullptr;
    ASSERT_TRUE(holder.CreateDCW(pSurface, true, 0, 0, 0, 0));
    ExpectColumns(*pSurface, 0, 0);
    delete pSurface;
}

Pixels ImagePixels(HIMAGELIST hList, int index, int cx, int cy)
{
    MCDC target(cx, cy);
    target.Fill(kWhite);
    ::ImageList_Draw(hList, index, target.m_hDC, 0, 0, ILD_NORMAL);
    UniqueBitmap copy(target.CreateNewBitmap());
    return ReadPixels(copy.get());
}

TEST(PictureHolder, MakesImageListsWithAndWithoutTheMirrorEffect)
{
    MCPictureHolder holder;
    HIMAGELIST hRaw = reinterpret_cast<HIMAGELIST>(static_cast<ULONG_PTR>(1));
    EXPECT_FALSE(holder.CreateImageList(hRaw, 1, kWhite));

    struct Case { MEImageEffect effect; int columnSeenAt[8]; } cases[] = {
        {ImageEffectNone, {0, 1, 2, 3, 4, 5, 6, 7}},
        {ImageEffectMirror, {0, 7, 6, 5, 4, 3, 2, 1}},   // about column 4; column 0 stays
        {static_cast<MEImageEffect>(5), {0, 1, 2, 3, 4, 5, 6, 7}},
    };
    for (const Case& c : cases) {
        holder.SetEffect(c.effect);
        HIMAGELIST hList = NULL;
        ASSERT_TRUE(holder.CreateImageList(TestDataPath(L"drawing\\picture.bmp"), hList, 2, RGB(255, 0, 255)));
        UniqueImageList list(hList);
        ASSERT_EQ(::ImageList_GetImageCount(hList), 1);
        Pixels pixels = ImagePixels(hList, 0, 8, 6);
        ASSERT_EQ(pixels.width, 8);
        for (int x = 0; x < 8; ++x)
            EXPECT_EQ(pixels.At(x, 2), ColumnColour(c.columnSeenAt[x])) << "effect " << c.effect << " column " << x;
    }
}

class EffectHook : public MCPictureHolder {
public:
    using MCPictureHolder::ApplyEffectOnBitmap;
};

TEST(PictureHolder, BitmapEffectHookLeavesTheBitmapAlone)
{
    EffectHook holder;
    HBITMAP hBitmap = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(0x42));
    EXPECT_TRUE(holder.ApplyEffectOnBitmap(hBitmap, ImageEffectMirror));
    EXPECT_EQ(hBitmap, reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(0x42)));
}

TEST(PictureHolder, AnchorRectanglesArePercentages)
{
    struct Case { CRect rc; bool valid; } cases[] = {
        {CRect(0, 0, 100, 100), true}, {CRect(50, 0, 40, 100), false}, {CRect(0, 0, 101, 100), false},
        {CRect(-1, 0, 0, 0), false},   {CRect(30, 30, 30, 30), true},  {CRect(0, 60, 100, 50), false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(IsValidAnchorsRect(c.rc) != 0, c.valid) << c.rc.left << "," << c.rc.top << "," << c.rc.right;
}

}  // namespace
