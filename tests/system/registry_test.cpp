#include <gtest/gtest.h>
#include <vector>
#include "MCRegistry.h"
#include "RegistryTestKey.h"

namespace {

// Exposes the wrapper's state to check what copies share.
class RegistryProbe : public MCRegistry {
public:
    using MCRegistry::MCRegistry;
    RegistryProbe(const MCRegistry& other) : MCRegistry(other) {}
    HKEY Key() const { return m_hKey; }
    const CString& KeyPath() const { return m_keyPath; }
    void Forget() { m_hKey = NULL; }
};

typedef MCStringArrayImpl<CString, const CString&> Names;

std::vector<CString> ToVector(const Names& names)
{
    std::vector<CString> result;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        result.push_back(names[i]);
    return result;
}

DWORD RawValueType(HKEY key, const wchar_t* name)
{
    DWORD type = 0;
    ::RegQueryValueExW(key, name, NULL, &type, NULL, NULL);
    return type;
}

}  // namespace

TEST(RegistryTest, EveryValueKindRoundTrips)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));

    ASSERT_TRUE(reg.Write(L"Number", 0xFEDCBA98));
    ASSERT_TRUE(reg.Write(L"Text", CString(L"Grüße, \x4E16\x754C")));
    const BYTE block[] = {0, 1, 2, 0xFF, 0x80};
    ASSERT_TRUE(reg.Write(L"Block", block, sizeof(block)));
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), RawValueType(testKey.Handle(), L"Number"));
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), RawValueType(testKey.Handle(), L"Text"));
    EXPECT_EQ(static_cast<DWORD>(REG_BINARY), RawValueType(testKey.Handle(), L"Block"));

    DWORD number = 0;
    EXPECT_TRUE(reg.Read(L"Number", number));
    EXPECT_EQ(0xFEDCBA98u, number);
    CString text(L"old");
    EXPECT_TRUE(reg.Read(L"Text", text));
    EXPECT_EQ(CString(L"Grüße, \x4E16\x754C"), text);
    BYTE readBlock[16] = {};
    DWORD size = sizeof(readBlock);
    EXPECT_TRUE(reg.Read(L"Block", readBlock, size));
    ASSERT_EQ(sizeof(block), size);
    EXPECT_EQ(0, memcmp(block, readBlock, sizeof(block)));

    // The stored string keeps its terminator.
    DWORD rawSize = 0;
    ::RegQueryValueExW(testKey.Handle(), L"Text", NULL, NULL, NULL, &rawSize);
    EXPECT_EQ((text.GetLength() + 1) * sizeof(wchar_t), rawSize);

    // The block reader takes any type: a number reads as its four bytes.
    size = sizeof(readBlock);
    EXPECT_TRUE(reg.Read(L"Number", readBlock, size));
    EXPECT_EQ(4u, size);
    EXPECT_EQ(0x98, readBlock[0]);
    EXPECT_EQ(ERROR_SUCCESS, reg.GetErrCode());

    // Too small a buffer fails and says so.
    size = 2;
    EXPECT_FALSE(reg.Read(L"Block", readBlock, size));
    EXPECT_EQ(ERROR_MORE_DATA, reg.GetErrCode());
}

TEST(RegistryTest, NumberReaderTakesShortStringsAsRawBytes)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    ASSERT_TRUE(reg.Write(L"One", CString(L"a")));   // 4 bytes with the terminator
    ASSERT_TRUE(reg.Write(L"Two", CString(L"ab")));  // 6 bytes

    DWORD value = 7;
    EXPECT_TRUE(reg.Read(L"One", value));
    EXPECT_EQ(0x61u, value);

    value = 7;
    EXPECT_FALSE(reg.Read(L"Two", value));
    EXPECT_EQ(ERROR_MORE_DATA, reg.GetErrCode());
    EXPECT_EQ(7u, value);
    EXPECT_FALSE(reg.Read(L"Missing", value));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
    EXPECT_EQ(7u, value);
}

TEST(RegistryTest, StringsOfEveryLengthAroundTheBufferSize)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    for (int length : {0, 1, 511, 512, 1500}) {
        CString written;
        for (int i = 0; i < length; ++i)
            written += static_cast<wchar_t>(L'A' + i % 26);
        ASSERT_TRUE(reg.Write(L"S", written));
        CString read(L"previous");
        EXPECT_TRUE(reg.Read(L"S", read)) << length;
        EXPECT_EQ(written, read) << length;
    }

    // A value of no bytes at all reads as an empty string.
    ASSERT_EQ(ERROR_SUCCESS, ::RegSetValueExW(testKey.Handle(), L"Empty", 0, REG_SZ, NULL, 0));
    CString read(L"previous");
    EXPECT_TRUE(reg.Read(L"Empty", read));
    EXPECT_TRUE(read.IsEmpty());

    // Stored without its terminator, a string ends with its data.
    ASSERT_EQ(ERROR_SUCCESS, ::RegSetValueExW(testKey.Handle(), L"Bare", 0, REG_SZ,
                                              reinterpret_cast<const BYTE*>(L"xyz"), 6));
    EXPECT_TRUE(reg.Read(L"Bare", read));
    EXPECT_EQ(CString(L"xyz"), read);

    // A missing value fails and empties the result.
    read = L"previous";
    EXPECT_FALSE(reg.Read(L"Missing", read));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
    EXPECT_TRUE(read.IsEmpty());
}

TEST(RegistryTest, BinaryValuesNamedByIndex)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    const BYTE three[] = {3, 3, 3};
    const BYTE minus[] = {0xAB};
    ASSERT_TRUE(reg.Write(3, three, sizeof(three)));
    ASSERT_TRUE(reg.Write(-12, minus, sizeof(minus)));
    EXPECT_EQ(static_cast<DWORD>(REG_BINARY), RawValueType(testKey.Handle(), L"3"));

    BYTE buffer[8] = {};
    DWORD size = sizeof(buffer);
    EXPECT_TRUE(reg.Read(L"3", buffer, size));
    EXPECT_EQ(3u, size);
    size = sizeof(buffer);
    EXPECT_TRUE(reg.Read(-12, buffer, size));
    EXPECT_EQ(1u, size);
    EXPECT_EQ(0xAB, buffer[0]);
    size = sizeof(buffer);
    EXPECT_FALSE(reg.Read(4, buffer, size));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
}

TEST(RegistryTest, BlockWriterRefusesUnreadablePointersWithoutACall)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    EXPECT_FALSE(reg.DeleteValue(L"Missing"));
    ASSERT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());

    const BYTE* badPointers[] = {NULL, reinterpret_cast<const BYTE*>(static_cast<UINT_PTR>(0xCDCDCDCD)),
                                 reinterpret_cast<const BYTE*>(static_cast<UINT_PTR>(0xFEEEFEEE))};
    for (const BYTE* bad : badPointers) {
        EXPECT_FALSE(reg.Write(L"Bad", bad, 4));
        EXPECT_FALSE(reg.Write(9, bad, 4));
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
    }
    Names values;
    EXPECT_TRUE(reg.GetEnumValues(HKEY_CURRENT_USER, testKey.Path(), values));
    EXPECT_EQ(0, values.GetSize());
}

TEST(RegistryTest, EnumerationsOfEmptyMissingAndPopulatedKeys)
{
    RegistryTestKey testKey;
    MCRegistry reg;
    Names names;
    names.Add(CString(L"stale"));

    // Empty: true and an emptied array.
    EXPECT_TRUE(reg.GetEnumKeys(HKEY_CURRENT_USER, testKey.Path(), names));
    EXPECT_EQ(0, names.GetSize());
    names.Add(CString(L"stale"));
    EXPECT_TRUE(reg.GetEnumValues(HKEY_CURRENT_USER, testKey.Path(), names));
    EXPECT_EQ(0, names.GetSize());

    // Missing: created.
    ASSERT_FALSE(testKey.Exists(L"Missing"));
    EXPECT_TRUE(reg.GetEnumKeys(HKEY_CURRENT_USER, testKey.Path(L"Missing"), names));
    EXPECT_EQ(0, names.GetSize());
    EXPECT_TRUE(testKey.Exists(L"Missing"));
    EXPECT_TRUE(reg.GetEnumValues(HKEY_CURRENT_USER, testKey.Path(L"AlsoMissing"), names));
    EXPECT_TRUE(testKey.Exists(L"AlsoMissing"));

    // Populated: every name, in the order the system lists them.
    MCRegistry writer;
    ASSERT_TRUE(writer.Open(HKEY_CURRENT_USER, testKey.Path(L"Full")));
    const wchar_t* keyNames[] = {L"zeta", L"Alpha", L"beta", L"\x00C9t\x00E9", L"9"};
    for (const wchar_t* name : keyNames) {
        MCRegistry sub;
        ASSERT_TRUE(sub.Open(HKEY_CURRENT_USER, testKey.Path(L"Full\\") + name));
    }
    const wchar_t* valueNames[] = {L"z", L"", L"A", L"m"};
    for (const wchar_t* name : valueNames)
        ASSERT_TRUE(writer.Write(name, 1u));

    writer.Close();

    HKEY rawKey = NULL;
    ASSERT_EQ(ERROR_SUCCESS, ::RegOpenKeyExW(testKey.Handle(), L"Full", 0, KEY_READ, &rawKey));
    ScopedKey full(rawKey);
    std::vector<CString> systemKeys, systemValues;
    wchar_t buffer[300];
    for (DWORD i = 0; ::RegEnumKeyW(full.Get(), i, buffer, 300) == ERROR_SUCCESS; ++i)
        systemKeys.push_back(buffer);
    for (DWORD i = 0;; ++i) {
        DWORD length = 300;
        if (::RegEnumValueW(full.Get(), i, buffer, &length, NULL, NULL, NULL, NULL) != ERROR_SUCCESS)
            break;
        systemValues.push_back(buffer);
    }
    ASSERT_EQ(5u, systemKeys.size());
    ASSERT_EQ(4u, systemValues.size());

    names.Add(CString(L"stale"));
    EXPECT_TRUE(reg.GetEnumKeys(HKEY_CURRENT_USER, testKey.Path(L"Full"), names));
    EXPECT_EQ(systemKeys, ToVector(names));
    EXPECT_TRUE(reg.GetEnumValues(HKEY_CURRENT_USER, testKey.Path(L"Full"), names));
    EXPECT_EQ(systemValues, ToVector(names));

    // The enumerations leave the wrapper closed.
    EXPECT_FALSE(reg.Write(L"after", 1u));
}

TEST(RegistryTest, FailedOpensReportTheSystemResult)
{
    RegistryTestKey testKey;
    ScopedKey volatileKey(testKey.CreateVolatile(L"Volatile"));
    ASSERT_NE(static_cast<HKEY>(NULL), volatileKey.Get());

    MCRegistry reg;
    EXPECT_FALSE(reg.Open(HKEY_CURRENT_USER, testKey.Path(L"Volatile\\Lasting")));
    EXPECT_EQ(ERROR_CHILD_MUST_BE_VOLATILE, reg.GetErrCode());
    EXPECT_FALSE(reg.Write(L"x", 1u));

    Names names;
    names.Add(CString(L"kept"));
    EXPECT_FALSE(reg.GetEnumKeys(HKEY_CURRENT_USER, testKey.Path(L"Volatile\\Lasting"), names));
    EXPECT_FALSE(reg.GetEnumValues(HKEY_CURRENT_USER, testKey.Path(L"Volatile\\Lasting"), names));
    ASSERT_EQ(1, names.GetSize());
    EXPECT_EQ(CString(L"kept"), names[0]);
}

TEST(RegistryTest, DeleteKeyRefusesAKeyWithSubKeys)
{
    RegistryTestKey testKey;
    MCRegistry child;
    ASSERT_TRUE(child.Open(HKEY_CURRENT_USER, testKey.Path(L"Parent\\Child")));
    child.Close();

    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    EXPECT_FALSE(reg.DeleteKey(L"Parent"));
    EXPECT_NE(ERROR_SUCCESS, reg.GetErrCode());
    EXPECT_TRUE(testKey.Exists(L"Parent\\Child"));

    EXPECT_TRUE(reg.DeleteKey(L"Parent\\Child"));
    EXPECT_TRUE(reg.DeleteKey(L"Parent"));
    EXPECT_FALSE(testKey.Exists(L"Parent"));
    EXPECT_FALSE(reg.DeleteKey(L"Parent"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());

    ASSERT_TRUE(reg.Write(L"v", 1u));
    EXPECT_TRUE(reg.DeleteValue(L"v"));
    EXPECT_FALSE(reg.DeleteValue(L"v"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
}

TEST(RegistryTest, ClosedWrapperCallsLeaveTheErrorCode)
{
    RegistryTestKey testKey;
    MCRegistry fresh;
    DWORD number = 5;
    EXPECT_FALSE(fresh.Read(L"x", number));
    EXPECT_EQ(ERROR_SUCCESS, fresh.GetErrCode());

    MCRegistry reg;
    ASSERT_TRUE(reg.Open(HKEY_CURRENT_USER, testKey.Path()));
    EXPECT_FALSE(reg.DeleteValue(L"Missing"));
    reg.Close();
    reg.Close();  // twice is harmless

    const BYTE data[] = {1};
    CString text;
    DWORD size = sizeof(number);
    EXPECT_FALSE(reg.Write(L"n", 1u));
    EXPECT_FALSE(reg.Write(L"s", CString(L"t")));
    EXPECT_FALSE(reg.Write(L"b", data, sizeof(data)));
    EXPECT_FALSE(reg.Write(1, data, sizeof(data)));
    EXPECT_FALSE(reg.Read(L"n", number));
    EXPECT_FALSE(reg.Read(L"s", text));
    EXPECT_FALSE(reg.Read(L"b", reinterpret_cast<BYTE*>(&number), size));
    EXPECT_FALSE(reg.Read(1, reinterpret_cast<BYTE*>(&number), size));
    EXPECT_FALSE(reg.DeleteKey(L"k"));
    EXPECT_FALSE(reg.DeleteValue(L"v"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, reg.GetErrCode());
    EXPECT_EQ(5u, number);
}

TEST(RegistryTest, CopiesShareOneHandle)
{
    RegistryTestKey testKey;
    RegistryProbe original;
    ASSERT_TRUE(original.Open(HKEY_CURRENT_USER, testKey.Path(L"Shared")));
    EXPECT_FALSE(original.DeleteValue(L"Missing"));

    RegistryProbe assigned;
    {
        RegistryProbe copy(original);
        EXPECT_EQ(original.Key(), copy.Key());
        EXPECT_EQ(testKey.Path(L"Shared"), copy.KeyPath());
        EXPECT_EQ(ERROR_FILE_NOT_FOUND, copy.GetErrCode());
        EXPECT_TRUE(copy.Write(L"FromCopy", 42u));
        DWORD value = 0;
        EXPECT_TRUE(original.Read(L"FromCopy", value));
        EXPECT_EQ(42u, value);

        assigned = copy;
        EXPECT_EQ(original.Key(), assigned.Key());
        // The copy's destructor closes the handle that all three share.
    }
    EXPECT_FALSE(original.Write(L"AfterClose", 1u));
    EXPECT_EQ(ERROR_INVALID_HANDLE, original.GetErrCode());
    original.Forget();
    assigned.Forget();
}

TEST(StringArrayTest, AppendsAndRefusesANegativeSize)
{
    class Corrupted : public MCStringArrayImpl<CString, const CString&> {
    public:
        void SetRawSize(INT_PTR size) { m_nSize = size; }
    };
    Corrupted names;
    EXPECT_EQ(0, names.Add(CString(L"a")));
    EXPECT_EQ(1, names.Add(CString(L"b")));
    EXPECT_EQ(CString(L"b"), names[1]);

    names.SetRawSize(-1);
    bool thrown = false;
    try {
        names.Add(CString(L"c"));
    } catch (CInvalidArgException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
    names.SetRawSize(2);
    EXPECT_EQ(2, names.GetSize());
}
