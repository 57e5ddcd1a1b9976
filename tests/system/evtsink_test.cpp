#include <gtest/gtest.h>
#include <MCEvtSinkAdvisor.h>
#include <olectl.h>
#include "TestSupport.h"

namespace {

// The event dispinterface of the test source.
const GUID DIID_TestEvents = {0x6b1f0c3e, 0x2f7a, 0x4c59, {0x9d, 0x41, 0x0e, 0x5a, 0x77, 0x21, 0x3c, 0x88}};
const DWORD kCookie = 0x1234;

// A COM object that answers for IUnknown and one more interface, counting references
// (it lives on the stack: counts are kept to be checked, not to free it).
template <class Interface>
class Counted : public Interface {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override
    {
        if (!::IsEqualIID(riid, IID_IUnknown) && !::IsEqualIID(riid, __uuidof(Interface))) {
            *ppv = nullptr;
            return E_NOINTERFACE;
        }
        *ppv = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs; }
    STDMETHODIMP_(ULONG) Release() override { return --refs; }
    ULONG refs = 0;
};

// The connection point for DIID_TestEvents: it takes one sink, asking it for the
// dispinterface itself as ATL's sources do.
class TestConnectionPoint : public Counted<IConnectionPoint> {
public:
    STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        if (m_sink != nullptr)
            return CONNECT_E_ADVISELIMIT;
        if (FAILED(sink->QueryInterface(DIID_TestEvents, reinterpret_cast<void**>(&m_sink))))
            return CONNECT_E_CANNOTCONNECT;
        *cookie = kCookie;
        return S_OK;
    }
    STDMETHODIMP Unadvise(DWORD cookie) override
    {
        unadviseCalls++;
        if (refuseUnadvise)
            return E_UNEXPECTED;
        if (m_sink == nullptr || cookie != kCookie)
            return CONNECT_E_NOCONNECTION;
        m_sink->Release();
        m_sink = nullptr;
        return S_OK;
    }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    int unadviseCalls = 0;
    bool refuseUnadvise = false;
    IDispatch* m_sink = nullptr;
};

class TestEventSource : public Counted<IConnectionPointContainer> {
public:
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID riid, IConnectionPoint** ppCP) override
    {
        *ppCP = nullptr;
        if (!::IsEqualIID(riid, DIID_TestEvents))
            return CONNECT_E_NOCONNECTION;
        *ppCP = &point;
        point.AddRef();
        return S_OK;
    }
    TestConnectionPoint point;
};

// Answers for the event dispinterface, as a derived advisor does.
class TestSink : public MCEvtSinkAdvisor {
public:
    long number = 0;

protected:
    LPUNKNOWN GetInterfaceHook(const void* iid) override
    {
        return ::IsEqualIID(*static_cast<const IID*>(iid), DIID_TestEvents) ? GetIDispatch(FALSE) : nullptr;
    }

private:
    void OnNumber(long value) { number = value; }
    DECLARE_DISPATCH_MAP()
};

BEGIN_DISPATCH_MAP(TestSink, MCEvtSinkAdvisor)
    DISP_FUNCTION_ID(TestSink, "Number", 1, OnNumber, VT_EMPTY, VTS_I4)
END_DISPATCH_MAP()

}  // namespace

TEST(EventSinkAdvisor, AdviseAndUnadviseRulesAndRefusals)
{
    TestEventSource source, second;
    TestSink sink;
    // Not connected: nothing to unadvise. A source without connection points or without this
    // one, and an advisor that does not answer for the dispinterface, are turned away.
    Counted<IUnknown> plain;
    MCEvtSinkAdvisor deaf;
    EXPECT_EQ((Values{0, S_OK, 0}), (Values{sink.IsAdvised(), sink.Unadvise(), source.point.unadviseCalls}));
    EXPECT_EQ((Values{E_NOINTERFACE, CONNECT_E_NOCONNECTION, CONNECT_E_CANNOTCONNECT}),
              (Values{sink.Advise(&plain, &DIID_TestEvents), sink.Advise(&source, &IID_IDispatch),
                      deaf.Advise(&source, &DIID_TestEvents)}));
    EXPECT_EQ((Values{0, 0, 0, 0, 0, 1}), (Values{sink.IsAdvised(), deaf.IsAdvised(), deaf.m_dwCookie, source.refs,
                                                  source.point.refs, deaf.m_dwRef}));

    // Connected, the source holds the sink and its point is held; the container is not kept.
    ASSERT_EQ(S_OK, sink.Advise(&source, &DIID_TestEvents));
    EXPECT_EQ((Values{1, kCookie, 2, 1, 0}),
              (Values{sink.IsAdvised(), sink.m_dwCookie, sink.m_dwRef, source.point.refs, source.refs}));
    // The source fires event 1 with one number.
    VARIANT number;
    number.vt = VT_I4;
    number.lVal = -17;
    DISPPARAMS params = {&number, nullptr, 1, 0};
    EXPECT_EQ(S_OK, source.point.m_sink->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                                                nullptr, nullptr));
    EXPECT_EQ(-17, sink.number);

    // While connected, another source is turned away.
    EXPECT_EQ(E_FAIL, sink.Advise(&second, &DIID_TestEvents));
    EXPECT_TRUE(sink.m_pConnPoint == &source.point && sink.m_dwCookie == kCookie && second.point.m_sink == nullptr);

    EXPECT_EQ(S_OK, sink.Unadvise());
    EXPECT_EQ((Values{0, 0, 0, 1}), (Values{sink.IsAdvised(), sink.m_dwCookie, source.point.refs, sink.m_dwRef}));
    EXPECT_EQ(nullptr, source.point.m_sink);
}

TEST(EventSinkAdvisor, DestructionUnadvisesOrAtLeastReleases)
{
    for (bool refuse : {false, true}) {
        TestEventSource source;
        TestSink* sink = new TestSink;
        ASSERT_EQ(S_OK, sink->Advise(&source, &DIID_TestEvents));
        source.point.refuseUnadvise = refuse;
        if (refuse) {
            EXPECT_EQ((Values{E_FAIL, 1, kCookie}), (Values{sink->Unadvise(), sink->IsAdvised(), sink->m_dwCookie}));
        }
        delete sink;
        // Released anyway; a refused sink stays registered at the source, which is then left
        // to drop it.
        EXPECT_EQ((Values{refuse ? 2 : 1, 0, refuse}),
                  (Values{source.point.unadviseCalls, source.point.refs, source.point.m_sink != nullptr}));
        source.point.m_sink = nullptr;
    }
}
