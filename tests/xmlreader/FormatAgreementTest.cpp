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

// One element of the description, the getter that reads it, and the attribute that
// keeps the getter reading: a "probe", which nothing reads, gives the element an
// attribute map without answering any lookup; keys that gate the rest of an entry
// are set instead. The document holds the element at its place and nothing else.
struct Case {
    std::vector<const wchar_t*> path;
    std::function<HRESULT(MCXMLReader&)> read;
    const wchar_t* attribute = L"probe='1'";

    std::wstring Xml() const
    {
        std::wstring open = L"<root probe='1'>", close = L"</root>";
        for (size_t i = 0; i + 1 < path.size(); ++i) {
            open += L"<" + std::wstring(path[i]) + L">";
            close = L"</" + std::wstring(path[i]) + L">" + close;
        }
        return open + L"<" + path.back() + L" " + attribute + L"/>" + close;
    }
};

// A getter called with a fresh output of type Out, after the arguments given here.
template <class Out, class Get, class... Before>
std::function<HRESULT(MCXMLReader&)> Reading(Get get, Before... before)
{
    return [=](MCXMLReader& reader) {
        Out out;
        return (reader.*get)(before..., out);
    };
}

const auto kReadDialog = Reading<MCUIWindowData>(&MCXMLReader::GetDialogData);
const auto kReadFreedata = Reading<OwningMap<MCXMLReader::FreedataSections>>(&MCXMLReader::GetAllFreedataSectionTables);
const auto kReadIcons = Reading<OwningMap<MCXMLReader::ImageLists>>(&MCXMLReader::GetImageListsData, MEUIImageKindIcon);
const auto kReadCursors =
    Reading<OwningMap<MCXMLReader::ImageLists>>(&MCXMLReader::GetImageListsData, MEUIImageKindCursor);

const Case kCases[] = {
    {{L"window"}, kReadDialog},
    {{L"window", L"control"}, kReadDialog},
    {{L"window", L"footer"}, kReadDialog},
    {{L"window", L"font"}, kReadDialog},
    {{L"window", L"control", L"font"}, kReadDialog},
    {{L"window", L"font", L"textstyle"}, kReadDialog},
    {{L"window", L"font", L"logfont"}, kReadDialog},
    {{L"fontschema", L"font"}, Reading<FontTable>(&MCXMLReader::GetAllFontsSchemaData)},
    {{L"controlsschema", L"control"},
     Reading<ControlTable>(&MCXMLReader::GetAllControlsSchemaDataByType, MEControlTypeWindow)},
    {{L"str_table", L"entry"}, Reading<MCXMLReader::StringTable>(&MCXMLReader::GetStringTableMap), L"id='a'"},
    {{L"str_table_id", L"entry"}, Reading<MCXMLReader::StringTableByID>(&MCXMLReader::GetStringTableMapByID),
     L"id='1'"},
    {{L"freedata", L"section"}, kReadFreedata},
    {{L"freedata", L"section", L"entry"}, kReadFreedata, L"name='a'"},
    {{L"script"}, Reading<MCUIScriptData>(&MCXMLReader::GetScriptData)},
    {{L"icons", L"imagelist"}, kReadIcons},
    {{L"icons", L"imagelist", L"image"}, kReadIcons, L"id='a'"},
    {{L"cursors", L"imagelist"}, kReadCursors},
    {{L"cursors", L"imagelist", L"image"}, kReadCursors, L"id='a'"},
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
        const std::wstring xml = c.Xml();
        ASSERT_NE(nullptr, element) << "no such element in the description: " << xml;
        covered.insert(element);

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
            hr = c.read(reader);
        }
        EXPECT_EQ(S_OK, hr) << xml;
        EXPECT_EQ(ListedAttributes(*element), g_lookups) << xml;
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
