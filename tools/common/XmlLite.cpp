#include "XmlLite.h"
#include <shlwapi.h>

namespace tesvorutil {
namespace {

class LoadedModule {
public:
    explicit LoadedModule(const wchar_t* name) : m_module(::LoadLibraryW(name)), m_error(::GetLastError()) {}
    ~LoadedModule()
    {
        if (m_module != NULL)
            ::FreeLibrary(m_module);
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    FARPROC Entry(const char* name) const { return m_module != NULL ? ::GetProcAddress(m_module, name) : NULL; }
    DWORD LoadError() const { return m_error; }

private:
    HMODULE m_module;
    DWORD m_error;
};

}  // namespace

HRESULT OpenFileStream(const wchar_t* path, IStreamPtr& stream)
{
    stream = nullptr;
    return ::SHCreateStreamOnFileW(path, STGM_READ | STGM_SHARE_DENY_WRITE, &stream);
}

HRESULT CreateXmlLiteReader(IStream* input, IXmlReaderPtr& reader)
{
    typedef HRESULT(WINAPI * CreateXmlReaderProc)(REFIID, void**, IMalloc*);
    static const LoadedModule xmllite(L"xmllite.dll");
    const auto create = reinterpret_cast<CreateXmlReaderProc>(
        reinterpret_cast<void*>(xmllite.Entry("CreateXmlReader")));
    reader = nullptr;
    if (create == NULL)
        return HRESULT_FROM_WIN32(xmllite.LoadError() != 0 ? xmllite.LoadError() : ERROR_PROC_NOT_FOUND);
    HRESULT hr = create(__uuidof(IXmlReader), reinterpret_cast<void**>(&reader), NULL);
    if (SUCCEEDED(hr))
        hr = reader->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Parse);
    if (SUCCEEDED(hr))
        hr = reader->SetInput(input);
    if (FAILED(hr))
        reader = nullptr;
    return hr;
}

CString XmlFaultText(HRESULT hr)
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
    default: return SystemText(hr);
    }
}

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

}  // namespace tesvorutil
