// Test access to the reader's private operations, and small document helpers.
#pragma once
#include "MCXMLReader.h"
#include "TestSupport.h"
#include <gtest/gtest.h>
#include <ostream>

// Readable CString values in assertion messages.
inline void PrintTo(const CString& text, std::ostream* os)
{
    *os << '"';
    for (int i = 0; i < text.GetLength(); ++i) {
        wchar_t ch = text[i];
        if (ch >= 0x20 && ch < 0x7F)
            *os << static_cast<char>(ch);
        else
            *os << "\\x" << std::hex << static_cast<unsigned>(ch) << std::dec;
    }
    *os << '"';
}

struct MCXMLReaderTestAccess {
    static bool IsOpen(const MCXMLReader& reader) { return reader.m_bOpen; }
    static bool IsExternal(const MCXMLReader& reader) { return reader.m_bExternalDocument; }
    static IXMLDOMDocumentPtr Document(const MCXMLReader& reader) { return reader.m_pDocument; }

    static HRESULT Init(MCXMLReader& reader) { return reader.Init(); }
    static HRESULT FindNodeInDocument(MCXMLReader& reader, const _bstr_t& path, IXMLDOMNodePtr& node)
    {
        return reader.FindNodeInDocument(path, node);
    }
    static HRESULT FindNodesInDocument(MCXMLReader& reader, const _bstr_t& path, IXMLDOMNodeListPtr& list)
    {
        return reader.FindNodesInDocument(path, list);
    }
    static HRESULT FindNodeInNode(MCXMLReader& reader, const _bstr_t& path, const IXMLDOMNodePtr& parent,
                                  IXMLDOMNodePtr& node)
    {
        return reader.FindNodeInNode(path, parent, node);
    }
    static HRESULT FindNodesInNode(MCXMLReader& reader, const _bstr_t& path, const IXMLDOMNodePtr& parent,
                                   IXMLDOMNodeListPtr& list)
    {
        return reader.FindNodesInNode(path, parent, list);
    }
    static HRESULT GetNamedNodeMap(MCXMLReader& reader, const IXMLDOMNodePtr& node,
                                   IXMLDOMNamedNodeMapPtr& attributes)
    {
        return reader.GetNamedNodeMap(node, attributes);
    }
    static HRESULT FindAttributeInNode(MCXMLReader& reader, const _bstr_t& name,
                                       const IXMLDOMNamedNodeMapPtr& attributes, _bstr_t& value)
    {
        return reader.FindAttributeInNode(name, attributes, value);
    }
    template <class T>
    static HRESULT Read(MCXMLReader& reader, const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, T& out)
    {
        return reader.CreatePropertyFromAttribute(attributes, name, out);
    }
    static HRESULT ReadColor(MCXMLReader& reader, const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                             DWORD& out)
    {
        return reader.CreateColorPropertyFromAttribute(attributes, name, out);
    }
    static HRESULT ReadRectEx(MCXMLReader& reader, const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                              CRect& out)
    {
        return reader.CreateRectExPropertyFromAttribute(attributes, name, out);
    }

    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEFontEffect& o) { return r.ResolveFontEffectFromAttribute(v, o); }
    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEFontFlags& o) { return r.ResolveFontFlagsFromAttribute(v, o); }
    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEControlType& o) { return r.ResolveControlTypeFromAttribute(v, o); }
    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEControlState& o) { return r.ResolveControlStateFromAttribute(v, o); }
    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEControlResizeType& o) { return r.ResolveControlResizeTypeFromAttribute(v, o); }
    static HRESULT Resolve(MCXMLReader& r, const _bstr_t& v, MEWindowMoveType& o) { return r.ResolveWindowMoveTypeFromAttribute(v, o); }
    static HRESULT Weight(MCXMLReader& r, const _bstr_t& v, long& o) { return r.ResolveFontLogFontWeightFromAttribute(v, o); }
    static HRESULT Charset(MCXMLReader& r, const _bstr_t& v, BYTE& o) { return r.ResolveFontLogFontCharsetFromAttribute(v, o); }
    static HRESULT Precision(MCXMLReader& r, const _bstr_t& v, BYTE& o) { return r.ResolveFontLogFontPrecisionFromAttribute(v, o); }
    static HRESULT Quality(MCXMLReader& r, const _bstr_t& v, BYTE& o) { return r.ResolveFontLogFontQualityFromAttribute(v, o); }
    static HRESULT Pitch(MCXMLReader& r, const _bstr_t& v, BYTE& o) { return r.ResolveFontLogFontPitchFromAttribute(v, o); }
    static HRESULT Family(MCXMLReader& r, const _bstr_t& v, BYTE& o) { return r.ResolveFontLogFontFamilyFromAttribute(v, o); }
    static HRESULT WindowType(MCXMLReader& r, bool flag, MEControlWindowType& o) { return r.ResolveControlWindowTypeFromValue(flag, o); }
};

// A DOM document created outside any reader, holding the given XML text.
inline IXMLDOMDocumentPtr MakeDocument(const wchar_t* xml)
{
    IXMLDOMDocumentPtr document;
    EXPECT_EQ(S_OK, document.CreateInstance(L"Msxml2.DOMDocument", NULL, CLSCTX_INPROC_SERVER));
    if (document == nullptr)
        return document;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(S_OK, document->loadXML(_bstr_t(xml), &loaded));
    EXPECT_EQ(VARIANT_TRUE, loaded) << "test document does not parse";
    return document;
}

// The attribute map of the first element matching `path` in a reader's document.
inline IXMLDOMNamedNodeMapPtr AttributesAt(MCXMLReader& reader, const wchar_t* path)
{
    IXMLDOMNodePtr node;
    IXMLDOMNamedNodeMapPtr attributes;
    EXPECT_EQ(S_OK, MCXMLReaderTestAccess::FindNodeInDocument(reader, path, node));
    MCXMLReaderTestAccess::GetNamedNodeMap(reader, node, attributes);
    return attributes;
}
