#include <gtest/gtest.h>
#include "MCError.h"

namespace {

TEST(ErrorRecordTest, CopiesShareTheText)
{
    MCError empty;
    EXPECT_TRUE(empty.m_strError.IsEmpty());

    MCError error;
    error.m_strError = L"Document not loaded";
    MCError copy(error);
    MCError assigned;
    assigned = error;
    EXPECT_STREQ(L"Document not loaded", copy.m_strError);
    EXPECT_STREQ(L"Document not loaded", assigned.m_strError);
    // A cheap copy: one shared buffer until one of them changes.
    EXPECT_EQ(static_cast<const wchar_t*>(error.m_strError), static_cast<const wchar_t*>(copy.m_strError));

    copy.m_strError = L"changed";
    EXPECT_STREQ(L"Document not loaded", error.m_strError);
    assigned = assigned;
    EXPECT_STREQ(L"Document not loaded", assigned.m_strError);
}

int g_derivedDestroyed = 0;

struct DerivedRecord : MCError {
    ~DerivedRecord() override { g_derivedDestroyed++; }
};

TEST(ErrorRecordTest, DestroyedThroughTheBase)
{
    MCError* pRecord = new DerivedRecord;
    delete pRecord;
    EXPECT_EQ(1, g_derivedDestroyed);
}

}  // namespace
