#include "MCRegistry.h"

#include <vector>

namespace {

// Names the debug-heap fill pattern a bad pointer holds; for the debugger only.
[[maybe_unused]] const wchar_t* BadPointerDescription(const void* p)
{
    switch (reinterpret_cast<UINT_PTR>(p)) {
    case 0xFDFDFDFD: return L"No man's land (normally outside of a process)";
    case 0xDDDDDDDD: return L"Freed memory";
    case 0xCDCDCDCD: return L"Uninitialized (global)";
    case 0xCCCCCCCC: return L"Uninitialized locals (on the stack)";
    case 0xFEEEFEEE: return L"Deleted MFC object pointer";
    default: return L"not valid address";
    }
}

CString IndexName(int index)
{
    CString name;
    name.Format(L"%d", index);
    return name;
}

}  // namespace

MCRegistry::MCRegistry() : m_hKey(NULL), m_errCode(ERROR_SUCCESS) {}

MCRegistry::MCRegistry(const MCRegistry& other)
    : m_hKey(other.m_hKey), m_keyPath(other.m_keyPath), m_errCode(other.m_errCode)
{
}

MCRegistry& MCRegistry::operator=(const MCRegistry& other)
{
    if (m_hKey != other.m_hKey)
        Close();
    m_hKey = other.m_hKey;
    m_keyPath = other.m_keyPath;
    m_errCode = other.m_errCode;
    return *this;
}

MCRegistry::~MCRegistry() { Close(); }

bool MCRegistry::Keep(LONG result)
{
    m_errCode = result;
    return result == ERROR_SUCCESS;
}

bool MCRegistry::Open(HKEY root, const CString& subKey)
{
    m_keyPath = subKey;
    return Keep(::RegCreateKeyExW(root, subKey, 0, NULL, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, NULL,
                                  &m_hKey, NULL));
}

void MCRegistry::Close()
{
    if (m_hKey != NULL) {
        ::RegCloseKey(m_hKey);
        m_hKey = NULL;
    }
}

LONG MCRegistry::GetErrCode() { return m_errCode; }

bool MCRegistry::Write(const CString& name, DWORD value)
{
    if (m_hKey == NULL)
        return false;
    return Keep(::RegSetValueExW(m_hKey, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                                 sizeof(value)));
}

bool MCRegistry::Write(const CString& name, const CString& value)
{
    if (m_hKey == NULL)
        return false;
    DWORD bytes = static_cast<DWORD>(value.GetLength() + 1) * sizeof(wchar_t);
    return Keep(::RegSetValueExW(m_hKey, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.GetString()),
                                 bytes));
}

bool MCRegistry::Write(const CString& name, const BYTE* data, DWORD size)
{
    if (m_hKey == NULL)
        return false;
    if (!AfxIsValidAddress(data, 1, FALSE)) {
        TRACE(L"MCRegistry::Write: %s\n", BadPointerDescription(data));
        return false;
    }
    return Keep(::RegSetValueExW(m_hKey, name, 0, REG_BINARY, data, size));
}

bool MCRegistry::Write(int index, const BYTE* data, DWORD size) { return Write(IndexName(index), data, size); }

bool MCRegistry::Read(const CString& name, DWORD& value)
{
    if (m_hKey == NULL)
        return false;
    DWORD read = 0;
    DWORD size = sizeof(read);
    if (!Keep(::RegQueryValueExW(m_hKey, name, NULL, NULL, reinterpret_cast<BYTE*>(&read), &size)))
        return false;
    value = read;
    return true;
}

bool MCRegistry::Read(const CString& name, CString& value)
{
    if (m_hKey == NULL)
        return false;
    value.Empty();
    DWORD size = 0;
    if (!Keep(::RegQueryValueExW(m_hKey, name, NULL, NULL, NULL, &size)))
        return false;
    if (size == 0)
        return true;
    // Zeroed, with room for a terminator after an odd or unterminated value.
    std::vector<BYTE> buffer(size + sizeof(wchar_t) + 1, 0);
    if (!Keep(::RegQueryValueExW(m_hKey, name, NULL, NULL, buffer.data(), &size)))
        return false;
    buffer[size] = 0;
    value = reinterpret_cast<const wchar_t*>(buffer.data());
    return true;
}

bool MCRegistry::Read(const CString& name, BYTE* data, DWORD& size)
{
    if (m_hKey == NULL)
        return false;
    return Keep(::RegQueryValueExW(m_hKey, name, NULL, NULL, data, &size));
}

bool MCRegistry::Read(int index, BYTE* data, DWORD& size) { return Read(IndexName(index), data, size); }

bool MCRegistry::DeleteKey(const CString& subKey)
{
    if (m_hKey == NULL)
        return false;
    return Keep(::RegDeleteKeyW(m_hKey, subKey));
}

bool MCRegistry::DeleteValue(const CString& name)
{
    if (m_hKey == NULL)
        return false;
    return Keep(::RegDeleteValueW(m_hKey, name));
}

bool MCRegistry::GetEnumKeys(HKEY root, const CString& subKey, MCStringArrayImpl<CString, const CString&>& names)
{
    if (!Open(root, subKey))
        return false;
    names.RemoveAll();
    wchar_t name[262];
    for (DWORD index = 0; ::RegEnumKeyW(m_hKey, index, name, ARRAYSIZE(name)) == ERROR_SUCCESS; ++index)
        names.Add(CString(name));
    Close();
    return true;
}

bool MCRegistry::GetEnumValues(HKEY root, const CString& subKey, MCStringArrayImpl<CString, const CString&>& names)
{
    if (!Open(root, subKey))
        return false;
    names.RemoveAll();
    wchar_t name[262];
    for (DWORD index = 0;; ++index) {
        DWORD length = 260;
        if (::RegEnumValueW(m_hKey, index, name, &length, NULL, NULL, NULL, NULL) != ERROR_SUCCESS)
            break;
        names.Add(CString(name, static_cast<int>(length)));
    }
    Close();
    return true;
}
