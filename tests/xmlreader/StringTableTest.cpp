// String tables, free data and the script reference.
#include "ReaderTestAccess.h"
#include <memory>

typedef MCXMLReaderTestAccess Access;
typedef MCOrderedMap<CString, const wchar_t*, CString, CString&> TextTable;
typedef MCMap<DWORD, DWORD, CString, CString&> NumberTable;
typedef MCOrderedMap<CString, const wchar_t*, TextTable*, TextTable*&> SectionTables;

namespace {

class DescriptionTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(S_OK, reader.Open(TestDataPath(L"xmlreader\\description.xml"), 0)); }
    MCXMLReader reader;
};

CString Joined(const TextTable& table)
{
    CString out;
    for (INT_PTR i = 0; i < table.GetKeyCount(); ++i) {
        CString value;
        table.Lookup(table.GetKeyAt(i), value);
        out += table.GetKeyAt(i) + L"=" + value + L";";
    }
    return out;
}

CString Text(const NumberTable& table, DWORD id)
{
    CString value(L"<none>");
    table.Lookup(id, value);
    return value;
}

void DeleteSections(SectionTables& sections)
{
    for (INT_PTR i = 0; i < sections.GetKeyCount(); ++i) {
        TextTable* section = NULL;
        sections.Lookup(sections.GetKeyAt(i), section);
        delete section;
    }
    sections.RemoveAll();
}

CString NameOf(const IXMLDOMNodePtr& node)
{
    IXMLDOMElementPtr element = node;
    _variant_t name;
    if (!element || element->getAttribute(_bstr_t(L"name"), &name) != S_OK || name.vt != VT_BSTR)
        return L"<none>";
    return CString(name.bstrVal);
}

}  // namespace

TEST_F(DescriptionTest, TextKeyedTableKeepsFirstAndSkipsPartialEntries)
{
    TextTable table;
    EXPECT_EQ(S_OK, reader.GetStringTableMap(table));
    EXPECT_EQ(CString(L"hello=Hello;bye=Good bye;last=Last;"), Joined(table));
}

TEST_F(DescriptionTest, NumberKeyedTableKeepsFirstAndSkipsPartialEntries)
{
    NumberTable table;
    EXPECT_EQ(S_OK, reader.GetStringTableMapByID(table));
    EXPECT_EQ(3, table.GetCount());
    EXPECT_EQ(CString(L"ten"), Text(table, 10));
    EXPECT_EQ(CString(L"twenty"), Text(table, 20));
    EXPECT_EQ(CString(L"<none>"), Text(table, 30));
    EXPECT_EQ(CString(L"forty"), Text(table, 40));
}

TEST(StringTables, NonNumericIdEndsTheNumberKeyedTable)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(
                        L"<root><str_table_id><entry id='1' text='one'/><entry id='two' text='2'/>"
                        L"<entry id='3' text='three'/></str_table_id></root>")));
    NumberTable table;
    EXPECT_EQ(S_FALSE, reader.GetStringTableMapByID(table));
    EXPECT_EQ(1, table.GetCount());
    EXPECT_EQ(CString(L"one"), Text(table, 1));
}

TEST(StringTables, MissingTablesAndClosedReaders)
{
    MCXMLReader reader;
    TextTable table;
    CString keep(L"keep");
    table.SetAt(L"k", keep);
    NumberTable numbers;
    MCUIScriptData script;
    EXPECT_EQ(E_FAIL, reader.GetStringTableMap(table));
    EXPECT_EQ(E_FAIL, reader.GetStringTableMapByID(numbers));
    EXPECT_EQ(E_FAIL, reader.GetScriptData(script));
    EXPECT_EQ(E_FAIL, reader.GetFreedataTableMapBySectionName(L"x", table));
    SectionTables sections;
    EXPECT_EQ(E_FAIL, reader.GetAllFreedataSectionTables(sections));
    IXMLDOMNodePtr node;
    EXPECT_EQ(E_FAIL, reader.GetFreedataTableNodeBySectionName(L"x", node));
    EXPECT_EQ(CString(L"k=keep;"), Joined(table));

    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(L"<root/>")));
    EXPECT_EQ(S_FALSE, reader.GetStringTableMap(table));
    EXPECT_EQ(S_FALSE, reader.GetStringTableMapByID(numbers));
    EXPECT_EQ(S_FALSE, reader.GetScriptData(script));
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableMapBySectionName(L"x", table));
    EXPECT_EQ(S_FALSE, reader.GetAllFreedataSectionTables(sections));
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableNodeBySectionName(L"x", node));
    EXPECT_EQ(CString(L"k=keep;"), Joined(table)) << "tables are appended to, never cleared";
    EXPECT_EQ(0, sections.GetCount());
}

TEST_F(DescriptionTest, ScriptReference)
{
    MCUIScriptData script;
    EXPECT_EQ(S_OK, reader.GetScriptData(script));
    EXPECT_EQ(CString(L"dialog.js"), script.strFile);
}

TEST_F(DescriptionTest, FreedataSectionByNameIsCaseSensitive)
{
    TextTable general, lower, none;
    EXPECT_EQ(S_OK, reader.GetFreedataTableMapBySectionName(L"General", general));
    EXPECT_EQ(CString(L"Mode=fast;Size=12;Empty=;"), Joined(general)) << "first of a name wins, partial entries skipped";
    EXPECT_EQ(S_OK, reader.GetFreedataTableMapBySectionName(L"general", lower));
    EXPECT_EQ(CString(L"Lower=yes;"), Joined(lower));
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableMapBySectionName(L"GENERAL", none));
    EXPECT_EQ(0, none.GetCount());
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableMapBySectionName(L"Empty", none)) << "a section without entries";
    EXPECT_EQ(0, none.GetCount());
}

TEST_F(DescriptionTest, FreedataSectionNode)
{
    IXMLDOMNodePtr node;
    EXPECT_EQ(S_OK, reader.GetFreedataTableNodeBySectionName(L"Last", node));
    EXPECT_EQ(CString(L"Last"), NameOf(node));
    EXPECT_EQ(S_OK, reader.GetFreedataTableNodeBySectionName(L"general", node));
    EXPECT_EQ(CString(L"general"), NameOf(node));

    // No match: the node stays, the result is that of the last name read.
    EXPECT_EQ(S_OK, reader.GetFreedataTableNodeBySectionName(L"GENERAL", node));
    EXPECT_EQ(CString(L"general"), NameOf(node));
}

TEST(Freedata, NoMatchAfterAnUnnamedLastSectionIsSFalse)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(
                        L"<root><freedata><section name='a'/><section other='b'/></freedata></root>")));
    IXMLDOMNodePtr node;
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableNodeBySectionName(L"z", node));
    EXPECT_FALSE(node);
}

TEST_F(DescriptionTest, AllFreedataSections)
{
    SectionTables sections;
    EXPECT_EQ(S_OK, reader.GetAllFreedataSectionTables(sections));
    ASSERT_EQ(5, sections.GetKeyCount());
    const wchar_t* names[] = {L"General", L"general", L"", L"Empty", L"Last"};
    const wchar_t* contents[] = {L"Mode=fast;Size=12;Empty=;", L"Lower=yes;", L"Orphan=1;", L"", L"Z=26;A=1;"};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(CString(names[i]), sections.GetKeyAt(i));
        TextTable* section = NULL;
        ASSERT_TRUE(sections.Lookup(names[i], section));
        ASSERT_TRUE(section != nullptr);
        EXPECT_EQ(CString(contents[i]), Joined(*section)) << i;
    }
    DeleteSections(sections);
}
