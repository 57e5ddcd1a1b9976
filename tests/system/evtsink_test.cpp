#include <gtest/gtest.h>
#include <MCEvtSinkAdvisor.h>
#include <olectl.h>
#include <vector>

namespace {

// The event dispinterface of the test source.
const GUID DIID_TestEvents = {0x6b1f0c3e, 0x2f7a, 0x4c59, {0x9d, 0x41, 0x0e, 0x5a, 0x77, 0x21, 0x3c, 0x88}};
const DWORD kCookie = 0x1234;

enum : DISPID { kNumber = 1, kFlag, kText, kObject, kAll, kNothing, kCount, kThrow };

// A connection point for DIID_TestEvents that takes one sink, asking it for the
// dispinterface itself as ATL's sources do. It lives on the stack: counts are
// kept to be checked, not to free it.
class TestConnectionPoint : public IConnectionPoint {
public:
    explicit TestConnectionPoint(IConnectionPointContainer* container) : m_container(container) {}
    ~TestConnectionPoint()
    {
        if (m_sink != nullptr)
            m_sink->Release();
    }

    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        if (!::IsEqualIID(riid, IID_IUnknown) && !::IsEqualIID(riid, IID_IConnectionPoint)) {
            *ppv = nullptr;
            return E_NOINTERFACE;
        }
        *ppv = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs; }
    STDMETHODIMP_(ULONG) Release() override { return --refs; }
    STDMETHODIMP GetConnectionInterface(IID* piid) override
    {
        *piid = DIID_TestEvents;
        return S_OK;
    }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** ppCPC) override
    {
        *ppCPC = m_container;
        m_container->AddRef();
        return S_OK;
    }
    STDMETHODIMP Advise(IUnknown* pUnkSink, DWORD* pdwCookie) override
    {
        if (m_sink != nullptr)
            return CONNECT_E_ADVISELIMIT;
        if (FAILED(pUnkSink->QueryInterface(DIID_TestEvents, reinterpret_cast<void**>(&m_sink))))
            return CONNECT_E_CANNOTCONNECT;
        *pdwCookie = kCookie;
        return S_OK;
    }
    STDMETHODIMP Unadvise(DWORD dwCookie) override
    {
        unadviseCalls++;
        if (refuseUnadvise)
            return E_UNEXPECTED;
        if (m_sink == nullptr || dwCookie != kCookie)
            return CONNECT_E_NOCONNECTION;
        m_sink->Release();
        m_sink = nullptr;
        return S_OK;
    }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    // Calls the sink with the arguments in their natural order.
    HRESULT Fire(DISPID id, std::vector<VARIANT> args, VARIANT* result = nullptr, UINT* argErr = nullptr,
                 EXCEPINFO* excep = nullptr)
    {
        std::vector<VARIANT> reversed(args.rbegin(), args.rend());
        DISPPARAMS params = {reversed.empty() ? nullptr : reversed.data(), nullptr,
                             static_cast<UINT>(reversed.size()), 0};
        return m_sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, result, excep, argErr);
    }
    bool Connected() const { return m_sink != nullptr; }
    // Drops a sink that was destroyed while the source still held it.
    void Forget() { m_sink = nullptr; }

    ULONG refs = 0;
    int unadviseCalls = 0;
    bool refuseUnadvise = false;

private:
    IConnectionPointContainer* m_container;
    IDispatch* m_sink = nullptr;
};

class TestEventSource : public IConnectionPointContainer {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        if (!::IsEqualIID(riid, IID_IUnknown) && !::IsEqualIID(riid, IID_IConnectionPointContainer)) {
            *ppv = nullptr;
            return E_NOINTERFACE;
        }
        *ppv = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs; }
    STDMETHODIMP_(ULONG) Release() override { return --refs; }
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID riid, IConnectionPoint** ppCP) override
    {
        if (!::IsEqualIID(riid, DIID_TestEvents)) {
            *ppCP = nullptr;
            return CONNECT_E_NOCONNECTION;
        }
        *ppCP = &point;
        point.AddRef();
        return S_OK;
    }

    ULONG refs = 0;
    TestConnectionPoint point{this};
};

// An object with IUnknown only.
class PlainObject : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        *ppv = nullptr;
        if (!::IsEqualIID(riid, IID_IUnknown))
            return E_NOINTERFACE;
        *ppv = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
};

class TestSink : public MCEvtSinkAdvisor {
public:
    ~TestSink() override
    {
        if (destroyed != nullptr)
            *destroyed = true;
    }

    long number = 0;
    BOOL flag = -1;
    CString text;
    IDispatch* object = nullptr;
    int nothingCalls = 0;
    bool* destroyed = nullptr;

protected:
    LPUNKNOWN GetInterfaceHook(const void* iid) override
    {
        return ::IsEqualIID(*static_cast<const IID*>(iid), DIID_TestEvents) ? GetIDispatch(FALSE) : nullptr;
    }

private:
    void OnNumber(long value) { number = value; }
    void OnFlag(BOOL value) { flag = value; }
    void OnText(LPCTSTR value) { text = value; }
    void OnObject(LPDISPATCH value) { object = value; }
    void OnAll(long n, BOOL b, BSTR s, LPDISPATCH p)
    {
        number = n;
        flag = b;
        text = s;
        object = p;
    }
    void OnNothing() { nothingCalls++; }
    long GetCount() { return nothingCalls; }
    void OnThrow() { AfxThrowNotSupportedException(); }

    DECLARE_DISPATCH_MAP()
};

BEGIN_DISPATCH_MAP(TestSink, MCEvtSinkAdvisor)
    DISP_FUNCTION_ID(TestSink, "Number", kNumber, OnNumber, VT_EMPTY, VTS_I4)
    DISP_FUNCTION_ID(TestSink, "Flag", kFlag, OnFlag, VT_EMPTY, VTS_BOOL)
    DISP_FUNCTION_ID(TestSink, "Text", kText, OnText, VT_EMPTY, VTS_BSTR)
    DISP_FUNCTION_ID(TestSink, "Object", kObject, OnObject, VT_EMPTY, VTS_DISPATCH)
    DISP_FUNCTION_ID(TestSink, "All", kAll, OnAll, VT_EMPTY, VTS_I4 VTS_BOOL VTS_BSTR VTS_DISPATCH)
    DISP_FUNCTION_ID(TestSink, "Nothing", kNothing, OnNothing, VT_EMPTY, VTS_NONE)
    DISP_FUNCTION_ID(TestSink, "Count", kCount, GetCount, VT_I4, VTS_NONE)
    DISP_FUNCTION_ID(TestSink, "Throw", kThrow, OnThrow, VT_EMPTY, VTS_NONE)
END_DISPATCH_MAP()

// A derived sink takes over one DISPID and keeps the rest of its base's map.
class LoudSink : public TestSink {
public:
    long louder = 0;

private:
    void OnNumber(long value) { louder = value * 10; }
    DECLARE_DISPATCH_MAP()
};

BEGIN_DISPATCH_MAP(LoudSink, TestSink)
    DISP_FUNCTION_ID(LoudSink, "Number", kNumber, OnNumber, VT_EMPTY, VTS_I4)
END_DISPATCH_MAP()

VARIANT Long(long value)
{
    VARIANT v;
    v.vt = VT_I4;
    v.lVal = value;
    return v;
}

VARIANT Short(short value)
{
    VARIANT v;
    v.vt = VT_I2;
    v.iVal = value;
    return v;
}

VARIANT Bool(bool value)
{
    VARIANT v;
    v.vt = VT_BOOL;
    v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return v;
}

// The BSTR belongs to the test's BSTR pool and is freed with it.
class Strings {
public:
    ~Strings()
    {
        for (BSTR s : m_strings)
            ::SysFreeString(s);
    }
    VARIANT operator()(const wchar_t* text)
    {
        VARIANT v;
        v.vt = VT_BSTR;
        v.bstrVal = ::SysAllocString(text);
        m_strings.push_back(v.bstrVal);
        return v;
    }

private:
    std::vector<BSTR> m_strings;
};

VARIANT Dispatch(IDispatch* value)
{
    VARIANT v;
    v.vt = VT_DISPATCH;
    v.pdispVal = value;
    return v;
}

class EventSinkTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(S_OK, sink.Advise(&source, &DIID_TestEvents)); }
    void TearDown() override { sink.Unadvise(); }

    TestEventSource source;
    TestSink sink;
    Strings str;
};

TEST_F(EventSinkTest, EventsReachTheMapMethodsWithTheirArguments)
{
    EXPECT_NE(0, sink.IsAdvised());
    EXPECT_EQ(kCookie, sink.m_dwCookie);
    TestSink other;

    EXPECT_EQ(S_OK, source.point.Fire(kNumber, {Long(-17)}));
    EXPECT_EQ(-17, sink.number);
    EXPECT_EQ(S_OK, source.point.Fire(kFlag, {Bool(true)}));
    EXPECT_EQ(TRUE, sink.flag);
    EXPECT_EQ(S_OK, source.point.Fire(kText, {str(L"héllo")}));
    EXPECT_EQ(CString(L"héllo"), sink.text);
    EXPECT_EQ(S_OK, source.point.Fire(kObject, {Dispatch(other.GetIDispatch(FALSE))}));
    EXPECT_EQ(other.GetIDispatch(FALSE), sink.object);
    EXPECT_EQ(1, other.m_dwRef);  // the converted copy was released after the call

    EXPECT_EQ(S_OK, source.point.Fire(kAll, {Long(3), Bool(false), str(L"three"), Dispatch(nullptr)}));
    EXPECT_EQ(3, sink.number);
    EXPECT_EQ(FALSE, sink.flag);
    EXPECT_EQ(CString(L"three"), sink.text);
    EXPECT_EQ(nullptr, sink.object);

    EXPECT_EQ(S_OK, source.point.Fire(kNothing, {}));
    EXPECT_EQ(1, sink.nothingCalls);
    VARIANT count;
    EXPECT_EQ(S_OK, source.point.Fire(kCount, {}, &count));
    EXPECT_EQ(VT_I4, count.vt);
    EXPECT_EQ(1, count.lVal);
}

TEST_F(EventSinkTest, ArgumentsAreConvertedToTheDeclaredTypes)
{
    long byRefValue = 99;
    VARIANT byRef;
    byRef.vt = VT_BYREF | VT_I4;
    byRef.plVal = &byRefValue;

    EXPECT_EQ(S_OK, source.point.Fire(kNumber, {Short(7)}));
    EXPECT_EQ(7, sink.number);
    EXPECT_EQ(S_OK, source.point.Fire(kNumber, {str(L"42")}));
    EXPECT_EQ(42, sink.number);
    EXPECT_EQ(S_OK, source.point.Fire(kNumber, {byRef}));
    EXPECT_EQ(99, sink.number);
    EXPECT_EQ(S_OK, source.point.Fire(kNumber, {Bool(true)}));
    EXPECT_EQ(-1, sink.number);  // VARIANT_TRUE as a number

    EXPECT_EQ(S_OK, source.point.Fire(kFlag, {Long(5)}));
    EXPECT_EQ(TRUE, sink.flag);
    EXPECT_EQ(S_OK, source.point.Fire(kFlag, {Long(0)}));
    EXPECT_EQ(FALSE, sink.flag);

    EXPECT_EQ(S_OK, source.point.Fire(kText, {Long(7)}));
    EXPECT_EQ(CString(L"7"), sink.text);
    VARIANT empty;
    ::VariantInit(&empty);
    EXPECT_EQ(S_OK, source.point.Fire(kText, {empty}));
    EXPECT_EQ(CString(), sink.text);
}

TEST_F(EventSinkTest, BadCallsAreRefusedWithTheirDispatchErrors)
{
    IDispatch* dispatch = sink.GetIDispatch(FALSE);
    UINT argErr = 1000;
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, source.point.Fire(99, {}));
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, source.point.Fire(kNumber, {}));
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, source.point.Fire(kNothing, {Long(1)}));
    EXPECT_EQ(DISP_E_TYPEMISMATCH, source.point.Fire(kAll, {Long(1), str(L"maybe"), str(L"x"), Dispatch(nullptr)},
                                                     nullptr, &argErr));
    EXPECT_EQ(2u, argErr);  // the second argument, counted from the last
    EXPECT_EQ(0, sink.number);  // nothing was called

    EXCEPINFO excep = {};
    EXPECT_EQ(DISP_E_EXCEPTION, source.point.Fire(kThrow, {}, nullptr, nullptr, &excep));
    EXPECT_EQ(E_FAIL, excep.scode);
    EXPECT_NE(nullptr, excep.bstrDescription);
    ::SysFreeString(excep.bstrDescription);

    VARIANT arg = Long(1);
    DISPID named = 0;
    DISPPARAMS params = {&arg, &named, 1, 1};
    EXPECT_EQ(DISP_E_NONAMEDARGS, dispatch->Invoke(kNumber, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr));
    params = {&arg, nullptr, 1, 0};
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, dispatch->Invoke(kNumber, IID_NULL, 0, DISPATCH_PROPERTYGET, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(DISP_E_UNKNOWNINTERFACE, dispatch->Invoke(kNumber, IID_IDispatch, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(S_OK, dispatch->Invoke(kNumber, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(1, sink.number);
}

TEST(DispatchMap, NamesAndDerivedMaps)
{
    LoudSink sink;
    IDispatch* dispatch = sink.GetIDispatch(FALSE);
    ASSERT_NE(nullptr, dispatch);

    wchar_t name[] = L"cOUNT";
    LPOLESTR names[] = {name};
    DISPID id = 0;
    EXPECT_EQ(S_OK, dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &id));
    EXPECT_EQ(kCount, id);
    wchar_t unknown[] = L"NoSuchEvent";
    names[0] = unknown;
    EXPECT_EQ(DISP_E_UNKNOWNNAME, dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &id));
    EXPECT_EQ(DISPID_UNKNOWN, id);

    VARIANT arg = Long(4);
    DISPPARAMS params = {&arg, nullptr, 1, 0};
    EXPECT_EQ(S_OK, dispatch->Invoke(kNumber, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(40, sink.louder);
    EXPECT_EQ(0, sink.number);
    arg = Bool(true);
    EXPECT_EQ(S_OK, dispatch->Invoke(kFlag, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(TRUE, sink.flag);
}

TEST(DispatchMap, AutomationObjectIsACountedComObject)
{
    CCmdTarget plain;
    EXPECT_EQ(nullptr, plain.GetIDispatch(FALSE));
    EXPECT_EQ(nullptr, plain.GetInterface(&IID_IUnknown));

    bool destroyed = false;
    TestSink* sink = new TestSink;
    sink->destroyed = &destroyed;
    EXPECT_EQ(1, sink->m_dwRef);
    IDispatch* dispatch = sink->GetIDispatch(TRUE);
    EXPECT_EQ(2, sink->m_dwRef);
    EXPECT_EQ(static_cast<IUnknown*>(dispatch), sink->GetInterface(&IID_IUnknown));

    IUnknown* unknown = nullptr;
    EXPECT_EQ(S_OK, dispatch->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)));
    EXPECT_EQ(static_cast<IUnknown*>(dispatch), unknown);
    EXPECT_EQ(3, sink->m_dwRef);
    IConnectionPoint* wrong = nullptr;
    EXPECT_EQ(E_NOINTERFACE, dispatch->QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(&wrong)));
    EXPECT_EQ(nullptr, wrong);
    UINT typeInfos = 5;
    EXPECT_EQ(S_OK, dispatch->GetTypeInfoCount(&typeInfos));
    EXPECT_EQ(0u, typeInfos);

    unknown->Release();
    dispatch->Release();
    EXPECT_FALSE(destroyed);
    sink->ExternalRelease();  // the creator's reference: the last one
    EXPECT_TRUE(destroyed);
}

TEST(EventSinkAdvisor, AdviseAndUnadviseRules)
{
    TestEventSource source;
    TestSink sink;
    EXPECT_EQ(0, sink.IsAdvised());
    EXPECT_EQ(S_OK, sink.Unadvise());  // not connected
    EXPECT_EQ(0, source.point.unadviseCalls);

    ASSERT_EQ(S_OK, sink.Advise(&source, &DIID_TestEvents));
    EXPECT_EQ(2, sink.m_dwRef);  // the source holds the sink
    EXPECT_EQ(1u, source.point.refs);
    EXPECT_EQ(0u, source.refs);  // the container is not kept

    TestEventSource second;
    EXPECT_EQ(E_FAIL, sink.Advise(&second, &DIID_TestEvents));
    EXPECT_EQ(static_cast<IConnectionPoint*>(&source.point), sink.m_pConnPoint);
    EXPECT_EQ(kCookie, sink.m_dwCookie);
    EXPECT_FALSE(second.point.Connected());

    EXPECT_EQ(S_OK, sink.Unadvise());
    EXPECT_EQ(0, sink.IsAdvised());
    EXPECT_EQ(0u, sink.m_dwCookie);
    EXPECT_EQ(0u, source.point.refs);
    EXPECT_EQ(1, sink.m_dwRef);
    EXPECT_FALSE(source.point.Connected());
}

TEST(EventSinkAdvisor, FailedAdviseLeavesItUnconnected)
{
    PlainObject plain;
    TestSink sink;
    EXPECT_EQ(E_NOINTERFACE, sink.Advise(&plain, &DIID_TestEvents));
    EXPECT_EQ(0, sink.IsAdvised());

    TestEventSource source;
    EXPECT_EQ(CONNECT_E_NOCONNECTION, sink.Advise(&source, &IID_IDispatch));
    EXPECT_EQ(0, sink.IsAdvised());
    EXPECT_EQ(0u, source.refs);

    // An advisor that does not answer for the dispinterface is turned away.
    MCEvtSinkAdvisor deaf;
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, deaf.Advise(&source, &DIID_TestEvents));
    EXPECT_EQ(0, deaf.IsAdvised());
    EXPECT_EQ(0u, deaf.m_dwCookie);
    EXPECT_EQ(0u, source.point.refs);
    EXPECT_EQ(1, deaf.m_dwRef);

}

TEST(EventSinkAdvisor, DestructionUnadvises)
{
    TestEventSource source;
    TestSink* sink = new TestSink;
    ASSERT_EQ(S_OK, sink->Advise(&source, &DIID_TestEvents));
    delete sink;
    EXPECT_EQ(1, source.point.unadviseCalls);
    EXPECT_FALSE(source.point.Connected());
    EXPECT_EQ(0u, source.point.refs);
}

TEST(EventSinkAdvisor, RefusedUnadviseStaysConnectedUntilDestruction)
{
    TestEventSource source;
    TestSink* sink = new TestSink;
    ASSERT_EQ(S_OK, sink->Advise(&source, &DIID_TestEvents));
    source.point.refuseUnadvise = true;
    EXPECT_EQ(E_FAIL, sink->Unadvise());
    EXPECT_NE(0, sink->IsAdvised());
    EXPECT_EQ(kCookie, sink->m_dwCookie);

    delete sink;
    EXPECT_EQ(2, source.point.unadviseCalls);
    EXPECT_EQ(0u, source.point.refs);  // released anyway
    EXPECT_TRUE(source.point.Connected());
    source.point.Forget();
}

}  // namespace
