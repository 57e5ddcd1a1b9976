// Fonts, text styles and the font and controls schema tables of a UI description.
#include "ReaderBuild.h"
#include "MCUIDataControl.h"
#include <cwchar>
#include <new>

namespace {

// Stores a freshly built schema record under its name unless the name is taken:
// the first definition of a schema wins. Returns false when the record was not
// stored (the caller then still owns it).
template <class Table, class Record>
bool StoreFirstSchema(Table& table, Record* record, const wchar_t* operation, const wchar_t* tableName)
{
    Record* existing = nullptr;
    if (table.Lookup(record->strSchema, existing)) {
        // Composed for a debugger and otherwise dropped: a duplicate is not an error.
        const CString duplicate = CString(operation) + L" - Duplicated schema for element " +
                                  record->strSchema + L" was found in " + tableName + L" schema table";
        (void)duplicate;
        return false;
    }
    table.SetAt(record->strSchema, record);
    return true;
}

}  // namespace

HRESULT MCXMLReader::BuildMCUIDataFontFromNode(const IXMLDOMNodePtr& node, MCUIDataFont& font)
{
    return RunGuarded([&]() -> HRESULT {
        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK) {
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::schema, font.strSchema));
            hr = CreatePropertyFromAttribute(attributes, MNUIName::schemaonly, font.bSchemaOnly);
            READER_RETURN_IF_FAILED(hr);
            // Only an explicit schemaonly="1" skips the children; the record's own
            // default (true) is not consulted.
            if (hr == S_OK && font.bSchemaOnly)
                return S_OK;
        }

        IXMLDOMNodePtr child;
        hr = FindNodeInNode(MNUIName::textstyle, node, child);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK)
            READER_RETURN_IF_FAILED(BuildMCSkinTextStyleFromNode(child, font.textStyle));
        hr = FindNodeInNode(MNUIName::logfont, node, child);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK)
            READER_RETURN_IF_FAILED(BuildLogFontFromNode(child, font.logFont));
        return S_OK;
    });
}

HRESULT MCXMLReader::BuildMCSkinTextStyleFromNode(const IXMLDOMNodePtr& node, MCSkinTextStyle& style)
{
    return RunGuarded([&]() -> HRESULT {
        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::ellipsis, style.bEllipsis));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::righttoleft, style.bRightToLeft));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::argbeffectcolor, style.argbEffect));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::rgbtextcolor, style.rgbText));

        // The enumerations of the byte-packed record may be unaligned: they are
        // resolved into locals.
        MEFontFlags flags = style.eFlags;
        READER_RETURN_IF_FAILED(
            ResolveKeywordAttribute(attributes, MNUIName::textflags, &MCXMLReader::ResolveFontFlagsFromAttribute, flags));
        style.eFlags = flags;
        MEFontEffect effect = style.eEffect;
        READER_RETURN_IF_FAILED(
            ResolveKeywordAttribute(attributes, MNUIName::texteffect, &MCXMLReader::ResolveFontEffectFromAttribute, effect));
        style.eEffect = effect;
        return S_OK;
    });
}

HRESULT MCXMLReader::BuildLogFontFromNode(const IXMLDOMNodePtr& node, LOGFONTW& logFont)
{
    return RunGuarded([&]() -> HRESULT {
        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::height, logFont.lfHeight));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::width, logFont.lfWidth));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::escapement, logFont.lfEscapement));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::orientation, logFont.lfOrientation));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::italic, logFont.lfItalic));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::underline, logFont.lfUnderline));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::strikeout, logFont.lfStrikeOut));

        CString faceName;
        hr = CreatePropertyFromAttribute(attributes, MNUIName::facename, faceName);
        READER_RETURN_IF_FAILED(hr);
        // A name that does not fit the record with its terminator is left out.
        if (hr == S_OK && faceName.GetLength() + 1 <= LF_FACESIZE)
            wcscpy(logFont.lfFaceName, faceName);

        auto resolve = [&](const wchar_t* name, auto resolver, auto& field) {
            return ResolveKeywordAttribute(attributes, name, resolver, field);
        };
        READER_RETURN_IF_FAILED(resolve(MNUIName::weight, &MCXMLReader::ResolveFontLogFontWeightFromAttribute, logFont.lfWeight));
        READER_RETURN_IF_FAILED(resolve(MNUIName::charset, &MCXMLReader::ResolveFontLogFontCharsetFromAttribute, logFont.lfCharSet));
        READER_RETURN_IF_FAILED(resolve(MNUIName::outprecision, &MCXMLReader::ResolveFontLogFontPrecisionFromAttribute, logFont.lfOutPrecision));
        READER_RETURN_IF_FAILED(resolve(MNUIName::clipprecision, &MCXMLReader::ResolveFontLogFontPrecisionFromAttribute, logFont.lfClipPrecision));
        READER_RETURN_IF_FAILED(resolve(MNUIName::quality, &MCXMLReader::ResolveFontLogFontQualityFromAttribute, logFont.lfQuality));

        // Pitch and family always replace the field: an absent one counts as 0.
        BYTE pitch = 0, family = 0;
        READER_RETURN_IF_FAILED(resolve(MNUIName::pitch, &MCXMLReader::ResolveFontLogFontPitchFromAttribute, pitch));
        READER_RETURN_IF_FAILED(resolve(MNUIName::family, &MCXMLReader::ResolveFontLogFontFamilyFromAttribute, family));
        logFont.lfPitchAndFamily = pitch | family;
        return S_OK;
    });
}

HRESULT MCXMLReader::GetAllFontsSchemaData(MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>& fonts)
{
    return RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr nodes;
        const HRESULT hr = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::fontschema, MNUIName::font}), nodes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        const long count = NodeCount(nodes);
        for (long i = 0; i < count; ++i) {
            const IXMLDOMNodePtr node = NodeAt(nodes, i);
            MCUIDataFont* font = new (std::nothrow) MCUIDataFont;
            if (font == nullptr)
                return E_OUTOFMEMORY;
            const HRESULT built = BuildMCUIDataFontFromNode(node, *font);
            if (FAILED(built) || !StoreFirstSchema(fonts, font, L"GetAllFontsSchemaData", L"font")) {
                delete font;
                if (FAILED(built))
                    return built;
            }
        }
        return S_OK;
    });
}

HRESULT MCXMLReader::GetAllControlsSchemaDataByType(const MEControlType& type,
    MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>& controls)
{
    return RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodeListPtr nodes;
        const HRESULT hr = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::controlsschema, MNUIName::control}), nodes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        const long count = NodeCount(nodes);
        for (long i = 0; i < count; ++i) {
            const IXMLDOMNodePtr node = NodeAt(nodes, i);
            MCUIDataControl* control = new (std::nothrow) MCUIDataControl;
            if (control == nullptr)
                return E_OUTOFMEMORY;
            const HRESULT built = BuildMCUIDataControlFromNode(node, *control);
            if (FAILED(built) || control->eType != type ||
                !StoreFirstSchema(controls, control, L"GetAllControlsSchemaDataByType", L"controls")) {
                delete control;
                if (FAILED(built))
                    return built;
            }
        }
        return S_OK;
    });
}
