// Image lists of icons and cursors of a UI description.
#include "ReaderBuild.h"
#include "MCUIImageListData.h"
#include "TesvorFunctions.h"
#include <memory>
#include <new>

HRESULT MCXMLReader::FindImageListNodes(MEUIImageKind kind, IXMLDOMNodeListPtr& nodes)
{
    if (!m_bOpen)
        return E_FAIL;
    if (kind != MEUIImageKindIcon && kind != MEUIImageKindCursor)
        return E_INVALIDARG;
    const wchar_t* section = kind == MEUIImageKindCursor ? MNUIName::cursors : MNUIName::icons;
    return FindNodesInDocument(ElementPath({MNUIName::root, section, MNUIName::imagelist}), nodes);
}

HRESULT MCXMLReader::BuildImageListDataFromNode(const IXMLDOMNodePtr& node, MEUIImageKind kind,
                                                MCUIImageListData& list)
{
    HRESULT result = RunGuarded([&]() -> HRESULT {
        list.eKind = kind;
        IXMLDOMNamedNodeMapPtr attributes;
        HRESULT hr = GetNamedNodeMap(node, attributes);
        READER_RETURN_IF_FAILED(hr);
        if (hr == S_OK) {
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::name, list.strName));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::file, list.strFile));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::resid, list.dwResID));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::width, list.nWidth));
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(attributes, MNUIName::initial, list.nInitial));
            READER_RETURN_IF_FAILED(CreateColorPropertyFromAttribute(attributes, MNUIName::mask, list.crMask));
            READER_RETURN_IF_FAILED(ResolveKeywordAttribute(attributes, MNUIName::effect,
                                                            &MCXMLReader::ResolveImageEffectFromAttribute,
                                                            list.eEffect));
        }

        IXMLDOMNodeListPtr images;
        hr = FindNodesInNode(MNUIName::image, node, images);
        if (hr != S_OK)
            return FAILED(hr) ? hr : S_OK;
        for (long i = 0, count = NodeCount(images); i < count; ++i) {
            IXMLDOMNamedNodeMapPtr imageAttributes;
            hr = GetNamedNodeMap(NodeAt(images, i), imageAttributes);
            READER_RETURN_IF_FAILED(hr);
            if (hr != S_OK)
                continue;
            // An image without a name cannot be asked for: it is skipped.
            MCUIImageData image;
            hr = CreatePropertyFromAttribute(imageAttributes, MNUIName::id, image.strID);
            READER_RETURN_IF_FAILED(hr);
            if (hr != S_OK)
                continue;
            READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(imageAttributes, MNUIName::index, image.nIndex));
            if (kind == MEUIImageKindCursor) {
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(imageAttributes, MNUIName::hotx, image.nHotX));
                READER_RETURN_IF_FAILED(CreatePropertyFromAttribute(imageAttributes, MNUIName::hoty, image.nHotY));
            }
            if (list.images.PLookup(image.strID) != NULL) {
                DropDuplicateNotice(L"BuildImageListDataFromNode - Duplicated id for element " + image.strID +
                                    L" was found in image list " + list.strName);
                continue;
            }
            list.images.SetAt(image.strID, image);
        }
        return S_OK;
    });
    MFailed(result, L"", __LINE__);
    return result;
}

HRESULT MCXMLReader::GetImageListsData(MEUIImageKind kind, ImageLists& lists)
{
    HRESULT result = RunGuarded([&]() -> HRESULT {
        IXMLDOMNodeListPtr nodes;
        const HRESULT found = FindImageListNodes(kind, nodes);
        if (found != S_OK)
            return found;
        for (long i = 0, count = NodeCount(nodes); i < count; ++i) {
            std::unique_ptr<MCUIImageListData> list(new (std::nothrow) MCUIImageListData);
            if (!list)
                return E_OUTOFMEMORY;
            READER_RETURN_IF_FAILED(BuildImageListDataFromNode(NodeAt(nodes, i), kind, *list));
            const CString name = list->strName;
            if (lists.PLookup(name) != NULL) {
                DropDuplicateNotice(L"GetImageListsData - Duplicated name for element " + name +
                                    L" was found in image lists");
                continue;
            }
            MCUIImageListData* owned = list.release();
            lists.SetAt(name, owned);
        }
        return S_OK;
    });
    MFailed(result, L"", __LINE__);
    return result;
}

HRESULT MCXMLReader::GetIconsInfo(ImageListNames& icons)
{
    return ReadImageListNames(MEUIImageKindIcon, icons, L"GetIconsInfo");
}

HRESULT MCXMLReader::GetCursorsInfo(ImageListNames& cursors)
{
    return ReadImageListNames(MEUIImageKindCursor, cursors, L"GetCursorsInfo");
}

HRESULT MCXMLReader::ReadImageListNames(MEUIImageKind kind, ImageListNames& names, const wchar_t* operation)
{
    HRESULT result = RunGuarded([&]() -> HRESULT {
        IXMLDOMNodeListPtr nodes;
        const HRESULT found = FindImageListNodes(kind, nodes);
        if (found != S_OK)
            return found;
        // The lists GetImageListsData keeps: the first of every name.
        CMap<CString, const wchar_t*, bool, bool> listsRead;
        for (long i = 0, count = NodeCount(nodes); i < count; ++i) {
            MCUIImageListData list;
            READER_RETURN_IF_FAILED(BuildImageListDataFromNode(NodeAt(nodes, i), kind, list));
            if (listsRead.PLookup(list.strName) != NULL)
                continue;
            listsRead.SetAt(list.strName, true);
            for (INT_PTR k = 0; k < list.images.GetKeyCount(); ++k) {
                const CString& id = list.images.GetKeyAt(k);
                if (names.PLookup(id) != NULL) {
                    DropDuplicateNotice(CString(operation) + L" - Duplicated id for element " + id +
                                        L" was found in image list " + list.strName);
                    continue;
                }
                names.SetAt(id, list.strName);
            }
        }
        return S_OK;
    });
    MFailed(result, L"", __LINE__);
    return result;
}
