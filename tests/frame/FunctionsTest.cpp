// Result codes and the trace entry.
#include <gtest/gtest.h>
#include <Corvel.h>
#include <string>
#include <vector>
#include "FrameTestResources.h"
#include "TesvorFunctions.h"

namespace {

// The soft code is the low word of a result with the customer bit set.
TEST(ResultCodeTest, CustomerBitSelectsTheSoftCode)
{
    const struct {
        DWORD hr;
        short softCode;
    } cases[] = {
        {0xA0040123, 0x0123}, {0x80004005, 0x7FFF}, {0x2000FFFF, -1},     {0x20000000, 0},
        {0x00000000, 0x7FFF}, {0x0000ABCD, 0x7FFF}, {0xE0001234, 0x1234}, {0x20008000, -32768},
        {0xDFFFFFFF, 0x7FFF}, {0x7FFFFFFF, -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.softCode, UVLRGetSoftErrCode(static_cast<HRESULT>(c.hr))) << std::hex << c.hr;
}

// Trace lines as Corvel's sink receives them.
struct TraceLine {
    std::string channel;
    CString text;
};
std::vector<TraceLine> g_lines;

void CaptureTrace(const char* channel, const wchar_t* line)
{
    g_lines.push_back({channel != NULL ? channel : "(null)", CString(line)});
}

TEST(TraceTest, TextIsFormattedTwiceAndTheChannelIsTextAResourceOrNothing)
{
    const CString longText(L'x', 5000), fits(L'y', 2047);
    g_lines.clear();  // a repeated run starts over
    const MDebugTraceSink previous = MDebugTraceSetSink(&CaptureTrace);
    UVLRDebugOutputEx(L"chan", L"%d items in %s, %S", 3, L"the box", "narrow");
    UVLRDebugOutputEx(MAKEINTRESOURCEW(IDS_TEST_CHANNEL), L"%s", L"100%%");  // Corvel formats "100%%" again
    UVLRDebugOutputEx(NULL, L"load %d%%%%", 50);
    UVLRDebugOutputEx(L"", L"%s", static_cast<const wchar_t*>(longText));  // cut, not overrun
    UVLRDebugOutputEx(MAKEINTRESOURCEW(IDS_TEST_MISSING), L"%s", static_cast<const wchar_t*>(fits));
    UVLRDebugOutput(L"%s %d", L"ignored", 1);
    MDebugTraceSetSink(previous);
    const TraceLine expected[] = {{"chan", L"3 items in the box, narrow"}, {"ResourceChannel", L"100%"},
                                  {"", L"load 50%"}, {"", CString(L'x', 2047)}, {"", fits}};
    ASSERT_EQ(5u, g_lines.size());
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(expected[i].channel, g_lines[i].channel) << i;
        EXPECT_EQ(expected[i].text, g_lines[i].text) << i;
    }
}

}  // namespace
