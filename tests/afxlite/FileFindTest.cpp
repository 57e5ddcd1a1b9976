#include <gtest/gtest.h>
#include <afx.h>
#include "ScopedTempFolder.h"

TEST(FileFindTest, WalksTheMatchesOneAhead)
{
    ScopedTempFolder folder;
    CString only = folder.Make(L"only.log");
    folder.Make(L"sub\\");
    CFileFind finder;
    ASSERT_TRUE(finder.FindFile(folder.Path(L"*.log")));
    EXPECT_FALSE(finder.FindNextFile());  // the only match is the last one
    EXPECT_EQ(CString(L"only.log"), finder.GetFileName());
    EXPECT_EQ(only, finder.GetFilePath());
    EXPECT_FALSE(finder.IsDirectory() || finder.IsDots());
    finder.Close();
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindFile(folder.Path(L"*.none")));

    int dots = 0, folders = 0;
    for (BOOL more = finder.FindFile(folder.Path(L"*")); more;) {
        more = finder.FindNextFile();
        dots += finder.IsDots() ? 1 : 0;
        folders += finder.IsDirectory() ? 1 : 0;
    }
    EXPECT_EQ(2, dots);
    EXPECT_EQ(3, folders);
}
