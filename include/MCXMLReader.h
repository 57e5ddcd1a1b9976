// MCXMLReader: reader of XML user-interface descriptions. It loads a document
// through the MSXML DOM and builds plain records from it: the dialog window and
// its controls, font and control schemas, string tables, free data, scripts,
// image lists of icons and cursors.
//
// Every operation returns an HRESULT (S_OK done or found, S_FALSE nothing found,
// negative a failure). COM errors and any other exception raised inside are
// caught: the error's system message becomes the last error text (m_strError of
// MCError) and its HRESULT the result; anything else gives "Unknown exception ..."
// and E_UNEXPECTED. Only SetIXMLDOMDocument and GetIXMLDOMDocument let a COM
// error through.
//
// A reader is bound to the COM apartment of the thread that created its document.
// Copies share one DOM document.
#pragma once
#include "MSXMLSupport.h"
#include <afxwin.h>
#include <afxtempl.h>
#include "TesvorUtilExport.h"
#include "MCError.h"
#include "MCXMLTypes.h"
#include "MCXMLContainers.h"
#include "MCUIScriptData.h"
#include "MEImageEffect.h"

class MCUIDataControl;
class MCUIWindowData;
class MCUIFooterData;
class MCUIImageListData;
class MCUIDataFont;
struct MCSkinTextStyle;

class TESVORUTIL_API MCXMLReader : public MCError {
public:
    typedef MCOrderedMap<CString, const wchar_t*, CString, CString&> StringTable;
    typedef MCMap<DWORD, DWORD, CString, CString&> StringTableByID;
    typedef MCOrderedMap<CString, const wchar_t*, StringTable*, StringTable*&> FreedataSections;
    typedef CMap<CString, const wchar_t*, MCUIImageListData*, MCUIImageListData*&> ImageLists;
    typedef CMap<CString, const wchar_t*, CString, CString&> ImageListNames;

    MCXMLReader();
    MCXMLReader(const MCXMLReader& other);
    MCXMLReader& operator=(const MCXMLReader& other);
    virtual ~MCXMLReader();

    // Document access. `reserved` is accepted and ignored.
    HRESULT Open(const wchar_t* path, DWORD reserved);
    HRESULT Close();
    HRESULT SetIXMLDOMDocument(IXMLDOMDocumentPtr document);
    HRESULT GetIXMLDOMDocument(IXMLDOMDocumentPtr& document);

    // Windows, controls and dialogs.
    HRESULT GetDialogData(MCUIWindowData& window);

    // Fonts and schemas. The caller owns the maps and the records put into them.
    HRESULT GetAllFontsSchemaData(MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>& fonts);
    HRESULT GetAllControlsSchemaDataByType(
        const MEControlType& type,
        MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>& controls);

    // String tables, free data and scripts. The caller owns the section maps
    // that GetAllFreedataSectionTables allocates.
    HRESULT GetScriptData(MCUIScriptData& data);
    HRESULT GetStringTableMap(MCOrderedMap<CString, const wchar_t*, CString, CString&>& table);
    HRESULT GetStringTableMapByID(MCMap<DWORD, DWORD, CString, CString&>& table);
    HRESULT GetFreedataTableNodeBySectionName(const CString& name, IXMLDOMNodePtr& node);
    HRESULT GetFreedataTableMapBySectionName(
        const CString& name, MCOrderedMap<CString, const wchar_t*, CString, CString&>& table);
    HRESULT GetAllFreedataSectionTables(
        MCOrderedMap<CString, const wchar_t*, MCOrderedMap<CString, const wchar_t*, CString, CString&>*,
                     MCOrderedMap<CString, const wchar_t*, CString, CString&>*&>& sections);

    // Image lists of icons ("root/icons/imagelist") or of cursors
    // ("root/cursors/imagelist"), by name; the first list of a name stays. The
    // caller owns the records put into `lists` (MDeleteMapValues frees them).
    // E_INVALIDARG for a kind that is neither.
    HRESULT GetImageListsData(MEUIImageKind kind,
                              CMap<CString, const wchar_t*, MCUIImageListData*, MCUIImageListData*&>& lists);
    // Every named image of the icon (cursor) lists: its "id" -> the name of the
    // list that holds it. The first image of an id stays, and the images of a
    // list dropped as a duplicate are left out with it.
    HRESULT GetIconsInfo(CMap<CString, const wchar_t*, CString, CString&>& icons);
    HRESULT GetCursorsInfo(CMap<CString, const wchar_t*, CString, CString&>& cursors);

private:
    friend struct MCXMLReaderTestAccess;

    // Runs an operation's body (a callable returning HRESULT) under the reader's
    // two exception handlers.
    template <class Body>
    HRESULT RunGuarded(Body body)
    {
        try {
            return body();
        } catch (const _com_error& error) {
            return OnComError(error);
        } catch (CException* exception) {
            // Framework exceptions are heap objects: release it, then report as unknown.
            exception->Delete();
            return OnUnknownException();
        } catch (...) {
            return OnUnknownException();
        }
    }
    HRESULT OnComError(const _com_error& error);
    HRESULT OnUnknownException();

    HRESULT Init();

    // Node queries. Paths are handed unchanged to selectSingleNode/selectNodes.
    HRESULT FindNodeInDocument(const _bstr_t& path, IXMLDOMNodePtr& node);
    HRESULT FindNodesInDocument(const _bstr_t& path, IXMLDOMNodeListPtr& list);
    HRESULT FindNodeInNode(const _bstr_t& path, const IXMLDOMNodePtr& parent, IXMLDOMNodePtr& node);
    HRESULT FindNodesInNode(const _bstr_t& path, const IXMLDOMNodePtr& parent, IXMLDOMNodeListPtr& list);
    HRESULT GetNamedNodeMap(const IXMLDOMNodePtr& node, IXMLDOMNamedNodeMapPtr& attributes);
    HRESULT FindAttributeInNode(const _bstr_t& name, const IXMLDOMNamedNodeMapPtr& attributes, _bstr_t& value);
    // Walking a node list (for use under RunGuarded: a DOM failure is raised as a
    // COM error, and so is a null list).
    static long NodeCount(const IXMLDOMNodeListPtr& list);
    static IXMLDOMNodePtr NodeAt(const IXMLDOMNodeListPtr& list, long index);

    // Typed attribute readers: S_OK value stored, S_FALSE attribute absent or its
    // text not acceptable, negative a failure.
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, _bstr_t& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, CString& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, bool& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, DWORD& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, BYTE& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, char& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, long& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, int& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, MCSkinRGB& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, MCSkinARGB& value);
    HRESULT CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, CRect& value);
    HRESULT CreateColorPropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, DWORD& colour);
    HRESULT CreateRectExPropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, CRect& rect);
    // Reads the attribute's text and hands it to `parse` (bool(const wchar_t*)):
    // S_OK when it accepts the text, S_FALSE when not.
    template <class Parse>
    HRESULT ParseAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, Parse parse);
    // Reads the keyword attribute `name` and hands its text to `resolve`, one of the
    // resolvers below: the reading's result when the attribute is absent or the
    // reading fails, else the resolver's.
    template <class Field>
    HRESULT ResolveKeywordAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                    HRESULT (MCXMLReader::*resolve)(const _bstr_t&, Field&), Field& field);

    // Keyword resolvers: S_OK and the keyword's value when `value` is one of the
    // keywords (exact, case-sensitive), S_FALSE and `out` unchanged otherwise.
    HRESULT ResolveFontEffectFromAttribute(const _bstr_t& value, MEFontEffect& out);
    HRESULT ResolveFontFlagsFromAttribute(const _bstr_t& value, MEFontFlags& out);
    HRESULT ResolveFontLogFontWeightFromAttribute(const _bstr_t& value, long& out);
    HRESULT ResolveFontLogFontCharsetFromAttribute(const _bstr_t& value, BYTE& out);
    HRESULT ResolveFontLogFontPrecisionFromAttribute(const _bstr_t& value, BYTE& out);
    HRESULT ResolveFontLogFontQualityFromAttribute(const _bstr_t& value, BYTE& out);
    HRESULT ResolveFontLogFontPitchFromAttribute(const _bstr_t& value, BYTE& out);
    HRESULT ResolveFontLogFontFamilyFromAttribute(const _bstr_t& value, BYTE& out);
    HRESULT ResolveControlTypeFromAttribute(const _bstr_t& value, MEControlType& out);
    HRESULT ResolveControlStateFromAttribute(const _bstr_t& value, MEControlState& out);
    HRESULT ResolveControlResizeTypeFromAttribute(const _bstr_t& value, MEControlResizeType& out);
    HRESULT ResolveWindowMoveTypeFromAttribute(const _bstr_t& value, MEWindowMoveType& out);
    HRESULT ResolveControlWindowTypeFromValue(bool flag, MEControlWindowType& out);
    HRESULT ResolveImageEffectFromAttribute(const _bstr_t& value, MEImageEffect& out);

    // Windows, controls and dialogs.
    HRESULT BuildMCUIWindowDataFromNode(const IXMLDOMNodePtr& node, MCUIWindowData& window);
    HRESULT BuildMCUIDataControlFromNode(const IXMLDOMNodePtr& node, MCUIDataControl& control);
    HRESULT BuildMCUIFooterDataFromNode(const IXMLDOMNodePtr& node, MCUIFooterData& footer);
    HRESULT GetAllWindowControls(MCArray<MCUIDataControl*>& controls);

    // Fonts and text styles.
    HRESULT BuildMCUIDataFontFromNode(const IXMLDOMNodePtr& node, MCUIDataFont& font);
    HRESULT BuildMCSkinTextStyleFromNode(const IXMLDOMNodePtr& node, MCSkinTextStyle& style);
    HRESULT BuildLogFontFromNode(const IXMLDOMNodePtr& node, LOGFONTW& logFont);

    // Scripts and free data.
    HRESULT BuildMCUIScriptDataFromNode(const IXMLDOMNodePtr& node, MCUIScriptData& data);
    HRESULT ReadFreedataEntries(const IXMLDOMNodePtr& section,
                                MCOrderedMap<CString, const wchar_t*, CString, CString&>& table,
                                const wchar_t* duplicatePrefix);

    // Image lists. The builder sets the record's kind and reads hot spots for
    // cursor lists only.
    HRESULT BuildImageListDataFromNode(const IXMLDOMNodePtr& node, MEUIImageKind kind, MCUIImageListData& list);
    HRESULT FindImageListNodes(MEUIImageKind kind, IXMLDOMNodeListPtr& nodes);
    HRESULT ReadImageListNames(MEUIImageKind kind, ImageListNames& names, const wchar_t* operation);

    // Reads two text attributes of a table entry: S_OK when both are present,
    // S_FALSE when the entry has no attributes or lacks either one (it is then
    // skipped), a failure as it came.
    HRESULT ReadEntryTexts(const IXMLDOMNodePtr& entry, const _bstr_t& keyName,
                           const _bstr_t& valueName, CString& key, CString& value);

    // Duplicate keys are not errors: the first definition stays and the notice
    // composed for the dropped one goes nowhere.
    static void DropDuplicateNotice(const CString& notice);

protected:
    bool m_bExternalDocument;
    bool m_bOpen;
    IXMLDOMDocumentPtr m_pDocument;
};
