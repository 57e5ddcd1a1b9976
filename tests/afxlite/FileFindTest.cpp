#include <gtest/gtest.h>
#include <afx.h>
#include "ScopedTempFolder.h"

// The walk one match ahead and the matches' full paths: PathsTest.FilesByTypeAppendsEveryMatch.
TEST(FileFindTest, TellsFoldersAndDotsApart)
{
    ScopedTempFolder folder;
    folder.Make(L"only.log");
    folder.Make(L"sub\\");
    CFileFind finder;
    int dots = 0, folders = 0;
    for (BOOL more = finder.FindFile(folder.Path(L"*")); more;) {
        more = finder.FindNextFile();
        dots += finder.IsDots() ? 1 : 0;
        folders += finder.IsDirectory() ? 1 : 0;
    }
    EXPECT_EQ(2, dots);
    EXPECT_EQ(3, folders);
    finder.Close();
    EXPECT_FALSE(finder.FindNextFile());
}
