// Registry keys and values that a test owns for the time it runs.
#pragma once
#include <afx.h>
#include <gtest/gtest.h>
#include <string>
#include "frame/Owners.h"

// HKCU\Software\TesvorUtilTest_<suite>_<test>: empty at the start, removed with
// everything under it at the end.
class ScopedTestKey {
public:
    ScopedTestKey()
    {
        const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path.Format(L"Software\\TesvorUtilTest_%S_%S", test->test_suite_name(), test->name());
        ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
        m_key.reset(Create(HKEY_CURRENT_USER, m_path));
    }
    ~ScopedTestKey()
    {
        m_key.reset(NULL);
        ::RegDeleteTreeW(HKEY_CURRENT_USER, m_path);
    }

    HKEY Handle() const { return m_key.get(); }
    // The key's path under HKEY_CURRENT_USER, with `sub` appended when given.
    CString Path(const wchar_t* sub = NULL) const { return sub != NULL ? m_path + L"\\" + sub : m_path; }
    bool Exists(const wchar_t* sub) const
    {
        UniqueHKey key;
        return ::RegOpenKeyExW(Handle(), sub, 0, KEY_READ, key.put()) == ERROR_SUCCESS;
    }
    // A key (made when missing) that the caller closes; REG_OPTION_VOLATILE makes one under
    // which no lasting key can be created.
    static HKEY Create(HKEY parent, const wchar_t* sub, DWORD options = 0)
    {
        HKEY key = NULL;
        ::RegCreateKeyExW(parent, sub, 0, NULL, options, KEY_ALL_ACCESS, NULL, &key, NULL);
        return key;
    }

private:
    CString m_path;
    UniqueHKey m_key;
};

// A registry value set for a test and put back as it was afterwards.
class ScopedValueOverride {
public:
    ScopedValueOverride(HKEY root, const wchar_t* subKey, const wchar_t* name)
        : m_key(ScopedTestKey::Create(root, subKey)), m_name(name)
    {
        DWORD size = 0;
        if (::RegQueryValueExW(m_key.get(), name, NULL, &m_type, NULL, &size) == ERROR_SUCCESS) {
            m_saved.resize(size);
            m_existed = ::RegQueryValueExW(m_key.get(), name, NULL, &m_type, &m_saved[0], &size) == ERROR_SUCCESS;
        }
    }
    ~ScopedValueOverride()
    {
        if (m_existed)
            ::RegSetValueExW(m_key.get(), m_name.c_str(), 0, m_type, m_saved.data(), DWORD(m_saved.size()));
        else
            Remove();
    }
    // `data` with its terminator(s).
    bool Set(DWORD type, const std::wstring& data)
    {
        return ::RegSetValueExW(m_key.get(), m_name.c_str(), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                static_cast<DWORD>(data.size() * sizeof(wchar_t))) == ERROR_SUCCESS;
    }
    void Remove() { ::RegDeleteValueW(m_key.get(), m_name.c_str()); }

private:
    UniqueHKey m_key;
    std::wstring m_name;
    bool m_existed = false;
    DWORD m_type = 0;
    std::basic_string<BYTE> m_saved;
};
