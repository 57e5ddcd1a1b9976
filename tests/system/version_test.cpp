#include <gtest/gtest.h>
#include <MCModuleVersion.h>
#include "ScopedImportHook.h"

namespace {

const DWORD kSignature = 0xFEEF04BD;

CString ModulePath(HMODULE module)
{
    wchar_t path[MAX_PATH] = L"";
    ::GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

// A file next to the test program (the test DLLs are built into the same directory).
CString BinPath(const wchar_t* name)
{
    CString path = ModulePath(NULL);
    path = path.Left(path.ReverseFind(L'\\') + 1);
    return path + name;
}

TEST(ModuleVersion, ReadsTheLibraryResource)
{
    MCModuleVersion version;
    ASSERT_NE(0, version.GetFileVersionInfoW(ModulePath(TesvorUtilModule())));
    EXPECT_EQ(kSignature, version.dwSignature);
    EXPECT_EQ(0x00010000u, version.dwFileVersionMS);  // 1.0
    EXPECT_EQ(0u, version.dwFileVersionLS);           // .0.0
    EXPECT_EQ(0x00010000u, version.dwProductVersionMS);
    EXPECT_EQ(static_cast<DWORD>(VFT_DLL), version.dwFileType);
    EXPECT_EQ(0x0409, version.m_wLanguage);
    EXPECT_EQ(1200, version.m_wCodePage);
    EXPECT_NE(nullptr, version.m_pVersionData);
}

TEST(ModuleVersion, GetValueQueriesTheRootBlockWhateverTheName)
{
    MCModuleVersion version;
    EXPECT_EQ(nullptr, version.GetValue(L"FileVersion"));  // nothing read yet

    ASSERT_NE(0, version.GetFileVersionInfoW(ModulePath(TesvorUtilModule())));
    const wchar_t* value = version.GetValue(L"FileVersion");
    ASSERT_NE(nullptr, value);
    // The empty sub-block path names the root: the fixed block, not the string.
    EXPECT_EQ(kSignature, reinterpret_cast<const VS_FIXEDFILEINFO*>(value)->dwSignature);
    EXPECT_EQ(value, version.GetValue(L"NoSuchValue"));
    EXPECT_EQ(value, version.GetValue(L"ProductName"));
}

TEST(ModuleVersion, FileWithoutResourceClearsTheFixedBlock)
{
    MCModuleVersion fresh;
    EXPECT_EQ(0, fresh.GetFileVersionInfoW(BinPath(L"TesvorNoVersion.dll")));
    EXPECT_EQ(0u, fresh.dwSignature);
    EXPECT_EQ(0, fresh.m_wLanguage);
    EXPECT_EQ(1252, fresh.m_wCodePage);
    EXPECT_EQ(nullptr, fresh.GetValue(L"FileVersion"));

    // A block read earlier stays and still answers.
    MCModuleVersion reused;
    ASSERT_NE(0, reused.GetFileVersionInfoW(ModulePath(TesvorUtilModule())));
    EXPECT_EQ(0, reused.GetFileVersionInfoW(BinPath(L"TesvorNoVersion.dll")));
    EXPECT_EQ(0u, reused.dwSignature);
    EXPECT_EQ(0u, reused.dwFileVersionMS);
    EXPECT_EQ(0, reused.m_wLanguage);
    EXPECT_EQ(1252, reused.m_wCodePage);
    EXPECT_NE(nullptr, reused.GetValue(L"FileVersion"));

    EXPECT_EQ(0, reused.GetFileVersionInfoW(BinPath(L"NoSuchFile.dll")));
    EXPECT_EQ(0, reused.GetFileVersionInfoW(nullptr));
}

TEST(ModuleVersion, ResourceWithoutTranslationKeepsTheDefaults)
{
    MCModuleVersion version;
    ASSERT_NE(0, version.GetFileVersionInfoW(BinPath(L"TesvorNoTranslation.dll")));
    EXPECT_EQ(0x00020003u, version.dwFileVersionMS);
    EXPECT_EQ(0x00040005u, version.dwFileVersionLS);
    EXPECT_EQ(0x00060007u, version.dwProductVersionMS);
    EXPECT_EQ(0x00080009u, version.dwProductVersionLS);
    EXPECT_EQ(0, version.m_wLanguage);
    EXPECT_EQ(1252, version.m_wCodePage);

    // The translation of an earlier file does not carry over.
    MCModuleVersion reused;
    ASSERT_NE(0, reused.GetFileVersionInfoW(ModulePath(TesvorUtilModule())));
    ASSERT_NE(0, reused.GetFileVersionInfoW(BinPath(L"TesvorNoTranslation.dll")));
    EXPECT_EQ(0, reused.m_wLanguage);
    EXPECT_EQ(1252, reused.m_wCodePage);
}

TEST(ModuleVersion, DllGetVersionLooksUpTheNarrowedNameAndReturnsZero)
{
    struct Case {
        const char* what;
        CString path;
        bool cleared;  // the module exports "D"
    };
    const Case cases[] = {
        {"library without D", ModulePath(TesvorUtilModule()), false},
        {"library exporting D", BinPath(L"TesvorNoTranslation.dll"), true},
        {"missing file", BinPath(L"NoSuchFile.dll"), false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        DLLVERSIONINFO info;
        ::FillMemory(&info, sizeof(info), 0xCC);
        EXPECT_EQ(0, MCModuleVersion::DllGetVersion(c.path, info));
        if (c.cleared) {
            EXPECT_EQ(20u, info.cbSize);
            EXPECT_EQ(0u, info.dwMajorVersion);
            EXPECT_EQ(0u, info.dwPlatformID);
        } else {
            EXPECT_EQ(0xCCCCCCCCu, info.cbSize);
            EXPECT_EQ(0xCCCCCCCCu, info.dwMajorVersion);
        }
    }
}

}  // namespace
