#include "Description.h"
#include "Output.h"
#include "XmlLite.h"

namespace tesvorutil {
namespace {

// Where and why a description failed to load. Line 0: no position known.
struct LoadFault {
    long line = 0;
    long column = 0;
    CString reason;
};

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

// Reads the file with XmlLite up to its first fault; false when XmlLite reads it
// without one (or is not there).
bool FaultFromXmlLite(const wchar_t* path, LoadFault& fault)
{
    IStreamPtr stream;
    HRESULT hr = OpenFileStream(path, stream);
    if (FAILED(hr)) {
        fault = LoadFault();
        fault.reason = SystemText(hr);
        return true;
    }
    IXmlReaderPtr parser;
    if (FAILED(CreateXmlLiteReader(stream, parser)))
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
    fault.reason = XmlFaultText(hr);
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
