#include <gtest/gtest.h>
#include <vector>
#include "DrawingTestSupport.h"
#include "MCDC.h"
#include "MImageUtils.h"

namespace {

// Points one import of a loaded module at another function for the life of the
// object (the test's way of making the library's GradientFill fail while its
// FillRect still works).
class ImportRedirect {
public:
    ImportRedirect(HMODULE module, const char* dll, const char* function, void* replacement)
    {
        auto* base = reinterpret_cast<BYTE*>(module);
        auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
        auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const IMAGE_DATA_DIRECTORY& dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        for (auto* desc = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress); desc->Name != 0; ++desc) {
            if (lstrcmpiA(reinterpret_cast<const char*>(base + desc->Name), dll) != 0)
                continue;
            auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + desc->OriginalFirstThunk);
            auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + desc->FirstThunk);
            for (; names->u1.AddressOfData != 0; ++names, ++slots) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                    continue;
                auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
                if (lstrcmpA(reinterpret_cast<const char*>(byName->Name), function) == 0) {
                    m_slot = reinterpret_cast<void**>(&slots->u1.Function);
                    m_original = Swap(replacement);
                    return;
                }
            }
        }
    }
    ~ImportRedirect()
    {
        if (m_slot != nullptr)
            Swap(m_original);
    }
    bool Active() const { return m_slot != nullptr; }
    void* Original() const { return m_original; }
    ImportRedirect(const ImportRedirect&) = delete;
    ImportRedirect& operator=(const ImportRedirect&) = delete;

private:
    void* Swap(void* value)
    {
        DWORD oldProtect = 0;
        ::VirtualProtect(m_slot, sizeof(void*), PAGE_READWRITE, &oldProtect);
        void* previous = *m_slot;
        *m_slot = value;
        ::VirtualProtect(m_slot, sizeof(void*), oldProtect, &oldProtect);
        return previous;
    }
    void** m_slot = nullptr;
    void* m_original = nullptr;
};

struct Band {
    RECT rect;
    COLORREF colour;
};
std::vector<Band> g_bands;
int(WINAPI* g_realFillRect)(HDC, const RECT*, HBRUSH) = nullptr;

BOOL WINAPI FailingGradientFill(HDC, PTRIVERTEX, ULONG, PVOID, ULONG, ULONG) { return FALSE; }

int WINAPI RecordingFillRect(HDC hDC, const RECT* rc, HBRUSH hBrush)
{
    LOGBRUSH lb = {};
    ::GetObjectW(hBrush, sizeof(lb), &lb);
    g_bands.push_back(Band{*rc, lb.lbColor});
    return g_realFillRect(hDC, rc, hBrush);
}

// The library's gradient with GradientFill failing, recording every band it fills.
std::vector<Band> DrawInBands(MCDC& surface, const CRect& rc, COLORREF from, COLORREF to, bool horizontal)
{
    HMODULE library = ::GetModuleHandleW(L"TesvorUtil.dll");
    ImportRedirect gradient(library, "msimg32.dll", "GradientFill", reinterpret_cast<void*>(&FailingGradientFill));
    ImportRedirect fill(library, "user32.dll", "FillRect", reinterpret_cast<void*>(&RecordingFillRect));
    EXPECT_TRUE(gradient.Active());
    EXPECT_TRUE(fill.Active());
    g_realFillRect = reinterpret_cast<int(WINAPI*)(HDC, const RECT*, HBRUSH)>(fill.Original());
    g_bands.clear();
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(&surface, rc, from, to, horizontal), 1);
    return g_bands;
}

TEST(Gradient, FillsFromOneColourToTheOther)
{
    MCDC surface(256, 4);
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(&surface, CRect(0, 0, 256, 4), RGB(0, 0, 0), RGB(0, 0, 255), true), 1);
    EXPECT_LE(GetBValue(surface.GetPixel(0, 1)), 2);
    EXPECT_GE(GetBValue(surface.GetPixel(255, 1)), 253);
    for (int x = 1; x < 256; ++x)
        ASSERT_GE(GetBValue(surface.GetPixel(x, 1)), GetBValue(surface.GetPixel(x - 1, 1)));
    EXPECT_EQ(MImageUtils::UVLRDrawGradientRect(nullptr, CRect(0, 0, 4, 4), 0, 0, true), 0);
}

TEST(Gradient, FallsBackToOneBandPerColourStep)
{
    MCDC surface(110, 4);
    std::vector<Band> bands = DrawInBands(surface, CRect(0, 0, 110, 4), RGB(0, 0, 0), RGB(0, 0, 10), true);
    ASSERT_EQ(bands.size(), 11u);
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(bands[i].rect.left, i * 10);
        EXPECT_EQ(bands[i].rect.right, (i + 1) * 10);
        EXPECT_EQ(bands[i].rect.top, 0);
        EXPECT_EQ(bands[i].rect.bottom, 4);
        EXPECT_EQ(bands[i].colour, RGB(0, 0, i * 10 / 11)) << "band " << i;
        EXPECT_EQ(surface.GetPixel(i * 10 + 5, 2), RGB(0, 0, i * 10 / 11));
    }
}

TEST(Gradient, BandsRunDownwardsAndTowardsDarkerColours)
{
    MCDC surface(3, 50);
    // Red falls by 4 and green rises by 2 over 5 steps of 10 rows from row 5.
    std::vector<Band> bands = DrawInBands(surface, CRect(0, 5, 3, 55), RGB(20, 0, 7), RGB(16, 2, 7), false);
    ASSERT_EQ(bands.size(), 5u);
    const COLORREF expected[] = {RGB(20, 0, 7), RGB(20, 0, 7), RGB(19, 0, 7), RGB(18, 1, 7), RGB(17, 1, 7)};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(bands[i].rect.top, 5 + i * 10);
        EXPECT_EQ(bands[i].rect.bottom, 5 + (i + 1) * 10);
        EXPECT_EQ(bands[i].rect.right, 3);
        EXPECT_EQ(bands[i].colour, expected[i]) << "band " << i;
    }

    // Equal colours: a single band over the whole rectangle.
    bands = DrawInBands(surface, CRect(0, 0, 3, 50), RGB(9, 9, 9), RGB(9, 9, 9), false);
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(bands[0].rect.bottom, 50);
}

}  // namespace
