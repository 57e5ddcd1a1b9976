// MCStringArrayImpl: the library's growable array of strings, the framework's
// CArray with an append that refuses a corrupted (negative) size. The registry
// enumerations and the file search fill it, appending in the order found.
#pragma once
#include <afxtempl.h>

template <class TYPE, class ARG_TYPE>
class MCStringArrayImpl : public CArray<TYPE, ARG_TYPE> {
public:
    // Appends at the end and returns the new element's index; throws
    // CInvalidArgException when the array's size is negative.
    INT_PTR Add(ARG_TYPE newElement)
    {
        if (this->GetSize() < 0)
            AfxThrowInvalidArgException();
        return CArray<TYPE, ARG_TYPE>::Add(newElement);
    }
};
