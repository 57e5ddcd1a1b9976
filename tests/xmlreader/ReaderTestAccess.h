// Test access to the reader's private operations, and small document helpers.
#pragma once
#include "MCXMLReader.h"
#include "TestSupport.h"
#include <gtest/gtest.h>
#include <cstdio>
#include <string>
#include <type_traits>

struct MCXMLReaderTestAccess {
    static bool IsOpen(const MCXMLReader& reader) { return reader.m_bOpen; }
    static bool IsExternal(const MCXMLReader& reader) { return reader.m_bExternalDocument; }
    static IXMLDOMDocumentPtr Document(const MCXMLReader& reader) { return reader.m_pDocument; }
    static HRESULT Init(MCXMLReader& reader) { return reader.Init(); }
    typedef const IXMLDOMNamedNodeMapPtr& Attributes;
    static HRESULT FindNodeInDocument(MCXMLReader& r, const _bstr_t& path, IXMLDOMNodePtr& node) { return r.FindNodeInDocument(path, node); }
    static HRESULT FindNodesInDocument(MCXMLReader& r, const _bstr_t& path, IXMLDOMNodeListPtr& list) { return r.FindNodesInDocument(path, list); }
    typedef const IXMLDOMNodePtr& Node;
    static HRESULT FindNodeInNode(MCXMLReader& r, const _bstr_t& path, Node parent, IXMLDOMNodePtr& node) { return r.FindNodeInNode(path, parent, node); }
    static HRESULT FindNodesInNode(MCXMLReader& r, const _bstr_t& path, Node parent, IXMLDOMNodeListPtr& list) { return r.FindNodesInNode(path, parent, list); }
    static HRESULT GetNamedNodeMap(MCXMLReader& r, Node node, IXMLDOMNamedNodeMapPtr& a) { return r.GetNamedNodeMap(node, a); }
    static HRESULT FindAttributeInNode(MCXMLReader& r, const _bstr_t& name, Attributes a, _bstr_t& value) { return r.FindAttributeInNode(name, a, value); }
    template <class T>
    static HRESULT Read(MCXMLReader& r, Attributes a, const _bstr_t& name, T& out) { return r.CreatePropertyFromAttribute(a, name, out); }
    static HRESULT ReadColor(MCXMLReader& r, Attributes a, const _bstr_t& name, DWORD& out) { return r.CreateColorPropertyFromAttribute(a, name, out); }
    static HRESULT ReadRectEx(MCXMLReader& r, Attributes a, const _bstr_t& name, CRect& out) { return r.CreateRectExPropertyFromAttribute(a, name, out); }

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
};
typedef MCXMLReaderTestAccess Access;

// A DOM document created outside any reader, holding the given XML text.
inline IXMLDOMDocumentPtr MakeDocument(const wchar_t* xml)
{
    IXMLDOMDocumentPtr document;
    EXPECT_EQ(S_OK, document.CreateInstance(L"Msxml2.DOMDocument", NULL, CLSCTX_INPROC_SERVER));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (document != nullptr) {
        EXPECT_TRUE(document->loadXML(_bstr_t(xml), &loaded) == S_OK && loaded == VARIANT_TRUE) << "does not parse";
    }
    return document;
}

// A reader on a document holding the given XML text.
inline void Attach(MCXMLReader& reader, const wchar_t* xml) { ASSERT_EQ(S_OK, reader.SetIXMLDOMDocument(MakeDocument(xml))); }

// Path of a description under tests/data/xmlreader/golden.
inline CString GoldenPath(const wchar_t* name) { return TestDataPath(CString(L"xmlreader\\golden\\") + name); }

// A map of reader records that deletes them when it goes.
template <class Map>
struct OwningMap : Map {
    ~OwningMap() { MDeleteMapValues(*this); }
};
typedef OwningMap<MCMap<CString, const wchar_t*, MCUIDataFont*, MCUIDataFont*&>> FontTable;
typedef OwningMap<MCMap<CString, const wchar_t*, MCUIDataControl*, MCUIDataControl*&>> ControlTable;

// The typed attribute readers, as text: the result and the output after the call.
enum class Kind { Bstr, Text, Bool, Dword, Byte, Char, Long, Int, Rgb, Argb, Rect, Colour, RectEx };

inline std::string Show(const wchar_t* text)
{
    std::string out;
    for (; text != NULL && *text; ++text)
        out += *text < 0x80 ? static_cast<char>(*text) : '?';
    return out;
}
inline std::string Show(const std::string& text) { return text; }
inline std::string Show(const _bstr_t& text) { return Show(static_cast<const wchar_t*>(text)); }
inline std::string Show(const CString& text) { return Show(static_cast<const wchar_t*>(text)); }
inline std::string Show(bool value) { return value ? "true" : "false"; }
inline std::string Show(char value) { return std::to_string(static_cast<signed char>(value)); }
template <class Number>
inline std::enable_if_t<std::is_integral_v<Number>, std::string> Show(Number value)
{
    return std::to_string(static_cast<long long>(value));
}
inline std::string Show(const CRect& rc)
{
    return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.right) + "," +
           std::to_string(rc.bottom);
}
template <class Colour>
inline std::string ShowBytes(const Colour& colour)  // memory order
{
    std::string out;
    for (size_t i = 0; i < sizeof colour; ++i)
        out += (i ? "," : "") + std::to_string(reinterpret_cast<const BYTE*>(&colour)[i]);
    return out;
}
inline std::string Show(const MCSkinRGB& colour) { return ShowBytes(colour); }
inline std::string Show(const MCSkinARGB& colour) { return ShowBytes(colour); }

template <class T>
inline std::string Outcome(HRESULT hr, const T& out)
{
    return (hr == S_OK ? "S_OK:" : hr == S_FALSE ? "S_FALSE:" : "FAILED:") + Show(out);
}

// Reads attribute `name` with the reader of `kind`, from a recognisable output value.
inline std::string ReadAs(MCXMLReader& r, const IXMLDOMNamedNodeMapPtr& a, const _bstr_t& name, Kind kind)
{
    auto outcomeFrom = [&](auto out) {
        const HRESULT hr = Access::Read(r, a, name, out);
        return Outcome(hr, out);
    };
    switch (kind) {
    case Kind::Bstr: return outcomeFrom(_bstr_t(L"before"));
    case Kind::Text: return outcomeFrom(CString(L"before"));
    case Kind::Bool: return outcomeFrom(true);
    case Kind::Dword: return outcomeFrom(DWORD(99));
    case Kind::Byte: return outcomeFrom(BYTE(99));
    case Kind::Char: return outcomeFrom(char(99));
    case Kind::Long: return outcomeFrom(99L);
    case Kind::Int: return outcomeFrom(99);
    case Kind::Rgb: return outcomeFrom(MCSkinRGB{9, 9, 9});
    case Kind::Argb: return outcomeFrom(MCSkinARGB{9, 9, 9, 9});
    case Kind::Rect: return outcomeFrom(CRect(7, 7, 7, 7));
    case Kind::RectEx: {
        CRect out(7, 7, 7, 7);
        const HRESULT hr = Access::ReadRectEx(r, a, name, out);
        return Outcome(hr, out);
    }
    case Kind::Colour: {
        DWORD out = 0xABCDEF;
        HRESULT hr = Access::ReadColor(r, a, name, out);
        char hex[16];
        snprintf(hex, sizeof hex, "0x%06lX", static_cast<unsigned long>(out));
        return Outcome(hr, std::string(hex));
    }
    }
    return "?";
}
