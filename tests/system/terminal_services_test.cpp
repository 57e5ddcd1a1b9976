#include <gtest/gtest.h>
#include <aclapi.h>
#include <map>
#include <memory>
#include <string>
#include <vector>
#include "ChildProcess.h"
#include "KernelObjectNames.h"

namespace {

// A registry value set for one test and put back as it was afterwards.
class RegistryValueOverride {
public:
    RegistryValueOverride(HKEY root, const wchar_t* subKey, const wchar_t* name)
        : m_key(NULL), m_name(name), m_existed(false), m_type(0)
    {
        ::RegCreateKeyExW(root, subKey, 0, NULL, 0, KEY_QUERY_VALUE | KEY_SET_VALUE, NULL, &m_key, NULL);
        DWORD size = 0;
        if (m_key && ::RegQueryValueExW(m_key, name, NULL, &m_type, NULL, &size) == ERROR_SUCCESS) {
            m_saved.resize(size);
            m_existed = ::RegQueryValueExW(m_key, name, NULL, &m_type, m_saved.empty() ? NULL : &m_saved[0],
                                           &size) == ERROR_SUCCESS;
        }
    }
    ~RegistryValueOverride()
    {
        if (!m_key)
            return;
        if (m_existed)
            ::RegSetValueExW(m_key, m_name.c_str(), 0, m_type, m_saved.empty() ? NULL : &m_saved[0],
                             static_cast<DWORD>(m_saved.size()));
        else
            ::RegDeleteValueW(m_key, m_name.c_str());
        ::RegCloseKey(m_key);
    }
    RegistryValueOverride(const RegistryValueOverride&) = delete;
    RegistryValueOverride& operator=(const RegistryValueOverride&) = delete;

    bool Set(DWORD type, const std::wstring& data)  // data with its terminator(s)
    {
        return m_key && ::RegSetValueExW(m_key, m_name.c_str(), 0, type,
                                         reinterpret_cast<const BYTE*>(data.data()),
                                         static_cast<DWORD>(data.size() * sizeof(wchar_t))) == ERROR_SUCCESS;
    }
    bool Remove() { return m_key && (::RegDeleteValueW(m_key, m_name.c_str()), true); }

private:
    HKEY m_key;
    std::wstring m_name;
    bool m_existed;
    DWORD m_type;
    std::basic_string<BYTE> m_saved;
};

const wchar_t kProductOptions[] = L"System\\CurrentControlSet\\Control\\ProductOptions";

// The probe copy that Wine treats as the given Windows version, running.
class ProbeRun {
public:
    explicit ProbeRun(const wchar_t* version)
        : m_program(std::wstring(L"wts_probe_") + version + L".exe"),
          m_setting(HKEY_CURRENT_USER, (L"Software\\Wine\\AppDefaults\\" + m_program).c_str(), L"Version")
    {
        m_setting.Set(REG_SZ, std::wstring(version) + L'\0');
        m_probe.reset(new ChildProcess(m_program.c_str(), L""));
        m_started = m_probe->Started();
    }
    // What it printed, once it has ended.
    std::map<std::string, std::string> Values()
    {
        std::map<std::string, std::string> values;
        for (std::string line; m_started && !(line = m_probe->ReadLine()).empty();)
            values[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        m_probe->Wait();
        return values;
    }

private:
    std::wstring m_program;
    RegistryValueOverride m_setting;
    std::unique_ptr<ChildProcess> m_probe;
    bool m_started;
};

// "major.minor" of a GetVersion value printed in hex, "9x" for that family.
std::string VersionOf(const std::string& hex)
{
    unsigned long version = std::stoul(hex, NULL, 16);
    if (version & 0x80000000)
        return "9x";
    return std::to_string(version & 0xFF) + "." + std::to_string((version >> 8) & 0xFF);
}

void ExpectNamesFollow(bool terminal, std::map<std::string, std::string>& probe)
{
    EXPECT_EQ(terminal ? "1" : "0", probe["terminal"]);
    EXPECT_EQ(terminal ? "Global\\Foo" : "Foo", probe["global"]);
    EXPECT_EQ(terminal ? "Session\\Foo" : "Foo", probe["session"]);
    EXPECT_EQ(terminal ? "Local\\Foo" : "Foo", probe["local"]);
    EXPECT_EQ("global\\Foo", probe["lowercase"]);
    EXPECT_EQ("Foo", probe["plain"]);
    EXPECT_EQ(terminal ? "Global\\Foo" : "Foo", probe["globalname"]);
    EXPECT_EQ(terminal ? "Local\\Foo" : "Foo", probe["localname"]);
    // Without terminal services the prefix length is skipped blindly.
    EXPECT_EQ(terminal ? "0" : "7", probe["globalname_short_offset"]);
    // The open-access DACL is built only with terminal services.
    if (terminal)
        EXPECT_EQ("1:001f0003:1", probe["dacl"]);
    else
        EXPECT_NE("1:001f0003:1", probe["dacl"]);
}

struct Dacl {
    int count = -1;
    DWORD mask = 0;
    bool everyone = false;
};

Dacl ReadDacl(HANDLE object)
{
    Dacl result;
    ACL* dacl = NULL;
    PSECURITY_DESCRIPTOR descriptor = NULL;
    if (::GetSecurityInfo(object, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, NULL, NULL, &dacl,
                          NULL, &descriptor) != ERROR_SUCCESS)
        return result;
    result.count = dacl ? dacl->AceCount : 0;
    ACCESS_ALLOWED_ACE* ace = NULL;
    if (result.count > 0 && ::GetAce(dacl, 0, reinterpret_cast<void**>(&ace)) &&
        ace->Header.AceType == ACCESS_ALLOWED_ACE_TYPE) {
        BYTE world[SECURITY_MAX_SID_SIZE];
        DWORD size = sizeof(world);
        ::CreateWellKnownSid(WinWorldSid, NULL, world, &size);
        result.mask = ace->Mask;
        result.everyone = ::EqualSid(&ace->SidStart, world) != FALSE;
    }
    ::LocalFree(descriptor);
    return result;
}

class Handle {
public:
    explicit Handle(HANDLE handle = NULL) : m_handle(handle) {}
    ~Handle() { if (m_handle) ::CloseHandle(m_handle); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE get() const { return m_handle; }

private:
    HANDLE m_handle;
};

}  // namespace

// Wine's default version is 6.1, where terminal services are always taken as present.
TEST(TerminalServices, DefaultWineKeepsEveryPrefix)
{
    ASSERT_TRUE(HasTerminalServices());
    EXPECT_EQ(HasTerminalServices(), HasTerminalServices());
    const wchar_t* names[] = {L"Global\\Foo", L"Session\\Foo", L"Local\\Foo", L"global\\Foo", L"Foo", L""};
    for (const wchar_t* name : names) {
        EXPECT_EQ(name, KernaelObjectName(name));
        EXPECT_EQ(name, GlobalName(name));
        EXPECT_EQ(name, LocalName(name));
    }
    EXPECT_EQ(NULL, KernaelObjectName(NULL));
    EXPECT_EQ(NULL, GlobalName(NULL));
    EXPECT_EQ(NULL, LocalName(NULL));
}

TEST(TerminalServices, EmulatedWindowsVersions)
{
    RegistryValueOverride suite(HKEY_LOCAL_MACHINE, kProductOptions, L"ProductSuite");
    ASSERT_TRUE(suite.Remove());
    const struct {
        const wchar_t* wine;
        const char* version;
        bool terminal;
    } cases[] = {
        {L"win98", "9x", false},
        {L"nt40", "4.0", false},  // no "ProductSuite" value at all
        // Wine's VerifyVersionInfoA reports no terminal suite, so 5.0 answers no.
        {L"win2k", "5.0", false},
        {L"winxp", "5.1", true},
        {L"win7", "6.1", true},
    };
    // Each version has its own program name and setting, so they run side by side.
    std::vector<std::unique_ptr<ProbeRun>> runs;
    for (const auto& c : cases)
        runs.emplace_back(new ProbeRun(c.wine));
    for (size_t i = 0; i < runs.size(); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(std::string(c.version));
        std::map<std::string, std::string> probe = runs[i]->Values();
        ASSERT_FALSE(probe["version"].empty());
        EXPECT_EQ(c.version, VersionOf(probe["version"]));
        ExpectNamesFollow(c.terminal, probe);
    }
}

TEST(TerminalServices, NT4ReadsTheProductSuiteList)
{
    RegistryValueOverride suite(HKEY_LOCAL_MACHINE, kProductOptions, L"ProductSuite");
    const struct {
        DWORD type;
        std::wstring value;
        bool terminal;
    } cases[] = {
        {REG_MULTI_SZ, std::wstring(L"Enterprise\0Terminal Server\0\0", 29), true},
        {REG_MULTI_SZ, std::wstring(L"Terminal Server\0\0", 17), true},
        {REG_MULTI_SZ, std::wstring(L"Enterprise\0Small Business\0\0", 27), false},
        {REG_MULTI_SZ, std::wstring(L"terminal server\0\0", 17), false},
        {REG_SZ, std::wstring(L"Terminal Server\0", 16), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << ", " << c.value.size() << " chars");
        ASSERT_TRUE(suite.Set(c.type, c.value));
        std::map<std::string, std::string> probe = ProbeRun(L"nt40").Values();
        ASSERT_EQ("4.0", VersionOf(probe["version"]));
        ExpectNamesFollow(c.terminal, probe);
    }
}

TEST(OpenAccessMutex, DaclGrantsEveryoneAllAccessOnly)
{
    ASSERT_TRUE(HasTerminalServices());
    Handle mutex(CreateMutexAllAccess(NULL, FALSE, L"TesvorTestOpenAccessMutex"));
    ASSERT_NE(HANDLE(NULL), mutex.get());
    Dacl dacl = ReadDacl(mutex.get());
    EXPECT_EQ(1, dacl.count) << "the administrators' entry stays out";
    EXPECT_TRUE(dacl.everyone);
    EXPECT_EQ(0x001F0003u, dacl.mask);
}

TEST(OpenAccessMutex, SecondCreationReportsAlreadyExists)
{
    Handle first(CreateMutexAllAccess(NULL, TRUE, L"Global\\TesvorTestTwiceMutex"));
    ASSERT_NE(HANDLE(NULL), first.get());
    ::SetLastError(0);
    Handle second(CreateMutexAllAccess(NULL, FALSE, L"Global\\TesvorTestTwiceMutex"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ALREADY_EXISTS), ::GetLastError());
    EXPECT_NE(HANDLE(NULL), second.get());
}

TEST(OpenAccessMutex, CallerSecurityAttributesAreUsedAsGiven)
{
    // Everyone may only wait on this one: a mask the open-access DACL never has.
    BYTE world[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof(world);
    ASSERT_TRUE(::CreateWellKnownSid(WinWorldSid, NULL, world, &size));
    BYTE aclBuffer[128];
    ACL* acl = reinterpret_cast<ACL*>(aclBuffer);
    ASSERT_TRUE(::InitializeAcl(acl, sizeof(aclBuffer), ACL_REVISION));
    ASSERT_TRUE(::AddAccessAllowedAce(acl, ACL_REVISION, SYNCHRONIZE, world));
    SECURITY_DESCRIPTOR descriptor;
    ASSERT_TRUE(::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
    ASSERT_TRUE(::SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE));
    SECURITY_ATTRIBUTES attributes = {sizeof(attributes), &descriptor, FALSE};

    Handle mutex(CreateMutexAllAccess(&attributes, FALSE, L"TesvorTestCallerSecuredMutex"));
    ASSERT_NE(HANDLE(NULL), mutex.get());
    Dacl dacl = ReadDacl(mutex.get());
    EXPECT_EQ(1, dacl.count);
    EXPECT_EQ(static_cast<DWORD>(SYNCHRONIZE), dacl.mask);
}
