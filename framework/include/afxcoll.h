// afxlite: the framework's non-template collections.
#pragma once
#include "afxtempl.h"

class CStringArray : public CArray<CString, const CString&> {
public:
    INT_PTR Add(const CString& str) { return CArray<CString, const CString&>::Add(str); }
    INT_PTR Add(const wchar_t* psz) { return CArray<CString, const CString&>::Add(CString(psz)); }
};
