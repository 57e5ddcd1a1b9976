#include <gtest/gtest.h>
#include <shlobj.h>
#include <algorithm>
#include <vector>
#include "NMFileUtils.h"

namespace {

const BYTE kSelectors[] = {1, 2, 3, 4, 10, 12, 23, 34, 40, 120, 123, 234};

struct SelectorCase {
    const wchar_t* path;
    const wchar_t* expected[ARRAYSIZE(kSelectors)];  // in the order of kSelectors
};

const SelectorCase kSelectorCases[] = {
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
    {L"setup.exe",
     {L"", L"", L"setup", L".exe", L"", L"", L"setup", L"setup.exe", L"exe", L"", L"setup", L"setup.exe"}},
    {L"C:run.bat",
     {L"C:", L"", L"run", L".bat", L"C", L"C:", L"run", L"run.bat", L"bat", L"C", L"C:run", L"run.bat"}},
    {L"C:\\",
     {L"C:", L"\\", L"", L"", L"C", L"C:\\", L"\\", L"", L"", L"C:", L"C:\\", L"\\"}},
};

// A folder of its own under the temporary folder, removed with its content.
class TempTree {
public:
    TempTree()
    {
        m_root.Format(L"%sTesvorFind%lu", NMFileUtils::GetTempFolderPath().GetString(), ::GetCurrentProcessId());
        ::CreateDirectoryW(m_root, NULL);
    }
    ~TempTree()
    {
        for (auto it = m_created.rbegin(); it != m_created.rend(); ++it) {
            if (!::DeleteFileW(*it))
                ::RemoveDirectoryW(*it);
        }
        ::RemoveDirectoryW(m_root);
    }
    CString File(const wchar_t* relative)
    {
        CString path = Path(relative);
        HANDLE file = ::CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
        if (file != INVALID_HANDLE_VALUE)
            ::CloseHandle(file);
        m_created.push_back(path);
        return path;
    }
    CString Folder(const wchar_t* relative)
    {
        CString path = Path(relative);
        ::CreateDirectoryW(path, NULL);
        m_created.push_back(path);
        return path;
    }
    CString Path(const wchar_t* relative) const { return m_root + L"\\" + relative; }

private:
    CString m_root;
    std::vector<CString> m_created;
};

std::vector<CString> Sorted(const MCStringArrayImpl<CString, const CString&>& files, INT_PTR from)
{
    std::vector<CString> result;
    for (INT_PTR i = from; i < files.GetSize(); ++i)
        result.push_back(files[i]);
    std::sort(result.begin(), result.end());
    return result;
}

}  // namespace

TEST(PathsTest, SelectorTable)
{
    for (const SelectorCase& c : kSelectorCases) {
        for (size_t i = 0; i < ARRAYSIZE(kSelectors); ++i)
            EXPECT_EQ(CString(c.expected[i]), NMFileUtils::ReturnFromFullPath(c.path, kSelectors[i]))
                << "path " << c.path << ", selector " << int(kSelectors[i]);
        for (int selector = 0; selector <= 255; ++selector) {
            if (std::find(std::begin(kSelectors), std::end(kSelectors), selector) == std::end(kSelectors)) {
                EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(c.path, static_cast<BYTE>(selector)).IsEmpty())
                    << "selector " << selector;
            }
        }
    }
}

TEST(PathsTest, FourPartsKeepTheirSeparators)
{
    CString drive(L"x"), dir(L"x"), name(L"x"), ext(L"x");
    EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(L"C:\\Data\\Sub\\file.txt", drive, dir, name, ext));
    EXPECT_EQ(CString(L"C:"), drive);
    EXPECT_EQ(CString(L"\\Data\\Sub\\"), dir);
    EXPECT_EQ(CString(L"file"), name);
    EXPECT_EQ(CString(L".txt"), ext);

    // Forward slashes are separators to the runtime, and are kept as they are.
    EXPECT_EQ(CString(L"/a/b/"), NMFileUtils::ReturnFromFullPath(L"C:/a/b/c.d", 2));
}

TEST(PathsTest, UnsplittablePathsGiveEmptyParts)
{
    // A name longer than the name buffer cannot be split.
    CString longPath(L"C:\\dir\\");
    longPath += CString(L'n', 300);
    longPath += L".txt";
    EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(longPath, 3).IsEmpty());
    EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(longPath, 1).IsEmpty());
    CString drive, dir, name, ext;
    EXPECT_TRUE(NMFileUtils::ReturnFromFullPath(longPath, drive, dir, name, ext));
    EXPECT_TRUE(name.IsEmpty());
}

TEST(PathsTest, ValidatePathAppendsOneBackslash)
{
    struct {
        const wchar_t* in;
        const wchar_t* out;
    } cases[] = {{L"C:\\Data", L"C:\\Data\\"}, {L"C:\\Data\\", L"C:\\Data\\"}, {L"x", L"x\\"}, {L"\\", L"\\"},
                 {L"C:\\Data/", L"C:\\Data/\\"}};
    for (const auto& c : cases) {
        CString path(c.in);
        NMFileUtils::ValidatePath(path);
        EXPECT_EQ(CString(c.out), path);
    }

    CString never;
    NMFileUtils::ValidatePath(never);
    EXPECT_TRUE(never.IsEmpty());
    CString withStorage;
    withStorage.Preallocate(8);
    NMFileUtils::ValidatePath(withStorage);
    EXPECT_EQ(CString(L"\\"), withStorage);

    CString path(L"old");
    wchar_t source[] = L"D:\\Out";
    EXPECT_TRUE(NMFileUtils::SetAndValidatePath(source, path));
    EXPECT_EQ(CString(L"D:\\Out\\"), path);
    wchar_t empty[] = L"";
    EXPECT_FALSE(NMFileUtils::SetAndValidatePath(empty, path));
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_FALSE(NMFileUtils::SetAndValidatePath(NULL, path));
}

TEST(PathsTest, ModuleAndTemporaryFolders)
{
    wchar_t expected[MAX_PATH] = {};
    ASSERT_NE(0u, ::GetModuleFileNameW(NULL, expected, MAX_PATH));
    CString exe(expected);
    int slash = exe.ReverseFind(L'\\');

    CString path;
    EXPECT_TRUE(NMFileUtils::GetModulePath(NULL, path));
    EXPECT_EQ(exe, path);
    EXPECT_TRUE(NMFileUtils::ReturnPathExeFile(NULL, path, true));
    EXPECT_EQ(exe.Left(slash), path);
    EXPECT_TRUE(NMFileUtils::ReturnPathExeFile(NULL, path, false));
    EXPECT_EQ(exe.Left(slash + 1), path);

    HINSTANCE notAModule = reinterpret_cast<HINSTANCE>(static_cast<UINT_PTR>(0x10));
    path = L"kept";
    EXPECT_FALSE(NMFileUtils::GetModulePath(notAModule, path));
    EXPECT_FALSE(NMFileUtils::ReturnPathExeFile(notAModule, path, true));
    EXPECT_EQ(CString(L"kept"), path);

    wchar_t temp[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temp);
    CString tempFolder = NMFileUtils::GetTempFolderPath();
    EXPECT_EQ(CString(temp), tempFolder);
    ASSERT_FALSE(tempFolder.IsEmpty());
    EXPECT_EQ(L'\\', tempFolder[tempFolder.GetLength() - 1]);
}

TEST(PathsTest, FileFinderWalksMatchesOneAhead)
{
    TempTree tree;
    CString only = tree.File(L"only.log");

    CFileFind finder;
    ASSERT_TRUE(finder.FindFile(tree.Path(L"*.log")));
    EXPECT_FALSE(finder.FindNextFile());  // the only match is the last one
    EXPECT_EQ(CString(L"only.log"), finder.GetFileName());
    EXPECT_EQ(only, finder.GetFilePath());
    EXPECT_FALSE(finder.IsDirectory());
    EXPECT_FALSE(finder.IsDots());
    finder.Close();
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindFile(tree.Path(L"*.none")));

    int dots = 0, folders = 0;
    BOOL more = finder.FindFile(tree.Path(L"*"));
    while (more) {
        more = finder.FindNextFile();
        dots += finder.IsDots() ? 1 : 0;
        folders += finder.IsDirectory() ? 1 : 0;
    }
    EXPECT_EQ(2, dots);
    EXPECT_EQ(2, folders);
}

TEST(PathsTest, FilesByTypeAppendsEveryMatch)
{
    TempTree tree;
    CString a = tree.File(L"a.txt");
    CString b = tree.File(L"b.txt");
    CString log = tree.File(L"c.log");
    CString sub = tree.Folder(L"sub.txt");  // a folder that matches the pattern
    tree.File(L"sub.txt\\deep.txt");

    MCStringArrayImpl<CString, const CString&> files;
    files.Add(CString(L"already there"));
    EXPECT_TRUE(NMFileUtils::GetFilesByType(tree.Path(L"*.txt"), files));
    ASSERT_EQ(4, files.GetSize());
    EXPECT_EQ(CString(L"already there"), files[0]);
    EXPECT_EQ((std::vector<CString>{a, b, sub}), Sorted(files, 1));

    files.RemoveAll();
    EXPECT_TRUE(NMFileUtils::GetFilesByType(tree.Path(L"*"), files));
    EXPECT_EQ((std::vector<CString>{tree.Path(L"."), tree.Path(L".."), a, b, log, sub}), Sorted(files, 0));

    EXPECT_FALSE(NMFileUtils::GetFilesByType(tree.Path(L"*.none"), files));
    EXPECT_FALSE(NMFileUtils::GetFilesByType(tree.Path(L"missing\\*"), files));
    EXPECT_EQ(6, files.GetSize());
}

TEST(PathsTest, FolderPathWithAndWithoutCreate)
{
    // A per-user folder that a fresh profile may lack; removed first so that
    // only the creating call can find it.
    const int folder = CSIDL_ADMINTOOLS;
    wchar_t expected[MAX_PATH] = {};
    ASSERT_EQ(S_OK, ::SHGetFolderPathW(NULL, folder | CSIDL_FLAG_DONT_VERIFY, NULL, 0, expected));
    ::RemoveDirectoryW(expected);
    if (::GetFileAttributesW(expected) != INVALID_FILE_ATTRIBUTES)
        GTEST_SKIP() << "the folder is in use and cannot be removed";

    CString path(L"unchanged");
    HRESULT hr = NMFileUtils::GetFolderPath(folder, path, false);
    EXPECT_TRUE(FAILED(hr)) << std::hex << hr;
    EXPECT_EQ(CString(L"unchanged"), path);

    EXPECT_EQ(S_OK, NMFileUtils::GetFolderPath(folder, path, true));
    EXPECT_EQ(CString(expected), path);
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesW(path));

    EXPECT_EQ(S_OK, NMFileUtils::GetFolderPath(folder, path, false));
    EXPECT_EQ(CString(expected), path);
}
