// Each rule of the linter against the smallest description that breaks it: the
// one finding it must give, where, and its exact words. The cases are in
// tests/data/lint/rules.txt. (Descriptions that look odd but are read as meant
// lint clean: tests/data/lint/read-as-meant.xml.)
#include <gtest/gtest.h>
#include <UILint.h>
#include <set>
#include <sstream>
#include <string>
#include "TestSupport.h"

namespace {

// A UTF-8 file under tests/data, as wide text.
std::wstring ReadTestData(const wchar_t* relative)
{
    const std::vector<BYTE> bytes = FileBytes(TestDataPath(relative));
    std::wstring text(bytes.size(), L'\0');
    text.resize(::MultiByteToWideChar(CP_UTF8, 0, reinterpret_cast<const char*>(bytes.data()),
                                      static_cast<int>(bytes.size()), &text[0], static_cast<int>(text.size())));
    return text;
}

TEST(LintRules, EachRuleFindsItsMistakeAndSaysWhatTheReaderDoesInstead)
{
    std::wistringstream cases(ReadTestData(L"lint\\rules.txt"));
    std::set<std::wstring> tested;
    std::wstring rule, xml, expected;
    while (std::getline(cases, rule)) {
        if (rule.empty() || rule[0] == L'#')
            continue;
        ASSERT_TRUE(std::getline(cases, xml) && std::getline(cases, expected)) << "a case is three lines";
        const uilint::Report report = uilint::LintText(L"case.xml", xml.c_str());
        ASSERT_TRUE(report.readable);
        tested.insert(rule);
        ASSERT_EQ(1u, report.findings.size()) << testing::PrintToString(xml);
        const uilint::Finding& finding = report.findings[0];
        EXPECT_EQ(rule, uilint::GetRule(finding.rule).id);
        EXPECT_EQ(expected,
                  std::to_wstring(finding.line) + L":" + std::to_wstring(finding.column) + L": " + finding.message);
    }
    for (int id = 0; id < uilint::RuleCount; ++id)
        EXPECT_EQ(1u, tested.count(uilint::GetRule(static_cast<uilint::RuleId>(id)).id))
            << "no case for " << testing::PrintToString(std::wstring(uilint::GetRule(static_cast<uilint::RuleId>(id)).id));
}

}  // namespace
