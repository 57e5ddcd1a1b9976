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
#include <map>
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

// A getter called with a fresh output of type Out, after the arguments given here.
template <class Out, class Get, class... Before>
std::function<HRESULT(MCXMLReader&)> Reading(Get get, Before... before)
{
    return [=](MCXMLReader& reader) {
        Out out;
        return (reader.*get)(before..., out);
    };
}

// The getter that reads each element under the root, with what is below it.
const std::map<std::wstring, std::function<HRESULT(MCXMLReader&)>> kReaders = {
    {L"window", Reading<MCUIWindowData>(&MCXMLReader::GetDialogData)},
    {L"fontschema", Reading<FontTable>(&MCXMLReader::GetAllFontsSchemaData)},
    {L"controlsschema", Reading<ControlTable>(&MCXMLReader::GetAllControlsSchemaDataByType, MEControlTypeWindow)},
    {L"str_table", Reading<MCXMLReader::StringTable>(&MCXMLReader::GetStringTableMap)},
    {L"str_table_id", Reading<MCXMLReader::StringTableByID>(&MCXMLReader::GetStringTableMapByID)},
    {L"freedata", Reading<OwningMap<MCXMLReader::FreedataSections>>(&MCXMLReader::GetAllFreedataSectionTables)},
    {L"script", Reading<MCUIScriptData>(&MCXMLReader::GetScriptData)},
    {L"icons", Reading<OwningMap<MCXMLReader::ImageLists>>(&MCXMLReader::GetImageListsData, MEUIImageKindIcon)},
    {L"cursors", Reading<OwningMap<MCXMLReader::ImageLists>>(&MCXMLReader::GetImageListsData, MEUIImageKindCursor)},
};

// A document holding the element at the end of `path` at its place and nothing else. The
// attributes without which the element is skipped are set to "1", which every syntax takes;
// a "probe", which nothing reads, gives the element an attribute map without answering any lookup.
std::wstring DocumentWith(const std::vector<const wchar_t*>& path, const MDUIElement& element)
{
    std::wstring open = L"<root probe='1'>", close = L"</root>", attributes = L" probe='1'";
    for (const std::wstring& name : ListedAttributes(element)) {
        if (MNUIFormat::FindAttribute(element, name.c_str())->flags & UIAttributeRequired)
            attributes += L" " + name + L"='1'";
    }
    for (size_t i = 0; i + 1 < path.size(); ++i) {
        open += L"<" + std::wstring(path[i]) + L">";
        close = L"</" + std::wstring(path[i]) + L">" + close;
    }
    return open + L"<" + path.back() + attributes + L"/>" + close;
}

// Reads the element at the end of `path` with its part's getter, and every element below it.
void ExpectLookupsAsListed(const MDUIElement& element, std::vector<const wchar_t*> path)
{
    path.push_back(element.name);
    for (int i = 0; i < element.childCount; ++i)
        ExpectLookupsAsListed(*element.children[i], path);
    if (element.attributeCount == 0 && element.base == nullptr)
        return;
    const std::wstring xml = DocumentWith(path, element);
    const auto read = kReaders.find(path[0]);
    ASSERT_NE(kReaders.end(), read) << "no getter reads " << CString(path[0]);
    MCXMLReader reader;
    ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(xml.c_str())));
    // Every element's attribute map shares the root's function table.
    IXMLDOMNodePtr root;
    IXMLDOMNamedNodeMapPtr anyMap;
    ASSERT_EQ(S_OK, Access::FindNodeInDocument(reader, L"root", root));
    ASSERT_EQ(S_OK, Access::GetNamedNodeMap(reader, root, anyMap));
    g_lookups.clear();
    HRESULT hr;
    {
        VtableSlotPatch patch(anyMap, kGetNamedItemSlot, reinterpret_cast<void*>(&RecordLookup));
        g_getNamedItem = reinterpret_cast<GetNamedItemFn>(patch.Original());
        hr = read->second(reader);
    }
    EXPECT_EQ(S_OK, hr) << xml;
    EXPECT_EQ(ListedAttributes(element), g_lookups) << xml;
}

TEST(FormatAgreement, ReaderLooksUpExactlyTheListedAttributesInOrder)
{
    const MDUIElement& root = MNUIFormat::GetRoot();
    for (int i = 0; i < root.childCount; ++i)
        ExpectLookupsAsListed(*root.children[i], {});
}

// The lookup takes the first match: a keyword listed twice would never find its second entry.
TEST(FormatAgreement, KeywordTablesHoldDistinctKeywords)
{
    for (int id = 0; id < UIKeywordTableCount; ++id) {
        const MDUIKeywordTable& table = MNUIFormat::GetKeywordTable(static_cast<MEUIKeywordTableID>(id));
        std::set<std::wstring> seen;
        for (int i = 0; i < table.count; ++i)
            EXPECT_TRUE(seen.insert(table.keywords[i].text).second) << "twice in " << CString(table.name);
    }
}

}  // namespace
