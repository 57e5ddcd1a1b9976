// tesvorutil dump FILE.xml [--json]: prints every record the UI description
// reader builds from a description. The JSON shape is described in
// docs/dump-format.md.
#include "Commands.h"
#include "Description.h"
#include "Output.h"
#include "TreeWriter.h"
#include <TesvorUtil.h>
#include <algorithm>
#include <cwchar>
#include <map>
#include <string>
#include <vector>

namespace {

using tesvorutil::JsonWriter;
using tesvorutil::TextWriter;
using tesvorutil::Writer;

using FontTable = MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>;
using ControlTable = MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>;
using StringTable = MCOrderedMap<CString, const wchar_t*, CString, CString&>;
using StringTableById = MCMap<DWORD, DWORD, CString, CString&>;
using Sections = MCOrderedMap<CString, const wchar_t*, StringTable*, StringTable*&>;
using ImageLists = MCXMLReader::ImageLists;
using ImageListNames = MCXMLReader::ImageListNames;

// Deletes the records that a map holds when it goes: the reader hands them to its caller.
template <class Map>
class OwningMap : public Map {
public:
    ~OwningMap() { MDeleteMapValues(*this); }
};

std::vector<long long> RectValues(const CRect& rc) { return {rc.left, rc.top, rc.right, rc.bottom}; }

void WriteFont(Writer& out, const wchar_t* name, const MCUIDataFont& font)
{
    out.Begin(name, false);
    out.Bool(L"bSchemaOnly", font.bSchemaOnly);
    out.String(L"strSchema", font.strSchema);
    const MCSkinTextStyle& style = font.textStyle;
    out.Begin(L"textStyle", false);
    out.Number(L"eEffect", style.eEffect);
    out.Numbers(L"rgbText", {style.rgbText.red, style.rgbText.green, style.rgbText.blue});
    out.Numbers(L"argbEffect", {style.argbEffect.red, style.argbEffect.green, style.argbEffect.blue,
                                style.argbEffect.alpha});
    out.Number(L"eFlags", style.eFlags);
    out.Bool(L"bRightToLeft", style.bRightToLeft);
    out.Bool(L"bEllipsis", style.bEllipsis);
    out.End(false);
    const LOGFONTW& lf = font.logFont;
    out.Begin(L"logFont", false);
    out.Number(L"lfHeight", lf.lfHeight);
    out.Number(L"lfWidth", lf.lfWidth);
    out.Number(L"lfEscapement", lf.lfEscapement);
    out.Number(L"lfOrientation", lf.lfOrientation);
    out.Number(L"lfWeight", lf.lfWeight);
    out.Number(L"lfItalic", lf.lfItalic);
    out.Number(L"lfUnderline", lf.lfUnderline);
    out.Number(L"lfStrikeOut", lf.lfStrikeOut);
    out.Number(L"lfCharSet", lf.lfCharSet);
    out.Number(L"lfOutPrecision", lf.lfOutPrecision);
    out.Number(L"lfClipPrecision", lf.lfClipPrecision);
    out.Number(L"lfQuality", lf.lfQuality);
    out.Number(L"lfPitchAndFamily", lf.lfPitchAndFamily);
    out.String(L"lfFaceName", CString(lf.lfFaceName, static_cast<int>(wcsnlen(lf.lfFaceName, LF_FACESIZE))));
    out.End(false);
    out.End(false);
}

void WriteControlFields(Writer& out, const MCUIDataControl& control)
{
    out.Number(L"eType", control.eType);
    out.String(L"strSchema", control.strSchema);
    out.String(L"strIDS", control.strIDS);
    out.String(L"strSkinObjName", control.strSkinObjName);
    out.Bool(L"bActualSize", control.bActualSize);
    out.Number(L"dwIDV", control.dwIDV);
    out.Number(L"eWindowType", control.eWindowType);
    out.Bool(L"bEnabled", control.bEnabled);
    out.String(L"strToolTip", control.strToolTip);
    out.Number(L"dwToolTipID", control.dwToolTipID);
    out.Number(L"eState", control.eState);
    WriteFont(out, L"font", control.font);
    out.String(L"strText", control.strText);
    out.Number(L"dwTextID", control.dwTextID);
    out.Numbers(L"rcRect", RectValues(control.rcRect));
    out.Bool(L"bVisible", control.bVisible);
    out.String(L"strSkinPhObjPath", control.strSkinPhObjPath);
    out.Numbers(L"rcAnchors", RectValues(control.rcAnchors));
    out.Number(L"nCxMin", control.nCxMin);
    out.Number(L"nCyMin", control.nCyMin);
    out.Number(L"nCxMax", control.nCxMax);
    out.Number(L"nCyMax", control.nCyMax);
    out.Bool(L"bAutoSkin", control.bAutoSkin);
    out.Number(L"dwSt", control.dwSt);
    out.Number(L"dwStEx", control.dwStEx);
    out.String(L"strAdditional", control.strAdditional);
    out.Number(L"dwReserved", control.dwReserved);
}

void WriteControl(Writer& out, const wchar_t* name, const MCUIDataControl& control)
{
    out.Begin(name, false);
    WriteControlFields(out, control);
    out.End(false);
}

void WriteWindow(Writer& out, const MCUIWindowData& window)
{
    out.Begin(L"window", false);
    WriteControlFields(out, window);
    out.Begin(L"arrControls", true);
    for (INT_PTR i = 0; i < window.arrControls.GetSize(); ++i)
        WriteControl(out, nullptr, *window.arrControls[i]);
    out.End(true);
    out.String(L"strSkinForm", window.strSkinForm);
    out.Number(L"eMoveType", window.eMoveType);
    out.Number(L"eResizeType", window.eResizeType);
    out.Begin(L"footer", false);
    out.String(L"strStatus", window.footer.strStatus);
    out.Number(L"dwStatusID", window.footer.dwStatusID);
    out.End(false);
    out.End(false);
}

// Keys of a hash map in ascending order, so that the output does not depend on hashing.
template <class Key, class Value, class Map, class Less>
std::vector<Key> SortedKeys(const Map& map, Less less)
{
    std::vector<Key> keys;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        Key key;
        Value value{};
        map.GetNextAssoc(position, key, value);
        keys.push_back(key);
    }
    std::sort(keys.begin(), keys.end(), less);
    return keys;
}

bool TextLess(const CString& a, const CString& b) { return wcscmp(a, b) < 0; }

// Everything the reader builds from one description, read in one go.
struct Description {
    bool hasWindow = false;
    MCUIWindowData window;
    OwningMap<FontTable> fontSchemas;
    std::map<long, OwningMap<ControlTable>> controlSchemas;  // by control type
    bool hasScript = false;
    MCUIScriptData script;
    StringTable stringTable;
    StringTableById stringTableById;
    OwningMap<Sections> freeData;
    OwningMap<ImageLists> iconLists;
    ImageListNames icons;
    OwningMap<ImageLists> cursorLists;
    ImageListNames cursors;
};

HRESULT Read(MCXMLReader& reader, Description& d)
{
    HRESULT hr = reader.GetDialogData(d.window);
    if (FAILED(hr))
        return hr;
    d.hasWindow = hr == S_OK;
    if (FAILED(hr = reader.GetAllFontsSchemaData(d.fontSchemas)))
        return hr;
    const MDUIKeywordTable& controlTypes = MNUIFormat::GetKeywordTable(UIKeywordsControlType);
    for (int i = 0; i < controlTypes.count; ++i) {
        const MEControlType type = static_cast<MEControlType>(controlTypes.keywords[i].value);
        if (FAILED(hr = reader.GetAllControlsSchemaDataByType(type, d.controlSchemas[type])))
            return hr;
    }
    if (FAILED(hr = reader.GetScriptData(d.script)))
        return hr;
    d.hasScript = hr == S_OK;
    if (FAILED(hr = reader.GetStringTableMap(d.stringTable)))
        return hr;
    if (FAILED(hr = reader.GetStringTableMapByID(d.stringTableById)))
        return hr;
    if (FAILED(hr = reader.GetAllFreedataSectionTables(d.freeData)))
        return hr;
    if (FAILED(hr = reader.GetImageListsData(MEUIImageKindIcon, d.iconLists)))
        return hr;
    if (FAILED(hr = reader.GetIconsInfo(d.icons)))
        return hr;
    if (FAILED(hr = reader.GetImageListsData(MEUIImageKindCursor, d.cursorLists)))
        return hr;
    if (FAILED(hr = reader.GetCursorsInfo(d.cursors)))
        return hr;
    return S_OK;
}

void WriteOrderedStrings(Writer& out, const wchar_t* name, const StringTable& table)
{
    out.Begin(name, false);
    for (INT_PTR i = 0; i < table.GetKeyCount(); ++i) {
        const CString& key = table.GetKeyAt(i);
        CString value;
        table.Lookup(key, value);
        out.String(key, value);
    }
    out.End(false);
}

std::vector<long long> ColourValues(COLORREF colour)
{
    return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

void WriteImageLists(Writer& out, const wchar_t* name, const ImageLists& lists)
{
    out.Begin(name, false);
    for (const CString& listName : SortedKeys<CString, MCUIImageListData*>(lists, TextLess)) {
        MCUIImageListData* list = nullptr;
        lists.Lookup(listName, list);
        out.Begin(listName, false);
        out.Number(L"eKind", list->eKind);
        out.String(L"strName", list->strName);
        out.String(L"strFile", list->strFile);
        out.Number(L"dwResID", list->dwResID);
        out.Number(L"nWidth", list->nWidth);
        out.Number(L"nInitial", list->nInitial);
        out.Numbers(L"crMask", ColourValues(list->crMask));
        out.Number(L"eEffect", list->eEffect);
        out.Begin(L"images", false);
        for (INT_PTR i = 0; i < list->images.GetKeyCount(); ++i) {
            MCUIImageData image;
            list->images.Lookup(list->images.GetKeyAt(i), image);
            out.Begin(image.strID, false);
            out.Number(L"nIndex", image.nIndex);
            out.Number(L"nHotX", image.nHotX);
            out.Number(L"nHotY", image.nHotY);
            out.End(false);
        }
        out.End(false);
        out.End(false);
    }
    out.End(false);
}

void WriteSortedStrings(Writer& out, const wchar_t* name, const ImageListNames& table)
{
    out.Begin(name, false);
    for (const CString& key : SortedKeys<CString, CString>(table, TextLess)) {
        CString value;
        table.Lookup(key, value);
        out.String(key, value);
    }
    out.End(false);
}

void WriteDescription(Writer& out, const Description& d)
{
    out.Begin(nullptr, false);
    if (d.hasWindow)
        WriteWindow(out, d.window);
    else
        out.Null(L"window");

    out.Begin(L"fontSchemas", false);
    for (const CString& name : SortedKeys<CString, MCUIDataFont*>(d.fontSchemas, TextLess)) {
        MCUIDataFont* font = nullptr;
        d.fontSchemas.Lookup(name, font);
        WriteFont(out, name, *font);
    }
    out.End(false);

    out.Begin(L"controlSchemas", false);
    for (const auto& [type, table] : d.controlSchemas) {
        if (table.IsEmpty())
            continue;
        out.Begin(std::to_wstring(type).c_str(), false);
        for (const CString& name : SortedKeys<CString, MCUIDataControl*>(table, TextLess)) {
            MCUIDataControl* control = nullptr;
            table.Lookup(name, control);
            WriteControl(out, name, *control);
        }
        out.End(false);
    }
    out.End(false);

    if (d.hasScript)
        out.String(L"script", d.script.strFile);
    else
        out.Null(L"script");

    WriteOrderedStrings(out, L"stringTable", d.stringTable);
    out.Begin(L"stringTableById", false);
    for (DWORD id : SortedKeys<DWORD, CString>(d.stringTableById, [](DWORD a, DWORD b) { return a < b; })) {
        CString text;
        d.stringTableById.Lookup(id, text);
        out.String(std::to_wstring(id).c_str(), text);
    }
    out.End(false);

    out.Begin(L"freeData", false);
    for (INT_PTR i = 0; i < d.freeData.GetKeyCount(); ++i) {
        const CString& name = d.freeData.GetKeyAt(i);
        StringTable* section = nullptr;
        d.freeData.Lookup(name, section);
        WriteOrderedStrings(out, name, *section);
    }
    out.End(false);

    WriteImageLists(out, L"iconLists", d.iconLists);
    WriteSortedStrings(out, L"icons", d.icons);
    WriteImageLists(out, L"cursorLists", d.cursorLists);
    WriteSortedStrings(out, L"cursors", d.cursors);
    out.End(false);
}

int RunDump(int argc, wchar_t** argv)
{
    const wchar_t* path = nullptr;
    bool json = false;
    for (int i = 0; i < argc; ++i) {
        if (wcscmp(argv[i], L"--json") == 0)
            json = true;
        else if (path == nullptr && argv[i][0] != L'-')
            path = argv[i];
        else
            return tesvorutil::UsageError(L"dump");
    }
    if (path == nullptr)
        return tesvorutil::UsageError(L"dump");

    tesvorutil::ComApartment apartment;
    MCXMLReader reader;
    if (!tesvorutil::OpenDescription(reader, path))
        return tesvorutil::ExitInvalid;
    Description description;
    const HRESULT hr = Read(reader, description);
    if (FAILED(hr)) {
        tesvorutil::PrintErr(L"dump: %s: 0x%08lX %s\n", path, static_cast<unsigned long>(hr),
                             static_cast<const wchar_t*>(reader.m_strError));
        return tesvorutil::ExitInvalid;
    }
    reader.Close();

    JsonWriter jsonWriter;
    TextWriter textWriter;
    Writer& out = json ? static_cast<Writer&>(jsonWriter) : textWriter;
    WriteDescription(out, description);
    tesvorutil::WriteOut(out.Text().c_str());
    return tesvorutil::ExitOk;
}

}  // namespace

TESVOR_REGISTER_COMMAND(dump, {L"dump", L"FILE.xml [--json]",
                               L"print every record the UI description reader builds from FILE",
                               RunDump})
