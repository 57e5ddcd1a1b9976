// What the golden cases (golden_dumps.py) cannot show: every getter's result, records
// and tables that held something before the call, and the free-data lookups by name.
#include "ReaderTestAccess.h"
#include "MCUIWindowData.h"
#include "MCUIImageListData.h"
#include <functional>

typedef MCXMLReader::StringTable TextTable;

namespace {

CString Joined(const TextTable& table)
{
    CString out, value;
    for (INT_PTR i = 0; i < table.GetKeyCount(); ++i) {
        table.Lookup(table.GetKeyAt(i), value);
        out += table.GetKeyAt(i) + L"=" + value + L";";
    }
    return out;
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

TEST(ReaderRecords, EveryGetterWithoutADocumentWithoutItsSectionAndWithIt)
{
    // Outputs as a caller may hold them: a closed reader or a missing section leaves them alone.
    MCUIWindowData window;
    window.strSkinForm = L"untouched";
    FontTable fonts;
    ControlTable controls;
    MCUIScriptData script;
    script.strFile = L"untouched";
    TextTable table, section;
    CString keep(L"keep");
    table.SetAt(L"k", keep);
    MCXMLReader::StringTableByID numbers;
    OwningMap<MCXMLReader::FreedataSections> sections;
    IXMLDOMNodePtr node;
    OwningMap<MCXMLReader::ImageLists> iconLists, cursorLists;
    MCXMLReader::ImageListNames icons, cursors;
    const struct Getter {
        std::function<HRESULT(MCXMLReader&)> call;
        HRESULT withoutSection;  // S_FALSE or S_OK; without a document E_FAIL, with the section S_OK
    } getters[] = {
        {[&](auto& r) { return r.GetDialogData(window); }, S_FALSE},
        {[&](auto& r) { return r.GetAllFontsSchemaData(fonts); }, S_OK},
        {[&](auto& r) { return r.GetAllControlsSchemaDataByType(MEControlTypeButton, controls); }, S_OK},
        {[&](auto& r) { return r.GetScriptData(script); }, S_FALSE},
        {[&](auto& r) { return r.GetStringTableMap(table); }, S_FALSE},
        {[&](auto& r) { return r.GetStringTableMapByID(numbers); }, S_FALSE},
        {[&](auto& r) { return r.GetFreedataTableMapBySectionName(L"General", section); }, S_FALSE},
        {[&](auto& r) { return r.GetAllFreedataSectionTables(sections); }, S_FALSE},
        {[&](auto& r) { return r.GetFreedataTableNodeBySectionName(L"Last", node); }, S_FALSE},
        {[&](auto& r) { return r.GetImageListsData(MEUIImageKindIcon, iconLists); }, S_FALSE},
        {[&](auto& r) { return r.GetImageListsData(MEUIImageKindCursor, cursorLists); }, S_FALSE},
        {[&](auto& r) { return r.GetIconsInfo(icons); }, S_FALSE},
        {[&](auto& r) { return r.GetCursorsInfo(cursors); }, S_FALSE},
    };
    MCXMLReader closed, empty, full;
    Attach(empty, L"<root/>");
    ASSERT_EQ(S_OK, full.Open(GoldenPath(L"description.xml"), 0));
    for (const Getter& g : getters) {
        EXPECT_EQ(E_FAIL, g.call(closed)) << "getter " << &g - getters;
        EXPECT_EQ(g.withoutSection, g.call(empty)) << "getter " << &g - getters;
    }
    EXPECT_EQ(CString(L"untouched"), window.strSkinForm);
    EXPECT_EQ(CString(L"untouched"), script.strFile);
    EXPECT_EQ(CString(L"k=keep;"), Joined(table)) << "tables are appended to, never cleared";
    EXPECT_EQ(0, fonts.GetCount() + controls.GetCount() + section.GetCount() + numbers.GetCount() + sections.GetCount() +
                     iconLists.GetCount() + cursorLists.GetCount() + icons.GetCount() + cursors.GetCount());
    EXPECT_TRUE(node == nullptr);
    for (const Getter& g : getters)
        EXPECT_EQ(S_OK, g.call(full)) << "getter " << &g - getters;
    EXPECT_EQ(CString(L"k=keep;hello=Hello;bye=Good bye;last=Last;"), Joined(table));
    EXPECT_EQ(E_INVALIDARG, full.GetImageListsData(static_cast<MEUIImageKind>(0), iconLists)) << "neither section";

    // A number-keyed entry whose "id" is no number ends the table.
    MCXMLReader::StringTableByID ended;
    Attach(empty, L"<root><str_table_id><entry id='1' text='one'/><entry id='two' text='2'/>"
                  L"<entry id='3' text='three'/></str_table_id></root>");
    EXPECT_EQ(S_FALSE, empty.GetStringTableMapByID(ended));
    EXPECT_EQ(1, ended.GetCount());
}

TEST(ReaderRecords, BuildersWriteOverWhatTheCallerHeldAndCopiesOwnTheirControls)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"fonts.xml"), 0));
    MCUIWindowData window;
    window.arrControls.Add(new MCUIDataControl);  // the reader appends after it
    wcscpy(window.font.logFont.lfFaceName, L"Kept");
    window.font.logFont.lfPitchAndFamily = 0x22;
    window.eWindowType = MEControlWindowTypeWindowless;
    ASSERT_EQ(S_OK, reader.GetDialogData(window));
    ASSERT_EQ(3, window.arrControls.GetSize());
    EXPECT_EQ(CString(L"face31"), window.arrControls[1]->strIDS);
    EXPECT_EQ(MEControlWindowTypeWindowed, window.eWindowType) << "windowless=\"0\" is written, not skipped";
    EXPECT_STREQ(L"Kept", window.font.logFont.lfFaceName) << "32 characters do not fit";
    EXPECT_EQ(0, window.font.logFont.lfPitchAndFamily) << "neither pitch nor family: reset to 0";
    MCUIWindowData copy(window), assigned;
    assigned.arrControls.Add(new MCUIDataControl);
    assigned = window;
    for (const MCUIWindowData* w : {&copy, &assigned}) {  // copies own their controls
        ASSERT_EQ(3, w->arrControls.GetSize());
        EXPECT_NE(window.arrControls[1], w->arrControls[1]);
        EXPECT_EQ(CString(L"face31"), w->arrControls[1]->strIDS);
    }

    ControlTable controls;
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"schemas.xml"), 0));
    for (MEControlType type : {MEControlTypeButton, MEControlTypeEdit, MEControlTypeGroupBox})
        EXPECT_EQ(S_OK, reader.GetAllControlsSchemaDataByType(type, controls));
    EXPECT_EQ(3, controls.GetCount()) << "added to what the table held; no group box schema";
}

TEST(ReaderRecords, FreedataByCaseSensitiveSectionName)
{
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.Open(GoldenPath(L"description.xml"), 0));
    struct Case {
        const wchar_t* name;
        HRESULT hr;
        const wchar_t* entries;
        const wchar_t* node;  // the name of the section node afterwards
    } const cases[] = {
        {L"Last", S_OK, L"Z=26;A=1;", L"Last"},
        {L"General", S_OK, L"Mode=fast;Size=12;Empty=;", L"General"},  // the first of a name; partial entries skipped
        {L"general", S_OK, L"Lower=yes;", L"general"},
        {L"GENERAL", S_FALSE, L"", L"general"},  // no match: the node stays, the result is that of the last name read
        {L"Empty", S_FALSE, L"", L"Empty"},
    };
    IXMLDOMNodePtr node;
    for (const Case& c : cases) {
        TextTable table;
        EXPECT_EQ(c.hr, reader.GetFreedataTableMapBySectionName(c.name, table)) << c.name;
        EXPECT_EQ(CString(c.entries), Joined(table)) << c.name;
        EXPECT_EQ(S_OK, reader.GetFreedataTableNodeBySectionName(c.name, node)) << c.name;
        EXPECT_EQ(CString(c.node), NameOf(node)) << c.name;
    }
    Attach(reader, L"<root><freedata><section name='a'/><section other='b'/></freedata></root>");
    IXMLDOMNodePtr none;
    EXPECT_EQ(S_FALSE, reader.GetFreedataTableNodeBySectionName(L"z", none));
    EXPECT_TRUE(none == nullptr);
}
