// The reader and the format description agree: for every element of the
// description, the reader looks up exactly the element's attributes, in the
// listed order. The lookups are watched in MSXML itself, so an attribute read
// by a builder but missing from the description (or the reverse, or a changed
// order) shows here.
#include "ReaderTestAccess.h"
#include "MCUIWindowData.h"
#include "MCUIImageListData.h"
#include "MNUIFormat.h"
#include "VtableSlotPatch.h"
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

// getNamedItem's place in IXMLDOMNamedNodeMap's table, after IUnknown (3) and IDispatch (4).
const size_t kGetNamedItemSlot = 7;
typedef HRESULT(WINAPI* GetNamedItemFn)(IXMLDOMNamedNodeMap*, BSTR, IXMLDOMNode**);
GetNamedItemFn g_getNamedItem = nullptr;
std::vector<std::wstring> g_lookups;

HRESULT WINAPI RecordLookup(IXMLDOMNamedNodeMap* map, BSTR name, IXMLDOMNode** item)
{
    // The number-keyed string table looks "id" up twice in a row; once is what counts.
    if (g_lookups.empty() || g_lookups.back() != name)
        g_lookups.push_back(name);
    return g_getNamedItem(map, name, item);
}

std::vector<std::wstring> ListedAttributes(const MDUIElement& element)
{
    std::vector<std::wstring> names;
    if (element.base != nullptr)
        names = ListedAttributes(*element.base);
    for (int i = 0; i < element.attributeCount; ++i)
        names.push_back(element.attributes[i].name);
    return names;
}

template <class Map>
void Free(Map& map)
{
    MDeleteMapValues(map);
}

// One element of the description, a document in which the reader reads every
// attribute of that element and of no other, and the getter that reads it. A
// "probe" attribute, which nothing reads, gives an element an attribute map
// without answering any lookup; keys that gate the rest of an entry are set.
struct Case {
    std::vector<const wchar_t*> path;
    const wchar_t* xml;
    std::function<HRESULT(MCXMLReader&)> read;
};

HRESULT ReadDialog(MCXMLReader& reader)
{
    MCUIWindowData window;
    return reader.GetDialogData(window);
}
HRESULT ReadFontSchemas(MCXMLReader& reader)
{
    MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&> fonts;
    const HRESULT hr = reader.GetAllFontsSchemaData(fonts);
    Free(fonts);
    return hr;
}
HRESULT ReadControlSchemas(MCXMLReader& reader)
{
    MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&> controls;
    const HRESULT hr = reader.GetAllControlsSchemaDataByType(MEControlTypeWindow, controls);
    Free(controls);
    return hr;
}
HRESULT ReadStrings(MCXMLReader& reader)
{
    MCXMLReader::StringTable table;
    return reader.GetStringTableMap(table);
}
HRESULT ReadNumberedStrings(MCXMLReader& reader)
{
    MCXMLReader::StringTableByID table;
    return reader.GetStringTableMapByID(table);
}
HRESULT ReadFreedata(MCXMLReader& reader)
{
    MCXMLReader::FreedataSections sections;
    const HRESULT hr = reader.GetAllFreedataSectionTables(sections);
    Free(sections);
    return hr;
}
HRESULT ReadScript(MCXMLReader& reader)
{
    MCUIScriptData script;
    return reader.GetScriptData(script);
}

template <MEUIImageKind kind>
HRESULT ReadImageLists(MCXMLReader& reader)
{
    MCXMLReader::ImageLists lists;
    const HRESULT hr = reader.GetImageListsData(kind, lists);
    Free(lists);
    return hr;
}

const Case kCases[] = {
    {{L"window"}, L"<root probe='1'><window probe='1'/></root>", ReadDialog},
    {{L"window", L"control"}, L"<root probe='1'><window><control probe='1'/></window></root>", ReadDialog},
    {{L"window", L"footer"}, L"<root probe='1'><window><footer probe='1'/></window></root>", ReadDialog},
    {{L"window", L"font"}, L"<root probe='1'><window><font probe='1'/></window></root>", ReadDialog},
    {{L"window", L"control", L"font"}, L"<root probe='1'><window><control><font probe='1'/></control></window></root>",
     ReadDialog},
    {{L"window", L"font", L"textstyle"}, L"<root probe='1'><window><font><textstyle probe='1'/></font></window></root>",
     ReadDialog},
    {{L"window", L"font", L"logfont"}, L"<root probe='1'><window><font><logfont probe='1'/></font></window></root>",
     ReadDialog},
    {{L"fontschema", L"font"}, L"<root probe='1'><fontschema><font probe='1'/></fontschema></root>", ReadFontSchemas},
    {{L"controlsschema", L"control"}, L"<root probe='1'><controlsschema><control probe='1'/></controlsschema></root>",
     ReadControlSchemas},
    {{L"str_table", L"entry"}, L"<root probe='1'><str_table><entry id='a'/></str_table></root>", ReadStrings},
    {{L"str_table_id", L"entry"}, L"<root probe='1'><str_table_id><entry id='1'/></str_table_id></root>",
     ReadNumberedStrings},
    {{L"freedata", L"section"}, L"<root probe='1'><freedata><section probe='1'/></freedata></root>", ReadFreedata},
    {{L"freedata", L"section", L"entry"}, L"<root probe='1'><freedata><section><entry name='a'/></section></freedata></root>",
     ReadFreedata},
    {{L"script"}, L"<root probe='1'><script probe='1'/></root>", ReadScript},
    {{L"icons", L"imagelist"}, L"<root probe='1'><icons><imagelist probe='1'/></icons></root>",
     ReadImageLists<MEUIImageKindIcon>},
    {{L"icons", L"imagelist", L"image"}, L"<root probe='1'><icons><imagelist><image id='a'/></imagelist></icons></root>",
     ReadImageLists<MEUIImageKindIcon>},
    {{L"cursors", L"imagelist"}, L"<root probe='1'><cursors><imagelist probe='1'/></cursors></root>",
     ReadImageLists<MEUIImageKindCursor>},
    {{L"cursors", L"imagelist", L"image"},
     L"<root probe='1'><cursors><imagelist><image id='a'/></imagelist></cursors></root>",
     ReadImageLists<MEUIImageKindCursor>},
};

const MDUIElement* ElementAt(const std::vector<const wchar_t*>& path)
{
    const MDUIElement* element = &MNUIFormat::GetRoot();
    for (const wchar_t* name : path) {
        element = MNUIFormat::FindChild(*element, name);
        if (element == nullptr)
            return nullptr;
    }
    return element;
}

void CollectElementsWithAttributes(const MDUIElement& element, std::set<const MDUIElement*>& found)
{
    if (element.attributeCount > 0 || element.base != nullptr)
        found.insert(&element);
    for (int i = 0; i < element.childCount; ++i)
        CollectElementsWithAttributes(*element.children[i], found);
}

TEST(FormatAgreement, ReaderLooksUpExactlyTheListedAttributesInOrder)
{
    std::set<const MDUIElement*> covered;
    for (const Case& c : kCases) {
        const MDUIElement* element = ElementAt(c.path);
        ASSERT_NE(nullptr, element) << "no such element in the description: " << c.xml;
        covered.insert(element);

        MCXMLReader reader;
        ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(c.xml)));
        // Every element's attribute map shares the root's function table.
        IXMLDOMNamedNodeMapPtr anyMap = AttributesAt(reader, L"root");
        ASSERT_TRUE(anyMap);
        g_lookups.clear();
        HRESULT hr;
        {
            VtableSlotPatch patch(anyMap, kGetNamedItemSlot, reinterpret_cast<void*>(&RecordLookup));
            g_getNamedItem = reinterpret_cast<GetNamedItemFn>(patch.Original());
            hr = c.read(reader);
        }
        EXPECT_EQ(S_OK, hr) << c.xml;
        EXPECT_EQ(ListedAttributes(*element), g_lookups) << c.xml;
    }

    std::set<const MDUIElement*> described;
    CollectElementsWithAttributes(MNUIFormat::GetRoot(), described);
    for (const MDUIElement* element : described)
        EXPECT_EQ(1u, covered.count(element)) << "no case reads the element " << CString(element->name);
}

TEST(FormatAgreement, KeywordTablesHoldDistinctLowerCaseKeywords)
{
    for (int id = 0; id < UIKeywordTableCount; ++id) {
        const MDUIKeywordTable& table = MNUIFormat::GetKeywordTable(static_cast<MEUIKeywordTableID>(id));
        std::set<std::wstring> seen;
        for (int i = 0; i < table.count; ++i) {
            const std::wstring keyword = table.keywords[i].text;
            EXPECT_TRUE(seen.insert(keyword).second) << "twice in " << CString(table.name);
            for (wchar_t ch : keyword)
                EXPECT_FALSE(iswupper(ch)) << CString(keyword.c_str());
        }
    }
}

}  // namespace
