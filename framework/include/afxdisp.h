// afxlite: dispatch maps. A class derived from CCmdTarget lists the members that
// its IDispatch reaches by DISPID:
//
//   class CSink : public CCmdTarget {
//       void OnChanged(long nCode, LPCTSTR lpszText);
//       DECLARE_DISPATCH_MAP()
//   };
//   BEGIN_DISPATCH_MAP(CSink, CCmdTarget)
//       DISP_FUNCTION_ID(CSink, "Changed", 1, OnChanged, VT_EMPTY, VTS_I4 VTS_BSTR)
//   END_DISPATCH_MAP()
//
// Invoke converts each argument to the type its VTS_ code names (VariantChangeType)
// and calls the member through a thunk that the compiler generates for the
// member's own signature, so no calling convention is emulated by hand. The
// parameter string must list as many types as the member has parameters; a
// mismatch does not compile.
#pragma once
#include "afxwin.h"
#include <oleauto.h>
#include <type_traits>
#include <utility>

// Parameter type codes: one character per parameter, the VARTYPE it is converted to.
#define VTS_NONE ""
#define VTS_I2 "\x02"
#define VTS_I4 "\x03"
#define VTS_R4 "\x04"
#define VTS_R8 "\x05"
#define VTS_CY "\x06"
#define VTS_DATE "\x07"
#define VTS_BSTR "\x08"
#define VTS_WBSTR VTS_BSTR
#define VTS_DISPATCH "\x09"
#define VTS_SCODE "\x0A"
#define VTS_BOOL "\x0B"
#define VTS_VARIANT "\x0C"
#define VTS_UNKNOWN "\x0D"
#define VTS_UI1 "\x11"

// Calls one member with the arguments already converted to their declared types
// (in declaration order); stores a non-void result into pResult when given.
typedef void (*AFX_DISPATCH_THUNK)(CCmdTarget* pTarget, VARIANT* pArgs, VARIANT* pResult);

struct AFX_DISPMAP_ENTRY {
    LPCTSTR lpszName;        // external name (GetIDsOfNames); null ends the map
    long lDispID;
    LPCSTR lpszParams;       // VTS_ codes
    VARTYPE vt;              // return type, VT_EMPTY for none
    AFX_DISPATCH_THUNK pfnInvoke;
};

struct AFX_DISPMAP {
    const AFX_DISPMAP* (__stdcall* pfnGetBaseMap)();
    const AFX_DISPMAP_ENTRY* lpEntries;
};

// Reading a converted argument as the member's parameter type. The VARIANT
// already holds the VARTYPE of the declared code, so each type reads one field;
// integral parameters accept every integral code (BOOL is an int in C++ but
// arrives as VT_BOOL).
namespace AfxDispatch {

inline long IntegerOf(const VARIANT& v)
{
    switch (v.vt) {
    case VT_BOOL: return v.boolVal != VARIANT_FALSE ? TRUE : FALSE;
    case VT_I2: return v.iVal;
    case VT_UI1: return v.bVal;
    case VT_ERROR: return v.scode;
    default: return v.lVal;
    }
}

template <class T, class = void> struct Arg;
template <class T> struct Arg<T, std::enable_if_t<std::is_integral_v<T>>> {
    static T Get(VARIANT& v) { return static_cast<T>(IntegerOf(v)); }
};
template <class T> struct Arg<T, std::enable_if_t<std::is_floating_point_v<T>>> {
    static T Get(VARIANT& v) { return static_cast<T>(v.vt == VT_R4 ? v.fltVal : v.dblVal); }
};
template <> struct Arg<BSTR> { static BSTR Get(VARIANT& v) { return v.bstrVal; } };
template <> struct Arg<LPCOLESTR> { static LPCOLESTR Get(VARIANT& v) { return v.bstrVal; } };
template <> struct Arg<IDispatch*> { static IDispatch* Get(VARIANT& v) { return v.pdispVal; } };
template <> struct Arg<IUnknown*> { static IUnknown* Get(VARIANT& v) { return v.punkVal; } };
template <> struct Arg<CY> { static CY Get(VARIANT& v) { return v.cyVal; } };
template <> struct Arg<VARIANT*> { static VARIANT* Get(VARIANT& v) { return &v; } };
template <> struct Arg<const VARIANT*> { static const VARIANT* Get(VARIANT& v) { return &v; } };
template <> struct Arg<const VARIANT&> { static const VARIANT& Get(VARIANT& v) { return v; } };

// Storing a member's result as the declared return type.
template <VARTYPE vt, class R> void SetResult(VARIANT* pResult, R value)
{
    if (pResult == NULL)
        return;
    if constexpr (vt == VT_BSTR) {
        static_assert(std::is_same_v<R, BSTR>, "a VT_BSTR member returns a BSTR it gives away");
        pResult->vt = VT_BSTR;
        pResult->bstrVal = value;
    } else if constexpr (vt == VT_BOOL) {
        pResult->vt = VT_BOOL;
        pResult->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    } else {
        static_assert(vt == VT_I4 || vt == VT_I2 || vt == VT_ERROR,
                      "supported return types: VT_EMPTY, VT_I2, VT_I4, VT_ERROR, VT_BOOL, VT_BSTR");
        static_assert(std::is_integral_v<R>, "an integral return type is declared");
        pResult->vt = vt;
        if constexpr (vt == VT_I2)
            pResult->iVal = static_cast<SHORT>(value);
        else
            pResult->lVal = static_cast<LONG>(value);
    }
}

template <auto pfn, size_t nParams, VARTYPE vtResult> struct Thunk;
template <class C, class R, class... A, R (C::*pfn)(A...), size_t nParams, VARTYPE vtResult>
struct Thunk<pfn, nParams, vtResult> {
    static_assert(sizeof...(A) == nParams, "the VTS_ string does not match the member's parameters");
    static_assert(std::is_void_v<R> == (vtResult == VT_EMPTY),
                  "VT_EMPTY is the return type of a void member, and only of it");

    static void Invoke(CCmdTarget* pTarget, VARIANT* pArgs, VARIANT* pResult)
    {
        Call(static_cast<C*>(pTarget), pArgs, pResult, std::index_sequence_for<A...>{});
    }

private:
    template <size_t... I>
    static void Call(C* pObject, [[maybe_unused]] VARIANT* pArgs, [[maybe_unused]] VARIANT* pResult,
                     std::index_sequence<I...>)
    {
        if constexpr (std::is_void_v<R>)
            (pObject->*pfn)(Arg<A>::Get(pArgs[I])...);
        else
            SetResult<vtResult, R>(pResult, (pObject->*pfn)(Arg<A>::Get(pArgs[I])...));
    }
};

}  // namespace AfxDispatch

#define DECLARE_DISPATCH_MAP()                                       \
private:                                                             \
    static const AFX_DISPMAP_ENTRY _dispatchEntries[];               \
protected:                                                           \
    static const AFX_DISPMAP dispatchMap;                            \
    [[maybe_unused]] static const AFX_DISPMAP* __stdcall GetThisDispatchMap(); \
    const AFX_DISPMAP* GetDispatchMap() const override;

#define BEGIN_DISPATCH_MAP(theClass, baseClass)                                              \
    const AFX_DISPMAP* __stdcall theClass::GetThisDispatchMap() { return &theClass::dispatchMap; } \
    const AFX_DISPMAP* theClass::GetDispatchMap() const { return &theClass::dispatchMap; }   \
    const AFX_DISPMAP theClass::dispatchMap = {&baseClass::GetThisDispatchMap,               \
                                               &theClass::_dispatchEntries[0]};              \
    const AFX_DISPMAP_ENTRY theClass::_dispatchEntries[] = {

#define DISP_FUNCTION_ID(theClass, szExternalName, dispid, pfnMember, vtRetVal, vtsParams)      \
    {_T(szExternalName), (dispid), vtsParams, (VARTYPE)(vtRetVal),                              \
     &AfxDispatch::Thunk<&theClass::pfnMember, sizeof(vtsParams) - 1, (VARTYPE)(vtRetVal)>::Invoke},

#define END_DISPATCH_MAP()              \
    {NULL, DISPID_UNKNOWN, NULL, VT_EMPTY, NULL} \
    };
