// The reader object: obtaining, loading, emptying and sharing its DOM document,
// and the node queries every record builder rests on.
#include "MCXMLReader.h"
#include "TesvorFunctions.h"

namespace {

// The DOM's raw methods report failures by result; the reader's handlers expect
// them raised, as the COM smart-pointer wrappers do.
void RaiseIfFailed(HRESULT hr)
{
    if (FAILED(hr))
        _com_issue_error(hr);
}

}  // namespace

MCXMLReader::MCXMLReader() : m_bExternalDocument(false), m_bOpen(false) {}

MCXMLReader::MCXMLReader(const MCXMLReader& other)
    : MCError(other), m_bExternalDocument(other.m_bExternalDocument), m_bOpen(other.m_bOpen),
      m_pDocument(other.m_pDocument)
{
}

MCXMLReader& MCXMLReader::operator=(const MCXMLReader& other)
{
    MCError::operator=(other);
    m_bExternalDocument = other.m_bExternalDocument;
    m_bOpen = other.m_bOpen;
    m_pDocument = other.m_pDocument;
    return *this;
}

MCXMLReader::~MCXMLReader() {}

HRESULT MCXMLReader::OnComError(const _com_error& error)
{
    const wchar_t* message = error.ErrorMessage();
    m_strError = message != NULL ? message : L"";
    return error.Error();
}

HRESULT MCXMLReader::OnUnknownException()
{
    m_strError = L"Unknown exception ...";
    return E_UNEXPECTED;
}

void MCXMLReader::DropDuplicateNotice(const CString& notice)
{
    (void)notice;
}

HRESULT MCXMLReader::Init()
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (m_pDocument)
            return S_OK;
        HRESULT created = m_pDocument.CreateInstance(L"Msxml2.DOMDocument.4.0", NULL, CLSCTX_ALL);
        // Only S_OK counts: any other success code also falls back.
        if (created != S_OK)
            created = m_pDocument.CreateInstance(L"Msxml2.DOMDocument", NULL, CLSCTX_ALL);
        return created;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::Open(const wchar_t* path, DWORD /*reserved*/)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        m_bExternalDocument = false;
        m_bOpen = false;
        if (!m_pDocument) {
            HRESULT created = Init();
            if (FAILED(created))
                return created;
        }
        VARIANT_BOOL loaded = VARIANT_FALSE;
        RaiseIfFailed(m_pDocument->load(_variant_t(path), &loaded));
        if (loaded == VARIANT_FALSE) {
            // The parser's reason is read and deliberately not kept: callers only
            // see E_UNEXPECTED, and the last error text stays as it was.
            IXMLDOMParseErrorPtr parseError;
            if (SUCCEEDED(m_pDocument->get_parseError(&parseError)) && parseError) {
                _bstr_t reason;
                parseError->get_reason(reason.GetAddress());
            }
            return E_UNEXPECTED;
        }
        m_bOpen = true;
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::Close()
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (m_bOpen && !m_bExternalDocument) {
            // The document object is kept for the next Open; only its content goes.
            VARIANT_BOOL loaded = VARIANT_FALSE;
            RaiseIfFailed(m_pDocument->loadXML(_bstr_t(L"<root></root>"), &loaded));
            if (loaded == VARIANT_FALSE)
                return S_FALSE;
            m_bOpen = false;
            return S_OK;
        }
        // An attached document belongs to whoever handed it in: it is neither
        // emptied nor released, and m_bOpen is left for the next Open to clear.
        if (m_bExternalDocument)
            m_bExternalDocument = false;
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::SetIXMLDOMDocument(IXMLDOMDocumentPtr document)
{
    IXMLDOMDocument* candidate = document;
    if (candidate == NULL || !AfxIsValidAddress(candidate, 4, FALSE))
        return E_POINTER;
    IXMLDOMDocument* queried = NULL;
    HRESULT hr = candidate->QueryInterface(__uuidof(IXMLDOMDocument), reinterpret_cast<void**>(&queried));
    if (FAILED(hr) && hr != E_NOINTERFACE)
        _com_issue_error(hr);
    m_pDocument.Attach(queried);
    if (!m_pDocument)
        return E_POINTER;
    m_bOpen = true;
    m_bExternalDocument = true;
    return S_OK;
}

HRESULT MCXMLReader::GetIXMLDOMDocument(IXMLDOMDocumentPtr& document)
{
    document = m_pDocument;
    return document ? S_OK : E_POINTER;
}

long MCXMLReader::NodeCount(const IXMLDOMNodeListPtr& list)
{
    long length = 0;
    RaiseIfFailed(list->get_length(&length));
    return length;
}

IXMLDOMNodePtr MCXMLReader::NodeAt(const IXMLDOMNodeListPtr& list, long index)
{
    IXMLDOMNode* node = NULL;
    RaiseIfFailed(list->get_item(index, &node));
    return IXMLDOMNodePtr(node, false);
}

HRESULT MCXMLReader::FindNodeInDocument(const _bstr_t& path, IXMLDOMNodePtr& node)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        node.Attach(nullptr);
        IXMLDOMNode* found = NULL;
        RaiseIfFailed(m_pDocument->selectSingleNode(path, &found));
        node.Attach(found);
        return found != NULL ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::FindNodesInDocument(const _bstr_t& path, IXMLDOMNodeListPtr& list)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        list.Attach(nullptr);
        IXMLDOMNodeList* found = NULL;
        RaiseIfFailed(m_pDocument->selectNodes(path, &found));
        list.Attach(found);
        if (found == NULL)
            return S_FALSE;
        return NodeCount(list) >= 1 ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::FindNodeInNode(const _bstr_t& path, const IXMLDOMNodePtr& parent, IXMLDOMNodePtr& node)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!parent)
            return E_POINTER;
        IXMLDOMNode* found = NULL;
        RaiseIfFailed(parent->selectSingleNode(path, &found));
        node.Attach(found);
        return found != NULL ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::FindNodesInNode(const _bstr_t& path, const IXMLDOMNodePtr& parent, IXMLDOMNodeListPtr& list)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!parent)
            return E_POINTER;
        list.Attach(nullptr);
        IXMLDOMNodeList* found = NULL;
        RaiseIfFailed(parent->selectNodes(path, &found));
        list.Attach(found);
        if (found == NULL)
            return S_FALSE;
        return NodeCount(list) >= 1 ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::GetNamedNodeMap(const IXMLDOMNodePtr& node, IXMLDOMNamedNodeMapPtr& attributes)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!node)
            return E_POINTER;
        attributes.Attach(nullptr);
        IXMLDOMNamedNodeMap* map = NULL;
        RaiseIfFailed(node->get_attributes(&map));
        attributes.Attach(map);
        if (map == NULL)
            return S_FALSE;
        long length = 0;
        RaiseIfFailed(map->get_length(&length));
        return length >= 1 ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::FindAttributeInNode(const _bstr_t& name, const IXMLDOMNamedNodeMapPtr& attributes,
                                         _bstr_t& value)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        if (!attributes)
            return E_POINTER;
        value = L"";
        IXMLDOMNode* item = NULL;
        RaiseIfFailed(attributes->getNamedItem(name, &item));
        IXMLDOMNodePtr attribute(item, false);
        if (!attribute)
            return S_FALSE;
        BSTR text = NULL;
        RaiseIfFailed(attribute->get_text(&text));
        value = _bstr_t(text, false);
        return S_OK;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}
