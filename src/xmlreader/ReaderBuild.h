// Shared by the record builders of the reader.
#pragma once
#include "MCXMLReader.h"

// Ends the enclosing builder with the result of the first conversion that fails.
#define READER_RETURN_IF_FAILED(expr)          \
    do {                                       \
        const HRESULT hrConversion_ = (expr);  \
        if (FAILED(hrConversion_))             \
            return hrConversion_;              \
    } while (0)

// Calls visit(node) for each node of the list in order and stops at the first
// failure. A list that cannot be read raises a COM error, as the DOM wrappers do.
template <class Visit>
HRESULT ForEachNode(const IXMLDOMNodeListPtr& nodes, Visit visit)
{
    long count = 0;
    HRESULT hr = nodes->get_length(&count);
    if (FAILED(hr))
        _com_issue_error(hr);
    for (long i = 0; i < count; ++i) {
        IXMLDOMNodePtr node;
        hr = nodes->get_item(i, &node);
        if (FAILED(hr))
            _com_issue_error(hr);
        hr = visit(node);
        if (FAILED(hr))
            return hr;
    }
    return S_OK;
}
