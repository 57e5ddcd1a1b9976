// afxlite: CCmdTarget, the base of windows, applications and automation objects.
// With automation enabled the object is a COM object of its own: its IDispatch
// reaches the members named in the class's dispatch map (afxdisp.h).
#pragma once
#include "afx.h"
#include <ole2.h>

struct AFX_DISPMAP;
struct AFX_DISPMAP_ENTRY;

class AFXLITE_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget();
    ~CCmdTarget() override;

    // Turns on the object's IDispatch; call it from the derived constructor.
    void EnableAutomation();
    BOOL IsAutomationEnabled() const { return m_bAutomation; }
    // The object's IDispatch, or null when automation is not enabled.
    LPDISPATCH GetIDispatch(BOOL bAddRef);
    // The object's implementation of an interface, without a new reference.
    LPUNKNOWN GetInterface(const void* iid);

    // Reference counting and QueryInterface as COM clients see them. The count
    // starts at 1 (the creator's reference); reaching 0 calls OnFinalRelease.
    DWORD ExternalAddRef();
    DWORD ExternalRelease();
    DWORD ExternalQueryInterface(const void* iid, LPVOID* ppvObj);
    DWORD InternalAddRef();
    DWORD InternalRelease();
    DWORD InternalQueryInterface(const void* iid, LPVOID* ppvObj);

    // Called when the last reference goes; deletes the object.
    virtual void OnFinalRelease();

protected:
    // First chance to answer GetInterface, e.g. to give the IDispatch for an
    // event dispinterface; null lets the default rules decide.
    virtual LPUNKNOWN GetInterfaceHook(const void* iid);

    // The (empty) root of every dispatch map chain.
    static const AFX_DISPMAP_ENTRY _dispatchEntries[];
    static const AFX_DISPMAP dispatchMap;
    static const AFX_DISPMAP* __stdcall GetThisDispatchMap();
    virtual const AFX_DISPMAP* GetDispatchMap() const;

public:
    // The IDispatch the object hands out once automation is enabled.
    class AFXLITE_API XDispatch : public IDispatch {
    public:
        explicit XDispatch(CCmdTarget* pThis) : m_pThis(pThis) {}
        STDMETHOD(QueryInterface)(REFIID riid, void** ppvObject) override;
        STDMETHOD_(ULONG, AddRef)() override;
        STDMETHOD_(ULONG, Release)() override;
        STDMETHOD(GetTypeInfoCount)(UINT* pctinfo) override;
        STDMETHOD(GetTypeInfo)(UINT iTInfo, LCID lcid, ITypeInfo** ppTInfo) override;
        STDMETHOD(GetIDsOfNames)(REFIID riid, LPOLESTR* rgszNames, UINT cNames, LCID lcid,
                                 DISPID* rgDispId) override;
        STDMETHOD(Invoke)(DISPID dispIdMember, REFIID riid, LCID lcid, WORD wFlags,
                          DISPPARAMS* pDispParams, VARIANT* pVarResult, EXCEPINFO* pExcepInfo,
                          UINT* puArgErr) override;
    private:
        CCmdTarget* m_pThis;
    };

    LONG m_dwRef;
    XDispatch m_xDispatch;

private:
    BOOL m_bAutomation;
    const AFX_DISPMAP_ENTRY* FindDispatchEntry(DISPID dispid) const;
    friend class XDispatch;
};
