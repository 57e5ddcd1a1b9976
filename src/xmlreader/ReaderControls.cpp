// Windows, controls and footers of a UI description.
#include "MCUIWindowData.h"
#include "MCPictureHolder.h"
#include "ReaderBuild.h"
#include <cwchar>

namespace {

// "anchorss": one letter per anchor; the horizontal axis knows r and c, the
// vertical one b and c, every other letter means the near edge.
LONG HorizontalAnchor(wchar_t letter) { return letter == L'r' ? 100 : letter == L'c' ? 50 : 0; }
LONG VerticalAnchor(wchar_t letter) { return letter == L'b' ? 100 : letter == L'c' ? 50 : 0; }

CRect AnchorsFromLetters(CString text)
{
    text.Trim();
    text.MakeLower();
    const wchar_t* letters = text;
    if (text.GetLength() == 2) {
        const LONG x = HorizontalAnchor(letters[0]), y = VerticalAnchor(letters[1]);
        return CRect(x, y, x, y);
    }
    if (text.GetLength() == 4) {
        CRect anchors(HorizontalAnchor(letters[0]), VerticalAnchor(letters[1]),
                      HorizontalAnchor(letters[2]), VerticalAnchor(letters[3]));
        if (anchors.left > anchors.right || anchors.top > anchors.bottom)
            return CRect(0, 0, 0, 0);
        return anchors;
    }
    return CRect(0, 0, 0, 0);
}

// "anchorsv": four numbers separated by blanks or commas.
CRect AnchorsFromNumbers(const CString& text)
{
    LONG values[4] = {};
    int found = 0, position = 0;
    while (found < 4) {
        const CString token = text.Tokenize(L" ,", position);
        if (position < 0)
            break;
        values[found++] = wcstol(token, nullptr, 10);
    }
    const CRect anchors(values[0], values[1], values[2], values[3]);
    return found == 4 && IsValidAnchorsRect(anchors) ? anchors : CRect(0, 0, 0, 0);
}

}  // namespace

HRESULT MCXMLReader::GetDialogData(MCUIWindowData& window)
{
    return RunGuarded([&]() -> HRESULT {
        if (!m_bOpen)
            return E_FAIL;
        IXMLDOMNodePtr node;
        const HRESULT hr = FindNodeInDocument(ElementPath({MNUIName::root, MNUIName::window}), node);
        if (hr != S_OK)
            return hr;
        return BuildMCUIWindowDataFromNode(node, window);
    });
}

HRESULT MCXMLReader::BuildMCUIWindowDataFromNode(const IXMLDOMNodePtr& node, MCUIWindowData& window)
{
    return RunGuarded([&]() -> HRESULT {
        READER_RETURN_IF_FAILED(BuildMCUIDataControlFromNode(node, window));

        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK) {
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::skinform, window.strSkinForm));
            READER_RETURN_IF_FAILED(ResolveKeywordAttribute(attributes, MNUIName::move,
                                                            &MCXMLReader::ResolveWindowMoveTypeFromAttribute,
                                                            window.eMoveType));
            READER_RETURN_IF_FAILED(ResolveKeywordAttribute(attributes, MNUIName::resize,
                                                            &MCXMLReader::ResolveControlResizeTypeFromAttribute,
                                                            window.eResizeType));
        }

        READER_RETURN_IF_FAILED(GetAllWindowControls(window.arrControls));

        IXMLDOMNodePtr footer;
        hr = FindNodeInNode(MNUIName::footer, node, footer);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK)
            READER_RETURN_IF_FAILED(BuildMCUIFooterDataFromNode(footer, window.footer));
        return S_OK;
    });
}

// The attributes are read in the order the applications rely on: "rectex" comes
// after "rect" and wins, and a skin object path turns anchors and size limits off.
HRESULT MCXMLReader::BuildMCUIDataControlFromNode(const IXMLDOMNodePtr& node, MCUIDataControl& control)
{
    return RunGuarded([&]() -> HRESULT {
        auto readAttributes = [&](const IXMLDOMNamedNodeMapPtr& attributes) -> HRESULT {
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::schema, control.strSchema));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::ids, control.strIDS));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::idv, control.dwIDV));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::enabled, control.bEnabled));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::tooltip, control.strToolTip));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::tooltipid, control.dwToolTipID));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::text, control.strText));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::textid, control.dwTextID));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::rect, control.rcRect));
            READER_RETURN_IF_FAILED(CreateRectExPropertyFromAttribute(attributes, MNUIName::rectex, control.rcRect));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::visible, control.bVisible));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::st, control.dwSt));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::stex, control.dwStEx));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::skinobjname, control.strSkinObjName));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::actualsize, control.bActualSize));

            READER_RETURN_IF_FAILED(ResolveKeywordAttribute(attributes, MNUIName::type,
                                                            &MCXMLReader::ResolveControlTypeFromAttribute,
                                                            control.eType));
            READER_RETURN_IF_FAILED(ResolveKeywordAttribute(attributes, MNUIName::state,
                                                            &MCXMLReader::ResolveControlStateFromAttribute,
                                                            control.eState));

            bool windowless = false;
            HRESULT hr = CreatePropertyFromAttribute(attributes, MNUIName::windowless, windowless);
            READER_RETURN_IF_FAILED(hr);
            if (hr == S_OK)
                READER_RETURN_IF_FAILED(ResolveControlWindowTypeFromValue(windowless, control.eWindowType));

            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::autoskin, control.bAutoSkin));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::skinphobjpath, control.strSkinPhObjPath));
            if (control.strSkinPhObjPath.IsEmpty()) {
                CString anchors;
                hr = CreatePropertyFromAttribute(attributes, MNUIName::anchorss, anchors);
                READER_RETURN_IF_FAILED(hr);
                if (hr == S_OK) {
                    control.rcAnchors = AnchorsFromLetters(anchors);
                } else {
                    hr = CreatePropertyFromAttribute(attributes, MNUIName::anchorsv, anchors);
                    READER_RETURN_IF_FAILED(hr);
                    control.rcAnchors = hr == S_OK ? AnchorsFromNumbers(anchors) : CRect(0, 0, 0, 0);
                }
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::cxmin, control.nCxMin));
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::cymin, control.nCyMin));
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::cxmax, control.nCxMax));
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::cymax, control.nCyMax));
            }
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::additional, control.strAdditional));
            return S_OK;
        };

        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK)
            READER_RETURN_IF_FAILED(readAttributes(attributes));

        IXMLDOMNodePtr font;
        hr = FindNodeInNode(MNUIName::font, node, font);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK)
            READER_RETURN_IF_FAILED(BuildMCUIDataFontFromNode(font, control.font));
        return S_OK;
    });
}

HRESULT MCXMLReader::BuildMCUIFooterDataFromNode(const IXMLDOMNodePtr& node, MCUIFooterData& footer)
{
    return RunGuarded([&]() -> HRESULT {
        IXMLDOMNamedNodeMapPtr attributes;
        const HRESULT hr = GetNamedNodeMap(node, attributes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::status, footer.strStatus));
        READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::statusid, footer.dwStatusID));
        return S_OK;
    });
}

HRESULT MCXMLReader::GetAllWindowControls(MCArray<MCUIDataControl*>& controls)
{
    return RunGuarded([&]() -> HRESULT {
        IXMLDOMNodeListPtr nodes;
        const HRESULT hr = FindNodesInDocument(ElementPath({MNUIName::root, MNUIName::window, MNUIName::control}), nodes);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        const long count = NodeCount(nodes);
        for (long i = 0; i < count; ++i) {
            const IXMLDOMNodePtr node = NodeAt(nodes, i);
            MCUIDataControl* control = new (std::nothrow) MCUIDataControl;
            if (control == nullptr)
                return E_OUTOFMEMORY;
            const HRESULT built = BuildMCUIDataControlFromNode(node, *control);
            if (FAILED(built)) {
                delete control;
                return built;
            }
            controls.Add(control);
        }
        return S_OK;
    });
}
