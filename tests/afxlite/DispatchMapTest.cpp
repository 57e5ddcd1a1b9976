#include <gtest/gtest.h>
#include <afxdisp.h>
#include <ocidl.h>
#include <string>
#include <vector>
#include "TestSupport.h"
#include "frame/Owners.h"

namespace {

enum : DISPID { kNumber = 1, kFlag, kText, kObject, kAll, kNothing, kCount, kThrow };
IDispatch* g_other;  // an object the tests pass around

class CEventTarget : public CCmdTarget {
public:
    CEventTarget() { EnableAutomation(); }
    ~CEventTarget() override
    {
        if (destroyed != nullptr)
            *destroyed = true;
    }
    // "number flag text object calls" (object: null, other, or set).
    std::wstring State() const
    {
        CString state;
        state.Format(L"%ld %d %s %s %d", number, flag, text.GetString(),
                     object == g_other ? L"other" : object ? L"set" : L"null", nothingCalls);
        return state.GetString();
    }

    long number = 0;
    BOOL flag = -1;
    CString text = L"''";
    IDispatch* object = nullptr;
    int nothingCalls = 0;
    long louder = 0;
    bool* destroyed = nullptr;

private:
    void OnNumber(long value) { number = value; }
    void OnFlag(BOOL value) { flag = value; }
    void OnText(LPCTSTR value) { text = value; }
    void OnObject(LPDISPATCH value) { object = value; }
    void OnAll(long n, BOOL b, BSTR s, LPDISPATCH p)
    {
        OnNumber(n);
        OnFlag(b);
        OnText(s);
        OnObject(p);
    }
    void OnNothing() { nothingCalls++; }
    long GetCount() { return nothingCalls; }
    void OnThrow() { AfxThrowNotSupportedException(); }
    DECLARE_DISPATCH_MAP()
};

BEGIN_DISPATCH_MAP(CEventTarget, CCmdTarget)
    DISP_FUNCTION_ID(CEventTarget, "Number", kNumber, OnNumber, VT_EMPTY, VTS_I4)
    DISP_FUNCTION_ID(CEventTarget, "Flag", kFlag, OnFlag, VT_EMPTY, VTS_BOOL)
    DISP_FUNCTION_ID(CEventTarget, "Text", kText, OnText, VT_EMPTY, VTS_BSTR)
    DISP_FUNCTION_ID(CEventTarget, "Object", kObject, OnObject, VT_EMPTY, VTS_DISPATCH)
    DISP_FUNCTION_ID(CEventTarget, "All", kAll, OnAll, VT_EMPTY, VTS_I4 VTS_BOOL VTS_BSTR VTS_DISPATCH)
    DISP_FUNCTION_ID(CEventTarget, "Nothing", kNothing, OnNothing, VT_EMPTY, VTS_NONE)
    DISP_FUNCTION_ID(CEventTarget, "Count", kCount, GetCount, VT_I4, VTS_NONE)
    DISP_FUNCTION_ID(CEventTarget, "Throw", kThrow, OnThrow, VT_EMPTY, VTS_NONE)
END_DISPATCH_MAP()

// A derived map takes over one DISPID and keeps the rest of its base's map.
class CLoudTarget : public CEventTarget {
    void OnNumber(long value) { louder = value * 10; }
    DECLARE_DISPATCH_MAP()
};

BEGIN_DISPATCH_MAP(CLoudTarget, CEventTarget)
    DISP_FUNCTION_ID(CLoudTarget, "Number", kNumber, OnNumber, VT_EMPTY, VTS_I4)
END_DISPATCH_MAP()

VARIANT Variant(VARTYPE type, LONGLONG value)
{
    VARIANT v;
    v.vt = type;
    v.llVal = value;
    return v;
}

// A string argument; the strings are kept until the program ends.
VARIANT Text(const wchar_t* text)
{
    static std::vector<UniqueAny<BSTR, ::SysFreeString>> texts;
    texts.emplace_back(::SysAllocString(text));
    return Variant(VT_BSTR, reinterpret_cast<LONG_PTR>(texts.back().get()));
}

// Invokes a member with the arguments given in their natural order.
HRESULT Call(IDispatch* dispatch, DISPID id, const std::vector<VARIANT>& args, WORD flags = DISPATCH_METHOD,
             VARIANT* result = nullptr, UINT* argErr = nullptr, EXCEPINFO* excep = nullptr)
{
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPPARAMS params = {reversed.empty() ? nullptr : reversed.data(), nullptr, UINT(reversed.size()), 0};
    return dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, excep, argErr);
}

}  // namespace

TEST(DispatchMapTest, CallsReachTheMapMethodsWithConvertedArguments)
{
    CEventTarget other;
    long byRefValue = 99;
    g_other = other.GetIDispatch(FALSE);
    const VARIANT byRef = Variant(VT_BYREF | VT_I4, reinterpret_cast<LONG_PTR>(&byRefValue)),
                  empty = Variant(VT_EMPTY, 0), nullObject = Variant(VT_DISPATCH, 0),
                  otherObject = Variant(VT_DISPATCH, reinterpret_cast<LONG_PTR>(g_other));
    const struct {
        DISPID id;
        std::vector<VARIANT> args;
        HRESULT result;
        std::wstring state;
    } cases[] = {
        {kText, {Text(L"h\x00E9llo")}, S_OK, L"0 -1 h\x00E9llo null 0"},
        {kObject, {otherObject}, S_OK, L"0 -1 '' other 0"},
        {kAll, {Variant(VT_I4, 3), Variant(VT_BOOL, VARIANT_FALSE), Text(L"three"), nullObject}, S_OK,
         L"3 0 three null 0"},
        // Arguments are converted to the declared types.
        {kNumber, {Text(L"42")}, S_OK, L"42 -1 '' null 0"},
        {kNumber, {byRef}, S_OK, L"99 -1 '' null 0"},
        {kNumber, {Variant(VT_BOOL, VARIANT_TRUE)}, S_OK, L"-1 -1 '' null 0"},
        {kFlag, {Variant(VT_I4, 5)}, S_OK, L"0 1 '' null 0"},
        {kFlag, {Variant(VT_I4, 0)}, S_OK, L"0 0 '' null 0"},
        {kText, {Variant(VT_I4, 7)}, S_OK, L"0 -1 7 null 0"},
        {kText, {empty}, S_OK, L"0 -1  null 0"},
        // Bad calls are refused with their dispatch errors, and nothing is called.
        {99, {}, DISP_E_MEMBERNOTFOUND, L"0 -1 '' null 0"},
        {kNumber, {}, DISP_E_BADPARAMCOUNT, L"0 -1 '' null 0"},
        {kNothing, {Variant(VT_I4, 1)}, DISP_E_BADPARAMCOUNT, L"0 -1 '' null 0"},
        {kAll, {Variant(VT_I4, 1), Text(L"maybe"), Text(L"x"), nullObject}, DISP_E_TYPEMISMATCH, L"0 -1 '' null 0"},
    };
    for (const auto& c : cases) {
        CEventTarget target;
        UINT argErr = 1000;
        EXPECT_EQ(c.result, Call(target.GetIDispatch(FALSE), c.id, c.args, DISPATCH_METHOD, nullptr, &argErr))
            << "member " << c.id << ", first argument type " << (c.args.empty() ? 0 : c.args[0].vt);
        EXPECT_EQ(c.state, target.State()) << "member " << c.id;
        if (c.result == DISP_E_TYPEMISMATCH) {
            EXPECT_EQ(2u, argErr) << "the second argument, counted from the last";
        }
    }
    EXPECT_EQ(1, other.m_dwRef) << "the converted copy was released after the call";

    // A result, a thrown framework exception, named arguments, a property get, another
    // interface: only methods are called, without names, through IID_NULL.
    CEventTarget target;
    IDispatch* dispatch = target.GetIDispatch(FALSE);
    VARIANT count, arg = Variant(VT_I4, 1);
    EXCEPINFO excep = {};
    DISPID named = 0;
    DISPPARAMS namedParams = {&arg, &named, 1, 1}, params = {&arg, nullptr, 1, 0};
    EXPECT_EQ((Values{S_OK, S_OK, VT_I4, 1, DISP_E_EXCEPTION, E_FAIL, DISP_E_NONAMEDARGS, DISP_E_MEMBERNOTFOUND,
                      DISP_E_UNKNOWNINTERFACE, S_OK, 1}),
              (Values{Call(dispatch, kNothing, {}), Call(dispatch, kCount, {}, DISPATCH_METHOD, &count), count.vt,
                      count.lVal, Call(dispatch, kThrow, {}, DISPATCH_METHOD, nullptr, nullptr, &excep), excep.scode,
                      dispatch->Invoke(kNumber, IID_NULL, 0, DISPATCH_METHOD, &namedParams, 0, 0, 0),
                      Call(dispatch, kNumber, {arg}, DISPATCH_PROPERTYGET),
                      dispatch->Invoke(kNumber, IID_IDispatch, 0, DISPATCH_METHOD, &params, 0, 0, 0),
                      Call(dispatch, kNumber, {arg}, DISPATCH_METHOD | DISPATCH_PROPERTYGET), target.number}));
    UniqueAny<BSTR, ::SysFreeString> description(excep.bstrDescription);
    EXPECT_TRUE(description);
}

TEST(DispatchMapTest, NamesDerivedMapsAndReferenceCounts)
{
    // Names are found without regard to case, parameter names not at all (the member's
    // identifier is given all the same); the derived map's entry replaces its base's.
    CLoudTarget loud;
    IDispatch* dispatch = loud.GetIDispatch(FALSE);
    ASSERT_NE(nullptr, dispatch);
    wchar_t count[] = L"cOUNT", unknown[] = L"NoSuchEvent";
    LPOLESTR names[] = {count}, unknownNames[] = {unknown}, withParameter[] = {count, unknown};
    DISPID ids[4] = {};
    EXPECT_EQ((Values{S_OK, kCount, DISP_E_UNKNOWNNAME, DISPID_UNKNOWN, DISP_E_UNKNOWNNAME, kCount, DISPID_UNKNOWN}),
              (Values{dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &ids[0]), ids[0],
                      dispatch->GetIDsOfNames(IID_NULL, unknownNames, 1, 0, &ids[1]), ids[1],
                      dispatch->GetIDsOfNames(IID_NULL, withParameter, 2, 0, &ids[2]), ids[2], ids[3]}));
    EXPECT_EQ((Values{S_OK, S_OK, 40}), (Values{Call(dispatch, kNumber, {Variant(VT_I4, 4)}),
                                               Call(dispatch, kFlag, {Variant(VT_BOOL, VARIANT_TRUE)}), loud.louder}));
    EXPECT_EQ(L"0 1 '' null 0", loud.State());

    // Without automation there is no COM object; with it, a counted one that is its own identity.
    CCmdTarget plain;
    EXPECT_TRUE(plain.GetIDispatch(FALSE) == nullptr && plain.GetInterface(&IID_IUnknown) == nullptr);
    bool destroyed = false;
    CEventTarget* target = new CEventTarget;
    target->destroyed = &destroyed;
    dispatch = target->GetIDispatch(TRUE);
    IUnknown* unknownInterface = nullptr;
    IConnectionPoint* wrong = nullptr;
    UINT typeInfos = 5;
    EXPECT_EQ((Values{2, S_OK, 1, 1, 3, E_NOINTERFACE, 0, S_OK, 0}),
              (Values{target->m_dwRef,
                      dispatch->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknownInterface)),
                      unknownInterface == dispatch, target->GetInterface(&IID_IUnknown) == dispatch, target->m_dwRef,
                      dispatch->QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(&wrong)),
                      wrong != nullptr, dispatch->GetTypeInfoCount(&typeInfos), typeInfos}));
    unknownInterface->Release();
    dispatch->Release();
    EXPECT_FALSE(destroyed);
    target->ExternalRelease();  // the creator's reference: the last one
    EXPECT_TRUE(destroyed);
}
