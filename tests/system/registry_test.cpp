#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "MCRegistry.h"
#include "ScopedTestKey.h"
#include "TestSupport.h"

namespace {

typedef std::vector<CString> Names;

// "ok" or "failed", then the names that an enumeration leaves in an array that held "stale".
Names List(MCRegistry& lister, bool keys, const CString& path)
{
    MCStringArrayImpl<CString, const CString&> names;
    names.Add(CString(L"stale"));
    bool ok = keys ? lister.GetEnumKeys(HKEY_CURRENT_USER, path, names)
                   : lister.GetEnumValues(HKEY_CURRENT_USER, path, names);
    Names result(1, ok ? L"ok" : L"failed");
    result.insert(result.end(), names.GetData(), names.GetData() + names.GetSize());
    return result;
}

// "type:size" that the system keeps for each value ("-" when there is none).
std::string Stored(HKEY key, std::initializer_list<const wchar_t*> names)
{
    std::string stored;
    for (const wchar_t* name : names) {
        DWORD type = 0, size = 0;
        bool found = ::RegQueryValueExW(key, name, NULL, &type, NULL, &size) == ERROR_SUCCESS;
        stored += (stored.empty() ? "" : " ") + (found ? std::to_string(type) + ":" + std::to_string(size) : "-");
    }
    return stored;
}

enum Reader { Number, String, Block, Index };

// "result error value" of one reader: a number in hex (7 when untouched), a string as it
// is, a block (of a buffer of `size` bytes) in hex bytes when read.
std::wstring ReadAs(MCRegistry& reg, Reader reader, const wchar_t* name, DWORD size)
{
    CString value(L"untouched"), line;
    DWORD number = 7;
    BYTE block[16] = {};
    bool ok;
    if (reader == Number) {
        ok = reg.Read(name, number);
        value.Format(L"%lx", number);
    } else if (reader == String) {
        ok = reg.Read(name, value);
    } else {
        ok = reader == Block ? reg.Read(name, block, size) : reg.Read(_wtoi(name), block, size);
        value.Empty();
        for (DWORD i = 0; ok && i < size; ++i)
            value.AppendFormat(L"%02x", block[i]);
    }
    line.Format(L"%d %ld %s", ok, reg.GetErrCode(), value.GetString());
    return line.GetString();
}

// The wrapper with its key and path in view.
struct InspectedRegistry : MCRegistry {
    using MCRegistry::m_hKey;
    using MCRegistry::m_keyPath;
};

class RegistryTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, key.Path())); }
    ScopedTestKey key;
    InspectedRegistry reg;
};

}  // namespace

TEST_F(RegistryTest, WritersAndReadersOfEveryKind)
{
    const CString text(L"Grüße, \x4E16\x754C");
    const BYTE block[] = {0, 1, 2, 0xFF, 0x80}, three[] = {3, 3, 3}, minus[] = {0xAB};
    ASSERT_TRUE(reg.Write(L"Number", 0xFEDCBA98) && reg.Write(L"Text", text) && reg.Write(L"Block", block, 5));
    ASSERT_TRUE(reg.Write(3, three, 3) && reg.Write(-12, minus, 1));
    ASSERT_TRUE(reg.Write(L"One", CString(L"a")) && reg.Write(L"Two", CString(L"ab")));  // 4 and 6 bytes
    ASSERT_TRUE(reg.Write(L"Nothing", CString()));
    ASSERT_EQ(ERROR_SUCCESS, ::RegSetValueExW(key.Handle(), L"Empty", 0, REG_SZ, NULL, 0));
    const BYTE* bare = reinterpret_cast<const BYTE*>(L"xyz!");  // not followed by a NUL, which would be added
    ASSERT_EQ(ERROR_SUCCESS, ::RegSetValueExW(key.Handle(), L"Bare", 0, REG_SZ, bare, 6));
    // Strings keep their terminator (the text: 9 characters and one; the empty string shows it,
    // since the system adds one that follows the data); blocks by index are named by the number.
    EXPECT_EQ("4:4 1:20 1:2 1:6 3:5 3:3 3:1",
              Stored(key.Handle(), {L"Number", L"Text", L"Nothing", L"Bare", L"Block", L"3", L"-12"}));

    const struct {
        Reader reader;
        const wchar_t* name;
        DWORD size;
        std::wstring expected;
    } reads[] = {
        {Number, L"Number", 0, L"1 0 fedcba98"},
        {Number, L"One", 0, L"1 0 61"},  // the type is not checked: raw bytes that fit
        {Number, L"Two", 0, L"0 234 7"},
        {Number, L"Missing", 0, L"0 2 7"},
        {String, L"Text", 0, L"1 0 " + std::wstring(text)},
        {String, L"Empty", 0, L"1 0 "},
        {String, L"Bare", 0, L"1 0 xyz"},  // stored without its terminator, it ends with its data
        {String, L"Missing", 0, L"0 2 "},
        {Block, L"Block", 16, L"1 0 000102ff80"},
        {Block, L"Number", 16, L"1 0 98badcfe"},
        {Block, L"Block", 2, L"0 234 "},
        {Block, L"3", 16, L"1 0 030303"},
        {Index, L"-12", 16, L"1 0 ab"},
        {Index, L"4", 16, L"0 2 "},
    };
    for (const auto& r : reads)
        EXPECT_EQ(r.expected, ReadAs(reg, r.reader, r.name, r.size)) << r.name << " as " << r.reader;

    for (int length : {0, 1, 511, 512, 1500}) {
        CString written;
        for (int i = 0; i < length; ++i)
            written += static_cast<wchar_t>(L'A' + i % 26);
        ASSERT_TRUE(reg.Write(L"S", written));
        EXPECT_EQ(L"1 0 " + std::wstring(written), ReadAs(reg, String, L"S", 0)) << length;
    }
}

TEST_F(RegistryTest, DeletesAndRefusedCallsLeaveTheErrorCode)
{
    MCRegistry fresh;
    EXPECT_EQ(L"0 0 7", ReadAs(fresh, Number, L"x", 0));
    // A key with sub-keys is not deleted; a missing key or value is not found.
    ASSERT_TRUE(MCRegistry().Open(HKEY_CURRENT_USER, key.Path(L"Parent\\Child")));
    EXPECT_FALSE(reg.DeleteKey(L"Parent"));
    EXPECT_NE(ERROR_SUCCESS, reg.GetErrCode());
    EXPECT_TRUE(reg.DeleteKey(L"Parent\\Child") && reg.DeleteKey(L"Parent") && !key.Exists(L"Parent"));
    EXPECT_TRUE(reg.Write(L"v", 1u) && reg.DeleteValue(L"v"));
    EXPECT_EQ((Values{0, ERROR_FILE_NOT_FOUND, 0, ERROR_FILE_NOT_FOUND}),
              (Values{reg.DeleteKey(L"Parent"), reg.GetErrCode(), reg.DeleteValue(L"v"), reg.GetErrCode()}));
    // The block writers refuse unreadable pointers without a call.
    for (UINT_PTR bad : {UINT_PTR(0), UINT_PTR(0xCDCDCDCD), UINT_PTR(0xFEEEFEEE)}) {
        const BYTE* pointer = reinterpret_cast<const BYTE*>(bad);
        EXPECT_FALSE(reg.Write(L"Bad", pointer, 4) || reg.Write(9, pointer, 4));
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
    }
    EXPECT_EQ("- -", Stored(key.Handle(), {L"Bad", L"9"}));

    // Closed (twice is harmless), every call but the enumerations is refused.
    reg.Close();
    reg.Close();
    const BYTE data[] = {1};
    EXPECT_FALSE(reg.Write(L"n", 1u) || reg.Write(L"s", CString(L"t")) || reg.Write(L"b", data, 1));
    EXPECT_FALSE(reg.Write(1, data, 1) || reg.DeleteKey(L"k") || reg.DeleteValue(L"v"));
    const wchar_t* closedReads[] = {L"0 2 7", L"0 2 untouched", L"0 2 ", L"0 2 "};
    for (Reader reader : {Number, String, Block, Index})
        EXPECT_EQ(closedReads[reader], ReadAs(reg, reader, L"1", 4));

    // No lasting key can be made under a volatile one.
    UniqueHKey volatileKey(ScopedTestKey::Create(key.Handle(), L"Volatile", REG_OPTION_VOLATILE));
    MCRegistry failed;
    EXPECT_FALSE(failed.Open(HKEY_CURRENT_USER, key.Path(L"Volatile\\Lasting")));
    EXPECT_EQ(ERROR_CHILD_MUST_BE_VOLATILE, failed.GetErrCode());
    EXPECT_EQ((Names{L"failed", L"stale"}), List(failed, true, key.Path(L"Volatile\\Lasting")));
    EXPECT_EQ((Names{L"failed", L"stale"}), List(failed, false, key.Path(L"Volatile\\Lasting")));
}

TEST_F(RegistryTest, EnumerationsOfEmptyMissingAndPopulatedKeys)
{
    // An empty key lists nothing, a missing one is created.
    MCRegistry lister;
    for (bool keys : {true, false}) {
        EXPECT_EQ(Names{L"ok"}, List(lister, keys, key.Path()));
        EXPECT_EQ(Names{L"ok"}, List(lister, keys, key.Path(keys ? L"Missing" : L"AlsoMissing")));
    }
    EXPECT_TRUE(key.Exists(L"Missing") && key.Exists(L"AlsoMissing"));

    // Populated: every name, in the order the system lists them (Wine's is sorted).
    for (const wchar_t* name : {L"zeta", L"Alpha", L"beta", L"\x00C9t\x00E9", L"9"})
        ASSERT_TRUE(MCRegistry().Open(HKEY_CURRENT_USER, key.Path(L"Full\\") + name));
    MCRegistry writer;
    ASSERT_TRUE(writer.Open(HKEY_CURRENT_USER, key.Path(L"Full")));
    for (const wchar_t* name : {L"z", L"", L"A", L"m"})
        ASSERT_TRUE(writer.Write(name, 1u));
    EXPECT_EQ((Names{L"ok", L"9", L"Alpha", L"beta", L"zeta", L"\x00C9t\x00E9"}),
              List(lister, true, key.Path(L"Full")));
    EXPECT_EQ((Names{L"ok", L"", L"A", L"m", L"z"}), List(lister, false, key.Path(L"Full")));
    EXPECT_FALSE(lister.Write(L"after", 1u)) << "the enumerations leave the wrapper closed";
}

TEST_F(RegistryTest, CopiesShareOneHandle)
{
    EXPECT_FALSE(reg.DeleteValue(L"Missing"));
    InspectedRegistry assigned;
    {
        InspectedRegistry copy(reg);
        EXPECT_TRUE(reg.m_hKey == copy.m_hKey && key.Path() == copy.m_keyPath);
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, copy.GetErrCode());
        EXPECT_TRUE(copy.Write(L"FromCopy", 42u));
        EXPECT_EQ(L"1 0 2a", ReadAs(reg, Number, L"FromCopy", 0));
        assigned = copy;
        EXPECT_EQ(reg.m_hKey, assigned.m_hKey);
        // The copy's destructor closes the handle that all three share.
    }
    EXPECT_EQ((Values{0, ERROR_INVALID_HANDLE}), (Values{reg.Write(L"AfterClose", 1u), reg.GetErrCode()}));
    reg.m_hKey = assigned.m_hKey = NULL;
}

TEST(StringArrayTest, AppendsAndRefusesANegativeSize)
{
    struct Corrupted : MCStringArrayImpl<CString, const CString&> {
        void SetRawSize(INT_PTR size) { m_nSize = size; }
    } names;
    EXPECT_EQ((Values{0, 1}), (Values{names.Add(CString(L"a")), names.Add(CString(L"b"))}));
    EXPECT_EQ(CString(L"b"), names[1]);
    names.SetRawSize(-1);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { names.Add(CString(L"c")); }));
    names.SetRawSize(2);
}
