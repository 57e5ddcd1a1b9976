#include <gtest/gtest.h>
#include "TesvorFunctions.h"

TEST(FailureTest, OnlyTheSignBitCounts)
{
    EXPECT_TRUE(MFailed(static_cast<HRESULT>(0x80004005L), L"", __LINE__));
    EXPECT_FALSE(MFailed(S_FALSE, L"", __LINE__));
    EXPECT_FALSE(MFailed(0x7FFFFFFF, L"", __LINE__));
}
