#include <gtest/gtest.h>
#include <Corvel.h>
#include <string>
#include <vector>
#include "FrameTestResources.h"
#include "TesvorFunctions.h"

namespace {

TEST(FailureTest, OnlyTheSignBitCounts)
{
    struct Case {
        HRESULT hr;
        bool failed;
    } const cases[] = {
        {static_cast<HRESULT>(0x80004005L), true}, {static_cast<HRESULT>(0x80000000L), true},
        {static_cast<HRESULT>(0xFFFFFFFFL), true}, {S_OK, false},
        {S_FALSE, false},                          {0x7FFFFFFF, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.failed, MFailed(c.hr, L"", __LINE__)) << std::hex << c.hr;
    EXPECT_TRUE(MFailed(E_INVALIDARG, NULL, 0));  // context and line play no part
}

TEST(SoftErrorCodeTest, CustomerBitSelectsTheLowWord)
{
    struct Case {
        DWORD hr;
        short code;
    } const cases[] = {
        {0xA0040123, 0x0123}, {0x80004005, 0x7FFF}, {0x2000FFFF, -1},     {0x20000000, 0},
        {0x00000000, 0x7FFF}, {0x0000ABCD, 0x7FFF}, {0xE0001234, 0x1234}, {0x20007FFF, 0x7FFF},
        {0x20008000, -32768}, {0xDFFFFFFF, 0x7FFF},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.code, UVLRGetSoftErrCode(static_cast<HRESULT>(c.hr))) << std::hex << c.hr;
}

TEST(ComErrorTest, NoSystemMessageIsLookedUp)
{
    for (HRESULT hr : {S_OK, S_FALSE, E_FAIL, E_OUTOFMEMORY, E_INVALIDARG, static_cast<HRESULT>(0x80070005L)})
        EXPECT_TRUE(UGetComError(hr).IsEmpty()) << std::hex << hr;
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

class TraceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_lines.clear();
        previous_ = MDebugTraceSetSink(&CaptureTrace);
    }
    void TearDown() override { MDebugTraceSetSink(previous_); }

    // The one line traced since SetUp.
    const TraceLine& OnlyLine()
    {
        EXPECT_EQ(1u, g_lines.size());
        if (g_lines.empty())
            g_lines.push_back({"(none)", CString()});
        return g_lines.front();
    }

private:
    MDebugTraceSink previous_ = NULL;
};

TEST_F(TraceTest, ArgumentsAreFormattedWithThePlatformMeaningOfPercentS)
{
    UVLRDebugOutputEx(L"chan", L"%d items in %s, %S", 3, L"the box", "narrow");
    const TraceLine& line = OnlyLine();
    EXPECT_EQ("chan", line.channel);
    EXPECT_STREQ(L"3 items in the box, narrow", line.text);
}

TEST_F(TraceTest, TheFormattedTextIsFormattedASecondTime)
{
    // The first pass leaves "100%%", which Corvel reads as a format: "100%".
    UVLRDebugOutputEx(L"chan", L"%s", L"100%%");
    EXPECT_STREQ(L"100%", OnlyLine().text);

    g_lines.clear();
    UVLRDebugOutputEx(L"chan", L"load %d%%%%", 50);
    EXPECT_STREQ(L"load 50%", OnlyLine().text);
}

TEST_F(TraceTest, ChannelIsTextAResourceOrNothing)
{
    UVLRDebugOutputEx(MAKEINTRESOURCEW(IDS_TEST_CHANNEL), L"a");
    UVLRDebugOutputEx(NULL, L"b");
    UVLRDebugOutputEx(L"", L"c");
    UVLRDebugOutputEx(MAKEINTRESOURCEW(IDS_TEST_MISSING), L"d");
    ASSERT_EQ(4u, g_lines.size());
    EXPECT_EQ("ResourceChannel", g_lines[0].channel);
    EXPECT_EQ("", g_lines[1].channel);
    EXPECT_EQ("", g_lines[2].channel);
    EXPECT_EQ("", g_lines[3].channel);
}

TEST_F(TraceTest, OverlongTextIsCutNotOverrun)
{
    CString longText(L'x', 5000);
    UVLRDebugOutputEx(L"chan", L"%s", static_cast<const wchar_t*>(longText));
    EXPECT_EQ(2047, OnlyLine().text.GetLength());

    g_lines.clear();
    CString fits(L'y', 2047);
    UVLRDebugOutputEx(L"chan", L"%s", static_cast<const wchar_t*>(fits));
    EXPECT_EQ(fits, OnlyLine().text);
}

TEST_F(TraceTest, PlainOutputTracesNothing)
{
    UVLRDebugOutput(L"%s %d", L"ignored", 1);
    EXPECT_TRUE(g_lines.empty());
}

}  // namespace
