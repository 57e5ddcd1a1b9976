#include <gtest/gtest.h>
#include <shlobj.h>
#include <algorithm>
#include <vector>
#include "NMFileUtils.h"
#include "ScopedTempFolder.h"

namespace {

const BYTE kSelectors[] = {1, 2, 3, 4, 10, 12, 23, 34, 40, 120, 123, 234};

// Every selector's part of each path, in the order of kSelectors.
const struct {
    const wchar_t* path;
    const wchar_t* parts[ARRAYSIZE(kSelectors)];
} kSelectorCases[] = {
    {L"C:\\Data\\file.txt",
     {L"C:", L"\\Data\\", L"file", L".txt", L"C", L"C:\\Data\\", L"\\Data\\file", L"file.txt", L"txt", L"C:\\Data",
      L"C:\\Data\\file", L"\\Data\\file.txt"}},
    {L"\\\\server\\share\\dir\\archive.tar.gz",
     {L"", L"\\\\server\\share\\dir\\", L"archive.tar", L".gz", L"", L"\\\\server\\share\\dir\\",
      L"\\\\server\\share\\dir\\archive.tar", L"archive.tar.gz", L"gz", L"\\\\server\\share\\dir",
      L"\\\\server\\share\\dir\\archive.tar", L"\\\\server\\share\\dir\\archive.tar.gz"}},
    {L"D:\\Programs\\README",
     {L"D:", L"\\Programs\\", L"README", L"", L"D", L"D:\\Programs\\", L"\\Programs\\README", L"README", L"",
      L"D:\\Programs", L"D:\\Programs\\README", L"\\Programs\\README"}},
    {L"setup.exe", {L"", L"", L"setup", L".exe", L"", L"", L"setup", L"setup.exe", L"exe", L"", L"setup", L"setup.exe"}},
    {L"C:run.bat", {L"C:", L"", L"run", L".bat", L"C", L"C:", L"run", L"run.bat", L"bat", L"C", L"C:run", L"run.bat"}},
    {L"C:\\", {L"C:", L"\\", L"", L"", L"C", L"C:\\", L"\\", L"", L"", L"C:", L"C:\\", L"\\"}},
    // Forward slashes are separators to the runtime, and are kept as they are.
    {L"C:/a/b/c.d", {L"C:", L"/a/b/", L"c", L".d", L"C", L"C:/a/b/", L"/a/b/c", L"c.d", L"d", L"C:/a/b", L"C:/a/b/c",
                     L"/a/b/c.d"}},
};

}  // namespace

TEST(PathsTest, SelectorsAndParts)
{
    for (const auto& c : kSelectorCases) {
        for (int selector = 0; selector <= 255; ++selector) {
            const BYTE* known = std::find(std::begin(kSelectors), std::end(kSelectors), selector);
            const wchar_t* part = known != std::end(kSelectors) ? c.parts[known - kSelectors] : L"";
            EXPECT_EQ(CString(part), NMFileUtils::ReturnFromFullPath(c.path, static_cast<BYTE>(selector)))
                << "path " << c.path << ", selector " << selector;
        }
        CString drive(L"x"), dir(L"x"), name(L"x"), ext(L"x");
        EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(c.path, drive, dir, name, ext));
        EXPECT_EQ(CString(c.parts[0]) + L"|" + c.parts[1] + L"|" + c.parts[2] + L"|" + c.parts[3],
                  drive + L"|" + dir + L"|" + name + L"|" + ext);
    }
    // A name longer than the name buffer cannot be split: every part is empty.
    CString longPath = L"C:\\dir\\" + CString(L'n', 300) + L".txt", drive, dir, name, ext;
    EXPECT_EQ(CString(), NMFileUtils::ReturnFromFullPath(longPath, 3) + NMFileUtils::ReturnFromFullPath(longPath, 1));
    EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(longPath, drive, dir, name, ext));
    EXPECT_TRUE(name.IsEmpty());
}

TEST(PathsTest, ValidatePathAppendsOneBackslash)
{
    const wchar_t* cases[][2] = {{L"C:\\Data", L"C:\\Data\\"}, {L"C:\\Data\\", L"C:\\Data\\"}, {L"x", L"x\\"},
                                 {L"\\", L"\\"}, {L"C:\\Data/", L"C:\\Data/\\"}};
    for (const auto& c : cases) {
        CString path(c[0]);
        NMFileUtils::ValidatePath(path);
        EXPECT_EQ(CString(c[1]), path);
    }
    // A never-filled string is left empty; an empty one with storage gets the backslash.
    CString never, withStorage;
    withStorage.Preallocate(8);
    NMFileUtils::ValidatePath(never);
    NMFileUtils::ValidatePath(withStorage);
    EXPECT_EQ(CString(L"|\\"), never + L"|" + withStorage);

    CString path(L"old");
    wchar_t source[] = L"D:\\Out", empty[] = L"";
    EXPECT_TRUE(NMFileUtils::SetAndValidatePath(source, path));
    EXPECT_EQ(CString(L"D:\\Out\\"), path);
    EXPECT_FALSE(NMFileUtils::SetAndValidatePath(empty, path));
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_FALSE(NMFileUtils::SetAndValidatePath(NULL, path));
}

TEST(PathsTest, ModuleTemporaryAndShellFolders)
{
    wchar_t expected[MAX_PATH + 1] = {};
    ASSERT_NE(0u, ::GetModuleFileNameW(NULL, expected, MAX_PATH));
    CString exe(expected), path, folder, withBackslash;
    int slash = exe.ReverseFind(L'\\');
    EXPECT_TRUE(NMFileUtils::GetModulePath(NULL, path) && NMFileUtils::ReturnPathExeFile(NULL, folder, true) &&
                NMFileUtils::ReturnPathExeFile(NULL, withBackslash, false));
    EXPECT_EQ(exe + L"|" + exe.Left(slash) + L"|" + exe.Left(slash + 1), path + L"|" + folder + L"|" + withBackslash);
    HINSTANCE notAModule = reinterpret_cast<HINSTANCE>(static_cast<UINT_PTR>(0x10));
    path = L"kept";
    EXPECT_FALSE(NMFileUtils::GetModulePath(notAModule, path) || NMFileUtils::ReturnPathExeFile(notAModule, path, true));
    EXPECT_EQ(CString(L"kept"), path);

    ::GetTempPathW(MAX_PATH + 1, expected);
    path = NMFileUtils::GetTempFolderPath();
    EXPECT_EQ(CString(expected), path);

    // A per-user folder that a fresh profile may lack; removed first so that only the
    // creating call can find it.
    ASSERT_EQ(S_OK, ::SHGetFolderPathW(NULL, CSIDL_ADMINTOOLS | CSIDL_FLAG_DONT_VERIFY, NULL, 0, expected));
    ::RemoveDirectoryW(expected);
    if (::GetFileAttributesW(expected) != INVALID_FILE_ATTRIBUTES)
        GTEST_SKIP() << "the folder is in use and cannot be removed";
    path = L"unchanged";
    HRESULT hr = NMFileUtils::GetFolderPath(CSIDL_ADMINTOOLS, path, false);
    EXPECT_TRUE(FAILED(hr)) << std::hex << hr;
    EXPECT_EQ(CString(L"unchanged"), path);
    EXPECT_EQ(S_OK, NMFileUtils::GetFolderPath(CSIDL_ADMINTOOLS, path, true));
    EXPECT_EQ(CString(expected), path);
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesW(path));
    EXPECT_EQ(S_OK, NMFileUtils::GetFolderPath(CSIDL_ADMINTOOLS, path, false));
    EXPECT_EQ(CString(expected), path);
}

TEST(PathsTest, FilesByTypeAppendsEveryMatch)
{
    ScopedTempFolder folder;
    CString a = folder.Make(L"a.txt"), b = folder.Make(L"b.txt"), log = folder.Make(L"c.log");
    CString sub = folder.Make(L"sub.txt\\");  // a folder that matches the pattern
    folder.Make(L"sub.txt\\deep.txt");

    // What is listed after what the array held, sorted.
    MCStringArrayImpl<CString, const CString&> files;
    auto listed = [&](INT_PTR from) {
        std::vector<CString> result(files.GetData() + from, files.GetData() + files.GetSize());
        std::sort(result.begin(), result.end());
        return result;
    };
    files.Add(CString(L"already there"));
    EXPECT_TRUE(NMFileUtils::GetFilesByType(folder.Path(L"*.txt"), files));
    EXPECT_EQ(CString(L"already there"), files[0]);
    EXPECT_EQ((std::vector<CString>{a, b, sub}), listed(1));
    files.RemoveAll();
    EXPECT_TRUE(NMFileUtils::GetFilesByType(folder.Path(L"*"), files));
    EXPECT_EQ((std::vector<CString>{folder.Path(L"."), folder.Path(L".."), a, b, log, sub}), listed(0));
    EXPECT_FALSE(NMFileUtils::GetFilesByType(folder.Path(L"*.none"), files));
    EXPECT_FALSE(NMFileUtils::GetFilesByType(folder.Path(L"missing\\*"), files));
    EXPECT_EQ(6, files.GetSize());
}
