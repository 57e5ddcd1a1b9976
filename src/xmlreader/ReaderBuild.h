// Shared by the record builders of the reader.
#pragma once
#include "MCXMLReader.h"
#include "MNUIName.h"
#include <initializer_list>

// Ends the enclosing builder with the result of the first conversion that fails.
#define READER_RETURN_IF_FAILED(expr)          \
    do {                                       \
        const HRESULT hrConversion_ = (expr);  \
        if (FAILED(hrConversion_))             \
            return hrConversion_;              \
    } while (0)

// A path of element names from the document element ("root/window/control"), as
// the node queries take it.
inline _bstr_t ElementPath(std::initializer_list<const wchar_t*> names)
{
    CString path;
    for (const wchar_t* name : names) {
        if (!path.IsEmpty())
            path += L'/';
        path += name;
    }
    return _bstr_t(static_cast<const wchar_t*>(path));
}

template <class Field>
HRESULT MCXMLReader::ResolveKeywordAttribute(const IXMLDOMNamedNodeMapPtr& attributes, const _bstr_t& name,
                                             HRESULT (MCXMLReader::*resolve)(const _bstr_t&, Field&), Field& field)
{
    _bstr_t keyword;
    const HRESULT found = CreatePropertyFromAttribute(attributes, name, keyword);
    if (found != S_OK)
        return found;
    return (this->*resolve)(keyword, field);
}
