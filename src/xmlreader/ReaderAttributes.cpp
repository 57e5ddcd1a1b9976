// Typed attribute readers: the text of a named attribute turned into a value.
// Numbers are read with the platform C runtime's wide scanner and the formats
// below, which descriptions rely on: leading blanks are skipped, trailing text
// is ignored ("12px" is 12), "%u" wraps a minus sign, "%i" reads "0x" hex and
// leading-zero octal, and separators must be single commas.
#include "MCXMLReader.h"
#include "TesvorFunctions.h"

namespace {

const wchar_t* TextOf(const _bstr_t& text)
{
    const wchar_t* chars = text;
    return chars != NULL ? chars : L"";
}

bool IsByte(unsigned int value) { return value <= 255; }

// "red,green,blue", each at most 255; rgb is written only when all three are.
bool ScanRgb(const wchar_t* text, MCSkinRGB& rgb)
{
    unsigned int red = 0, green = 0, blue = 0;
    if (AfxCrtSwscanf(text, L"%u,%u,%u", &red, &green, &blue) != 3 || !IsByte(red) || !IsByte(green) ||
        !IsByte(blue))
        return false;
    rgb.red = static_cast<BYTE>(red);
    rgb.green = static_cast<BYTE>(green);
    rgb.blue = static_cast<BYTE>(blue);
    return true;
}

}  // namespace

template <class Parse>
HRESULT MCXMLReader::ParseAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name, Parse parse)
{
    HRESULT hr = RunGuarded([&]() -> HRESULT {
        _bstr_t text;
        HRESULT found = FindAttributeInNode(name, attributes, text);
        if (found != S_OK)
            return found;
        return parse(TextOf(text)) ? S_OK : S_FALSE;
    });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 _bstr_t& value)
{
    value = L"";
    HRESULT hr = RunGuarded([&]() -> HRESULT { return FindAttributeInNode(name, attributes, value); });
    MFailed(hr, L"", __LINE__);
    return hr;
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 CString& value)
{
    value.Empty();
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        value = text;
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 bool& value)
{
    // Only "1" is true; "true" and everything else is false.
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        value = wcscmp(text, L"1") == 0;
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 DWORD& value)
{
    value = 0;
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        unsigned int number = 0;
        if (AfxCrtSwscanf(text, L"%u", &number) != 1)
            return false;
        value = number;
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 BYTE& value)
{
    value = 0;
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        unsigned int number = 0;
        if (AfxCrtSwscanf(text, L"%u", &number) != 1 || !IsByte(number))
            return false;
        value = static_cast<BYTE>(number);
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 char& value)
{
    value = 0;
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        int number = 0;
        // 128 is accepted and wraps to -128: descriptions written against the
        // old range check depend on it.
        if (AfxCrtSwscanf(text, L"%d", &number) != 1 || number < -128 || number > 128)
            return false;
        value = static_cast<char>(static_cast<unsigned char>(number & 0xFF));
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 long& value)
{
    // long is int's size on Windows, on either build.
    int number = 0;
    HRESULT hr = CreatePropertyFromAttribute(attributes, name, number);
    value = number;
    return hr;
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 int& value)
{
    value = 0;
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        int number = 0;
        if (AfxCrtSwscanf(text, L"%d", &number) != 1)
            return false;
        value = number;
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 MCSkinRGB& value)
{
    return ParseAttribute(attributes, name, [&](const wchar_t* text) { return ScanRgb(text, value); });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 MCSkinARGB& value)
{
    // The text gives alpha last, in spite of the type's name.
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        unsigned int red = 0, green = 0, blue = 0, alpha = 0;
        if (AfxCrtSwscanf(text, L"%u,%u,%u,%u", &red, &green, &blue, &alpha) != 4 || !IsByte(red) ||
            !IsByte(green) || !IsByte(blue) || !IsByte(alpha))
            return false;
        value.red = static_cast<BYTE>(red);
        value.green = static_cast<BYTE>(green);
        value.blue = static_cast<BYTE>(blue);
        value.alpha = static_cast<BYTE>(alpha);
        return true;
    });
}

HRESULT MCXMLReader::CreatePropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                                 CRect& value)
{
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        int left = 0, top = 0, right = 0, bottom = 0;
        if (AfxCrtSwscanf(text, L"%i,%i,%i,%i", &left, &top, &right, &bottom) != 4)
            return false;
        value.SetRect(left, top, right, bottom);
        return true;
    });
}

HRESULT MCXMLReader::CreateColorPropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes,
                                                      const _bstr_t& name, DWORD& colour)
{
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        MCSkinRGB rgb;
        if (!ScanRgb(text, rgb))
            return false;
        colour = RGB(rgb.red, rgb.green, rgb.blue);
        return true;
    });
}

HRESULT MCXMLReader::CreateRectExPropertyFromAttribute(const IXMLDOMNamedNodeMapPtr& attributes,
                                                       const _bstr_t& name, CRect& rect)
{
    return ParseAttribute(attributes, name, [&](const wchar_t* text) {
        int x = 0, y = 0, width = 0, height = 0;
        if (AfxCrtSwscanf(text, L"%i,%i,%i,%i", &x, &y, &width, &height) != 4)
            return false;
        // Sums wrap like the 32-bit arithmetic they stand for, never trap.
        rect.SetRect(x, y, static_cast<int>(static_cast<unsigned int>(x) + static_cast<unsigned int>(width)),
                     static_cast<int>(static_cast<unsigned int>(y) + static_cast<unsigned int>(height)));
        return true;
    });
}
