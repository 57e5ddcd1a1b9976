// Reading what the preview shows: the window record, and for each control its
// text, tooltip and font looked up in the string table and the schemas.
#include "DialogPreview.h"
#include <string>

namespace preview {
namespace {

// A font element describes a font of its own when its logfont child was read.
bool HasOwnLogFont(const MCUIDataFont& font)
{
    return font.logFont.lfFaceName[0] != L'\0' || font.logFont.lfHeight != 0;
}

}  // namespace

DialogModel::~DialogModel()
{
    MDeleteMapValues(m_fontSchemas);
    for (auto& schemas : m_controlSchemas)
        MDeleteMapValues(schemas.second);
}

HRESULT DialogModel::Read(MCXMLReader& reader, const wchar_t* description)
{
    HRESULT hr = reader.GetDialogData(window);
    if (hr != S_OK)
        return hr;
    if (FAILED(hr = reader.GetAllFontsSchemaData(m_fontSchemas)))
        return hr;
    // Only the types that name a control schema are looked up: each lookup walks
    // every schema of the description.
    for (INT_PTR i = 0; i < window.arrControls.GetSize(); ++i) {
        const MCUIDataControl& control = *window.arrControls[i];
        if (control.strSchema.IsEmpty() || m_controlSchemas.count(control.eType) != 0)
            continue;
        if (FAILED(hr = reader.GetAllControlsSchemaDataByType(control.eType, m_controlSchemas[control.eType])))
            return hr;
    }
    if (FAILED(hr = reader.GetStringTableMapByID(m_strings)))
        return hr;

    Resolve(window, frame);
    controls.resize(static_cast<size_t>(window.arrControls.GetSize()));
    for (size_t i = 0; i < controls.size(); ++i)
        Resolve(*window.arrControls[static_cast<INT_PTR>(i)], controls[i]);
    if (FAILED(hr = ReadPictures(reader, description)))
        return hr;
    for (const PreviewControl& control : controls) {
        if (control.record->eType == MEControlTypeImageButton && PictureOf(control) == nullptr) {
            CString warning;
            warning.Format(L"%s: no picture for the image button (skin object '%s'); drawn as a placeholder",
                           static_cast<const wchar_t*>(control.record->strIDS),
                           static_cast<const wchar_t*>(control.record->strSkinObjName));
            warnings.push_back(warning);
        }
    }
    return S_OK;
}

// An image button shows the icon that its skin object names, drawn over the
// button face; each icon list is made live once, when a button first needs it.
HRESULT DialogModel::ReadPictures(MCXMLReader& reader, const wchar_t* description)
{
    MCXMLReader::ImageLists lists;
    MCXMLReader::ImageListNames icons;
    HRESULT hr = reader.GetImageListsData(MEUIImageKindIcon, lists);
    if (SUCCEEDED(hr))
        hr = reader.GetIconsInfo(icons);
    std::map<std::wstring, std::unique_ptr<MCUIImageList>> made;
    for (const PreviewControl& control : controls) {
        const MCUIDataControl& record = *control.record;
        CString listName;
        MCUIImageListData* list = nullptr;
        if (FAILED(hr) || record.eType != MEControlTypeImageButton || !icons.Lookup(record.strSkinObjName, listName) ||
            !lists.Lookup(listName, list))
            continue;
        std::unique_ptr<MCUIImageList>& live = made[static_cast<const wchar_t*>(listName)];
        if (!live) {
            live = std::make_unique<MCUIImageList>();
            const HRESULT created = live->Create(*list, description);
            if (FAILED(created)) {
                CString warning;
                warning.Format(L"image list '%s' cannot be made (0x%08lX)", static_cast<const wchar_t*>(listName),
                               static_cast<unsigned long>(created));
                warnings.push_back(warning);
            }
        }
        MCUIImageData image;
        HBITMAP picture = nullptr;
        if (live->GetImageList() != nullptr && list->images.Lookup(record.strSkinObjName, image) &&
            MImageUtils::GetBitmapByIndex(live->GetImageList(), image.nIndex, ::GetSysColor(COLOR_BTNFACE), picture)) {
            m_pictures[&record] = std::make_unique<CBitmap>();
            m_pictures[&record]->Attach(picture);
        }
    }
    MDeleteMapValues(lists);
    return hr;
}

HBITMAP DialogModel::PictureOf(const PreviewControl& control) const
{
    const auto found = m_pictures.find(control.record);
    return found != m_pictures.end() ? static_cast<HBITMAP>(found->second->GetSafeHandle()) : nullptr;
}

void DialogModel::Resolve(const MCUIDataControl& record, PreviewControl& control) const
{
    control.record = &record;
    CString text;
    control.text = record.dwTextID != 0 && m_strings.Lookup(record.dwTextID, text) ? text : record.strText;
    control.toolTip =
        record.dwToolTipID != 0 && m_strings.Lookup(record.dwToolTipID, text) ? text : record.strToolTip;

    // Its own font element first, then the font of its control schema.
    control.hasFont = ResolveFont(record.font, control.font);
    const auto schemas = m_controlSchemas.find(record.eType);
    MCUIDataControl* schema = nullptr;
    if (!control.hasFont && schemas != m_controlSchemas.end() && schemas->second.Lookup(record.strSchema, schema))
        control.hasFont = ResolveFont(schema->font, control.font);
}

// A font element either describes its font or names a font schema.
bool DialogModel::ResolveFont(const MCUIDataFont& font, MCUIDataFont& out) const
{
    if (HasOwnLogFont(font)) {
        out = font;
        return true;
    }
    MCUIDataFont* schema = nullptr;
    if (font.strSchema.IsEmpty() || !m_fontSchemas.Lookup(font.strSchema, schema) || !HasOwnLogFont(*schema))
        return false;
    out = *schema;
    return true;
}

bool CheckSize(CSize size, CString& error)
{
    if (size.cx >= 1 && size.cy >= 1 && size.cx <= kMaxSide && size.cy <= kMaxSide)
        return true;
    error.Format(L"a window of %d x %d pixels cannot be shown: each side must be 1 to %d", size.cx, size.cy,
                 kMaxSide);
    return false;
}

}  // namespace preview
