#include "Description.h"
#include <shlwapi.h>
#include <xmllite.h>
#include <memory>
#include "Output.h"

_COM_SMARTPTR_TYPEDEF(IStream, __uuidof(IStream));
_COM_SMARTPTR_TYPEDEF(IXmlReader, __uuidof(IXmlReader));

namespace tesvorutil {
namespace {

// Where and why a description failed to load. Line 0: no position known.
struct LoadFault {
    long line = 0;
    long column = 0;
    CString reason;
};

// Texts for the well-formedness faults a hand-edited description runs into;
// XmlLite reports them only as codes.
const wchar_t* XmlLiteFaultText(HRESULT hr)
{
    switch (static_cast<unsigned long>(hr)) {
    case MX_E_INPUTEND: return L"unexpected end of the document";
    case MX_E_ENCODING: return L"the text does not match the declared encoding";
    case WC_E_WHITESPACE: return L"white space expected";
    case WC_E_SEMICOLON: return L"';' expected";
    case WC_E_GREATERTHAN: return L"'>' expected";
    case WC_E_QUOTE: return L"a quote expected";
    case WC_E_EQUAL: return L"'=' expected";
    case WC_E_LESSTHAN: return L"'<' not allowed in an attribute value";
    case WC_E_XMLCHARACTER: return L"a character not allowed in XML";
    case WC_E_NAMECHARACTER: return L"a character not allowed in a name";
    case WC_E_SYNTAX: return L"syntax error";
    case WC_E_NAME: return L"a name expected";
    case WC_E_ROOTELEMENT: return L"the document has no root element or more than one";
    case WC_E_ELEMENTMATCH: return L"the end tag does not match the start tag";
    case WC_E_UNIQUEATTRIBUTE: return L"an attribute appears twice in one element";
    case WC_E_UNDECLAREDENTITY: return L"an undeclared entity";
    case WC_E_MOREDATA: return L"text after the root element";
    default: return NULL;
    }
}

// The system's text for a failure code, without its line end.
CString SystemText(HRESULT hr)
{
    wchar_t text[512] = L"";
    CString result;
    if (::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, NULL, static_cast<DWORD>(hr), 0,
                         text, ARRAYSIZE(text), NULL) != 0)
        result = text;
    result.TrimRight(L"\r\n ");
    if (result.IsEmpty())
        result.Format(L"failure 0x%08lX", static_cast<unsigned long>(hr));
    return result;
}

// The parser's own account, from the document the reader tried to load.
LoadFault FaultFromDocument(MCXMLReader& reader)
{
    LoadFault fault;
    IXMLDOMDocumentPtr document;
    IXMLDOMParseErrorPtr parseError;
    if (FAILED(reader.GetIXMLDOMDocument(document)) || FAILED(document->get_parseError(&parseError)) || !parseError)
        return fault;
    _bstr_t reason;
    if (SUCCEEDED(parseError->get_reason(reason.GetAddress())) && reason.length() != 0)
        fault.reason = static_cast<const wchar_t*>(reason);
    parseError->get_line(&fault.line);
    parseError->get_linepos(&fault.column);
    fault.reason.TrimRight(L"\r\n ");
    return fault;
}

struct FreeModule {
    void operator()(HMODULE module) const { ::FreeLibrary(module); }
};

// Reads the file with XmlLite up to its first fault; false when XmlLite reads it
// without one (or is not there).
bool FaultFromXmlLite(const wchar_t* path, LoadFault& fault)
{
    IStreamPtr stream;
    HRESULT hr = ::SHCreateStreamOnFileW(path, STGM_READ | STGM_SHARE_DENY_WRITE, &stream);
    if (FAILED(hr)) {
        fault = LoadFault();
        fault.reason = SystemText(hr);
        return true;
    }
    // XmlLite has no import library in this tool chain: it is bound at run time.
    typedef HRESULT(WINAPI * CreateXmlReaderProc)(REFIID, void**, IMalloc*);
    std::unique_ptr<HINSTANCE__, FreeModule> xmllite(::LoadLibraryW(L"xmllite.dll"));
    auto createXmlReader = xmllite ? reinterpret_cast<CreateXmlReaderProc>(reinterpret_cast<void*>(
                                         ::GetProcAddress(xmllite.get(), "CreateXmlReader")))
                                   : NULL;
    IXmlReaderPtr parser;
    if (createXmlReader == NULL || FAILED(createXmlReader(__uuidof(IXmlReader), reinterpret_cast<void**>(&parser), NULL)) ||
        FAILED(parser->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Parse)) ||
        FAILED(parser->SetInput(stream)))
        return false;
    XmlNodeType type;
    while ((hr = parser->Read(&type)) == S_OK) {
    }
    if (SUCCEEDED(hr))
        return false;
    UINT line = 0, column = 0;
    parser->GetLineNumber(&line);
    parser->GetLinePosition(&column);
    fault.line = static_cast<long>(line);
    fault.column = static_cast<long>(column);
    const wchar_t* text = XmlLiteFaultText(hr);
    fault.reason = text != NULL ? CString(text) : SystemText(hr);
    return true;
}

}  // namespace

ComApartment::ComApartment() : m_hr(::CoInitializeEx(NULL, COINIT_APARTMENTTHREADED)) {}

ComApartment::~ComApartment()
{
    if (SUCCEEDED(m_hr))
        ::CoUninitialize();
}

bool OpenDescription(MCXMLReader& reader, const wchar_t* path)
{
    const HRESULT hr = reader.Open(path, 0);
    if (SUCCEEDED(hr))
        return true;
    // Some DOMs name no position (Wine's gives a bare "error"): XmlLite then finds it.
    LoadFault fault = FaultFromDocument(reader);
    if (fault.line == 0) {
        LoadFault located;
        if (FaultFromXmlLite(path, located))
            fault = located;
    }
    if (fault.reason.IsEmpty())
        fault.reason = hr == E_UNEXPECTED ? CString(L"the description cannot be loaded") : SystemText(hr);
    if (fault.line > 0)
        PrintErr(L"%s:%ld:%ld: error: %s\n", path, fault.line, fault.column, static_cast<const wchar_t*>(fault.reason));
    else
        PrintErr(L"%s: error: %s\n", path, static_cast<const wchar_t*>(fault.reason));
    return false;
}

}  // namespace tesvorutil
