// Each rule of the linter against the smallest description that breaks it: the
// one finding it must give, where, and its exact words. (Descriptions that look
// odd but are read as meant lint clean: tests/data/lint/read-as-meant.xml.)
#include <gtest/gtest.h>
#include <UILint.h>
#include <set>
#include <string>

namespace {

struct Case {
    const wchar_t* rule;
    const wchar_t* xml;
    const wchar_t* expected;  // "LINE:COLUMN: message"
};

const wchar_t kFace32[] = L"<root><window><font><logfont facename='ABCDEFGHIJKLMNOPQRSTUVWXYZ012345'/></font></window></root>";

const Case kCases[] = {
    {L"malformed-xml", L"<root><window></root>",
     L"1:22: the end tag does not match the start tag; the reader loads nothing from this file"},
    {L"root-element", L"<ui/>",
     L"1:2: the document element is 'ui', not 'root' without a namespace; the reader finds nothing in this file"},
    {L"root-element", L"<root xmlns='urn:x'/>",
     L"1:2: the document element is 'root' in the namespace \"urn:x\", not 'root' without a namespace; the reader finds nothing in this file"},
    {L"unknown-element", L"<root><window><contrl/></window></root>",
     L"1:16: unknown element 'contrl' in 'window'; the reader ignores it and everything in it (did you mean 'control'?)"},
    {L"unknown-element", L"<root><window><logfont/></window></root>",
     L"1:16: 'logfont' does not belong in 'window' (it belongs in 'font'); the reader ignores it and everything in it"},
    {L"unknown-attribute", L"<root><window tooltipp='Help'/></root>",
     L"1:15: unknown attribute 'tooltipp' on 'window'; the reader ignores it (did you mean 'tooltip'?)"},
    {L"unknown-attribute", L"<root><window><control move='xy'/></window></root>",
     L"1:24: 'move' is not an attribute of 'control' (it belongs to 'window'); the reader ignores it"},
    {L"repeated-element", L"<root><window><footer/><footer/></window></root>",
     L"1:25: a second 'footer' in 'window' (the first is at line 1): the reader reads only the first and ignores this one"},
    {L"repeated-element", L"<root><window/><window/></root>",
     L"1:17: a second 'window' in 'root' (the first is at line 1): the reader reads only the first; of this one it reads only the 'control' elements"},
    {L"ignored-children", L"<root><fontschema><font schema='a' schemaonly='1'><logfont/></font></fontschema></root>",
     L"1:52: 'logfont' is not read: its 'font' has schemaonly=\"1\"; the reader ignores it and everything in it"},
    {L"ignored-text", L"<root><script file='a.js'>a.js</script></root>",
     L"1:31: text in 'script' is not read; the reader reads only elements and attributes"},
    {L"unknown-keyword", L"<root><window move='XY'/></root>",
     L"1:15: 'move' is \"XY\", none of its keywords; the reader leaves it at \"x\" (did you mean \"xy\"?)"},
    {L"unknown-keyword", L"<root><window><font><logfont weight='Bold'/></font></window></root>",
     L"1:30: 'weight' is \"Bold\", neither a keyword nor a number; the reader leaves it at \"dontcare\" (did you mean \"bold\"?)"},
    {L"flag-value", L"<root><window visible='true'/></root>",
     L"1:15: 'visible' is \"true\", which the reader takes as false: only \"1\" is true"},
    {L"bad-number", L"<root><window idv='abc'/></root>",
     L"1:15: 'idv' is \"abc\", not a number; the reader takes 0"},
    {L"bad-number", L"<root><window rect='1 ,2,3,4'/></root>",
     L"1:15: 'rect' is \"1 ,2,3,4\", not left,top,right,bottom (numbers separated by single commas); the reader ignores it"},
    {L"trailing-text", L"<root><window idv='12px'/></root>",
     L"1:15: 'idv' is \"12px\": the reader reads 12 and ignores \"px\""},
    {L"number-range", L"<root><window><font><logfont italic='256'/></font></window></root>",
     L"1:30: 'italic' is \"256\", out of range 0..255; the reader takes 0"},
    {L"number-range", L"<root><window idv='-1'/></root>",
     L"1:15: 'idv' is \"-1\": the reader reads it as 4294967295"},
    {L"number-range", L"<root><window><font><textstyle rgbtextcolor='0,256,0'/></font></window></root>",
     L"1:32: 'rgbtextcolor' is \"0,256,0\": 256 is out of range 0..255, so the reader ignores the whole value"},
    {L"octal-number", L"<root><window rect='0,0,010,10'/></root>",
     L"1:15: 'rect' is \"0,0,010,10\": the reader reads 010 as octal, 8"},
    {L"conflicting-attributes", L"<root><window rect='0,0,10,10' rectex='0,0,10,10'/></root>",
     L"1:15: both 'rect' and 'rectex' are given: the reader takes 'rectex' and ignores 'rect'"},
    {L"conflicting-attributes", L"<root><window anchorss='lt' anchorsv='0,0,0,0'/></root>",
     L"1:29: 'anchorsv' is not read because 'anchorss' is given; the reader takes 'anchorss'"},
    {L"invalid-anchors", L"<root><window anchorsv='10,0,5,100'/></root>",
     L"1:15: 'anchorsv' is \"10,0,5,100\": left 10 is greater than right 5; the reader sets no anchors (0,0,0,0)"},
    {L"invalid-anchors", L"<root><window anchorss='rtlb'/></root>",
     L"1:15: 'anchorss' is \"rtlb\": the left anchor r lies right of the right anchor l; the reader sets no anchors (0,0,0,0)"},
    {L"invalid-anchors", L"<root><window anchorss='xb'/></root>",
     L"1:15: 'anchorss' is \"xb\": x is not l, c or r, so the reader takes it as l"},
    {L"ignored-under-skin-path", L"<root><window><control skinphobjpath='a/b' cxmin='10'/></window></root>",
     L"1:44: 'cxmin' is not read because 'skinphobjpath' is set; the reader leaves it at 0"},
    {L"facename-too-long", kFace32,
     L"1:30: 'facename' is \"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345\", 32 characters, more than the 31 a log font holds; the reader ignores it"},
    {L"missing-attribute", L"<root><str_table><entry id='a'/></str_table></root>",
     L"1:19: 'entry' without 'text': the reader skips it"},
    {L"table-ends", L"<root><str_table_id><entry id='x' text='t'/></str_table_id></root>",
     L"1:28: 'id' is \"x\", not a number: the reader stops reading the 'entry' elements of 'str_table_id' here, and this one and all after it are lost"},
    {L"duplicate-key", L"<root><str_table><entry id='a' text='1'/><entry id='a' text='2'/></str_table></root>",
     L"1:49: 'id' \"a\" is already the key of the 'entry' at line 1; the reader keeps that one and drops this one"},
    {L"duplicate-key", L"<root><str_table_id><entry id='7' text='1'/><entry id='07' text='2'/></str_table_id></root>",
     L"1:52: 'id' \"07\" is already the key of the 'entry' at line 1; the reader keeps that one and drops this one"},
    {L"unknown-schema",
     L"<root><window><control type='button' schema='ok'/></window>"
     L"<controlsschema><control type='edit' schema='ok'/></controlsschema></root>",
     L"1:38: 'schema' names \"ok\", which no 'control' in 'controlsschema' has for 'type' button; the reader keeps the name, and the program finds no schema under it"},
    {L"unknown-schema", L"<root><window><font schema='labl'/></window><fontschema><font schema='label'/></fontschema></root>",
     L"1:21: 'schema' names \"labl\", which no 'font' in 'fontschema' has; the reader keeps the name, and the program finds no schema under it (did you mean \"label\"?)"},
    {L"duplicate-identifier", L"<root><window><control idv='5'/><control idv='5'/></window></root>",
     L"1:42: 'idv' \"5\" is already used by the 'control' at line 1 of this 'window'; the reader keeps both, and the identifier does not tell them apart"},
    {L"outside-window", L"<root><window rectex='0,0,100,50'><control rectex='90,0,20,10'/></window></root>",
     L"1:44: the 'control' at 90,0,110,10 (left,top,right,bottom) reaches outside its 'window', which is 100 x 50; the reader keeps the rectangle as written, and the part outside is cut off"},
};

std::wstring Describe(const uilint::Finding& finding)
{
    return std::to_wstring(finding.line) + L":" + std::to_wstring(finding.column) + L": " + finding.message;
}

TEST(LintRules, EachRuleFindsItsMistakeAndSaysWhatTheReaderDoesInstead)
{
    std::set<std::wstring> tested;
    for (const Case& c : kCases) {
        const uilint::Report report = uilint::LintText(L"case.xml", c.xml);
        ASSERT_TRUE(report.readable);
        tested.insert(c.rule);
        ASSERT_EQ(1u, report.findings.size()) << testing::PrintToString(std::wstring(c.xml));
        EXPECT_EQ(std::wstring(c.rule), uilint::GetRule(report.findings[0].rule).id);
        EXPECT_EQ(std::wstring(c.expected), Describe(report.findings[0]));
    }
    for (int id = 0; id < uilint::RuleCount; ++id)
        EXPECT_EQ(1u, tested.count(uilint::GetRule(static_cast<uilint::RuleId>(id)).id))
            << "no case for " << testing::PrintToString(std::wstring(uilint::GetRule(static_cast<uilint::RuleId>(id)).id));
}

}  // namespace
