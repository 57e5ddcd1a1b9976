// Test helper: a registry key of its own for each test, HKCU\Software\<test
// name>, made empty at the start and removed with everything under it at the end.
#pragma once
#include <afx.h>
#include <gtest/gtest.h>

// Closes a registry key handle when it goes out of scope.
class ScopedKey {
public:
    explicit ScopedKey(HKEY key = NULL) : m_key(key) {}
    ~ScopedKey()
    {
        if (m_key != NULL)
            ::RegCloseKey(m_key);
    }
    ScopedKey(const ScopedKey&) = delete;
    ScopedKey& operator=(const ScopedKey&) = delete;
    HKEY Get() const { return m_key; }

private:
    HKEY m_key;
};

class RegistryTestKey {
public:
    RegistryTestKey() : m_key(NULL)
    {
        const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path.Format(L"Software\\TesvorUtilTest_%S_%S", test->test_suite_name(), test->name());
        ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
        ::RegDeleteKeyW(HKEY_CURRENT_USER, m_path);
        ::RegCreateKeyExW(HKEY_CURRENT_USER, m_path, 0, NULL, 0, KEY_ALL_ACCESS, NULL, &m_key, NULL);
    }
    ~RegistryTestKey()
    {
        if (m_key != NULL)
            ::RegCloseKey(m_key);
        ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
        ::RegDeleteKeyW(HKEY_CURRENT_USER, m_path);
    }
    RegistryTestKey(const RegistryTestKey&) = delete;
    RegistryTestKey& operator=(const RegistryTestKey&) = delete;

    HKEY Handle() const { return m_key; }
    // The key's path under HKEY_CURRENT_USER, with `sub` appended when given.
    CString Path(const wchar_t* sub = NULL) const { return sub != NULL ? m_path + L"\\" + sub : m_path; }
    bool Exists(const wchar_t* sub) const
    {
        HKEY key = NULL;
        if (::RegOpenKeyExW(m_key, sub, 0, KEY_READ, &key) != ERROR_SUCCESS)
            return false;
        ::RegCloseKey(key);
        return true;
    }
    // A volatile sub-key, under which no lasting key can be created.
    HKEY CreateVolatile(const wchar_t* sub) const
    {
        HKEY key = NULL;
        ::RegCreateKeyExW(m_key, sub, 0, NULL, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, NULL, &key, NULL);
        return key;
    }

private:
    CString m_path;
    HKEY m_key;
};
