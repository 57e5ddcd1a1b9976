// CCmdTarget as a COM object: reference counting, interfaces and the IDispatch
// that reaches a class's dispatch map.
#include <afxdisp.h>
#include <cstring>

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_DISPMAP_ENTRY CCmdTarget::_dispatchEntries[] = {{NULL, DISPID_UNKNOWN, NULL, VT_EMPTY, NULL}};
const AFX_DISPMAP CCmdTarget::dispatchMap = {NULL, &CCmdTarget::_dispatchEntries[0]};
const AFX_DISPMAP* __stdcall CCmdTarget::GetThisDispatchMap() { return &CCmdTarget::dispatchMap; }
const AFX_DISPMAP* CCmdTarget::GetDispatchMap() const { return &CCmdTarget::dispatchMap; }

CCmdTarget::CCmdTarget() : m_dwRef(1), m_xDispatch(this), m_bAutomation(FALSE) {}
CCmdTarget::~CCmdTarget() {}

void CCmdTarget::EnableAutomation() { m_bAutomation = TRUE; }

LPDISPATCH CCmdTarget::GetIDispatch(BOOL bAddRef)
{
    if (!m_bAutomation)
        return NULL;
    if (bAddRef)
        ExternalAddRef();
    return &m_xDispatch;
}

LPUNKNOWN CCmdTarget::GetInterfaceHook(const void*) { return NULL; }

LPUNKNOWN CCmdTarget::GetInterface(const void* iid)
{
    if (iid == NULL)
        return NULL;
    if (LPUNKNOWN pUnk = GetInterfaceHook(iid))
        return pUnk;
    // Without interface maps the IDispatch is the object's only interface, and
    // therefore also its identity.
    const IID& riid = *static_cast<const IID*>(iid);
    if (m_bAutomation && (::IsEqualIID(riid, IID_IUnknown) || ::IsEqualIID(riid, IID_IDispatch)))
        return &m_xDispatch;
    return NULL;
}

DWORD CCmdTarget::InternalAddRef() { return static_cast<DWORD>(::InterlockedIncrement(&m_dwRef)); }

DWORD CCmdTarget::InternalRelease()
{
    LONG nRef = ::InterlockedDecrement(&m_dwRef);
    if (nRef == 0)
        OnFinalRelease();
    return static_cast<DWORD>(nRef);
}

DWORD CCmdTarget::InternalQueryInterface(const void* iid, LPVOID* ppvObj)
{
    if (ppvObj == NULL)
        return static_cast<DWORD>(E_POINTER);
    LPUNKNOWN pUnk = GetInterface(iid);
    *ppvObj = pUnk;
    if (pUnk == NULL)
        return static_cast<DWORD>(E_NOINTERFACE);
    ExternalAddRef();
    return S_OK;
}

DWORD CCmdTarget::ExternalAddRef() { return InternalAddRef(); }
DWORD CCmdTarget::ExternalRelease() { return InternalRelease(); }
DWORD CCmdTarget::ExternalQueryInterface(const void* iid, LPVOID* ppvObj)
{
    return InternalQueryInterface(iid, ppvObj);
}

void CCmdTarget::OnFinalRelease() { delete this; }

const AFX_DISPMAP_ENTRY* CCmdTarget::FindDispatchEntry(DISPID dispid) const
{
    // The most derived map first, so a class can take over a DISPID of its base.
    for (const AFX_DISPMAP* pMap = GetDispatchMap(); pMap != NULL;
         pMap = pMap->pfnGetBaseMap != NULL ? pMap->pfnGetBaseMap() : NULL) {
        for (const AFX_DISPMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->lpszName != NULL; pEntry++) {
            if (pEntry->lDispID == dispid)
                return pEntry;
        }
    }
    return NULL;
}

STDMETHODIMP CCmdTarget::XDispatch::QueryInterface(REFIID riid, void** ppvObject)
{
    return static_cast<HRESULT>(m_pThis->ExternalQueryInterface(&riid, ppvObject));
}

STDMETHODIMP_(ULONG) CCmdTarget::XDispatch::AddRef() { return m_pThis->ExternalAddRef(); }
STDMETHODIMP_(ULONG) CCmdTarget::XDispatch::Release() { return m_pThis->ExternalRelease(); }

STDMETHODIMP CCmdTarget::XDispatch::GetTypeInfoCount(UINT* pctinfo)
{
    if (pctinfo == NULL)
        return E_POINTER;
    *pctinfo = 0;
    return S_OK;
}

STDMETHODIMP CCmdTarget::XDispatch::GetTypeInfo(UINT, LCID, ITypeInfo** ppTInfo)
{
    if (ppTInfo != NULL)
        *ppTInfo = NULL;
    return E_NOTIMPL;
}

STDMETHODIMP CCmdTarget::XDispatch::GetIDsOfNames(REFIID riid, LPOLESTR* rgszNames, UINT cNames, LCID,
                                                  DISPID* rgDispId)
{
    if (!::IsEqualIID(riid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (cNames == 0 || rgszNames == NULL || rgDispId == NULL)
        return E_INVALIDARG;
    // Only member names are known; named parameters have no identifiers here.
    for (UINT i = 0; i < cNames; i++)
        rgDispId[i] = DISPID_UNKNOWN;
    for (const AFX_DISPMAP* pMap = m_pThis->GetDispatchMap(); pMap != NULL;
         pMap = pMap->pfnGetBaseMap != NULL ? pMap->pfnGetBaseMap() : NULL) {
        for (const AFX_DISPMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->lpszName != NULL; pEntry++) {
            if (rgszNames[0] != NULL && ::lstrcmpiW(pEntry->lpszName, rgszNames[0]) == 0) {
                rgDispId[0] = pEntry->lDispID;
                return cNames == 1 ? S_OK : DISP_E_UNKNOWNNAME;
            }
        }
    }
    return DISP_E_UNKNOWNNAME;
}

namespace {

// The converted arguments of one call, cleared whatever way the call ends.
class ConvertedArgs {
public:
    explicit ConvertedArgs(UINT nCount) : m_nCount(nCount)
    {
        for (UINT i = 0; i < nCount; i++)
            ::VariantInit(&m_args[i]);
    }
    ~ConvertedArgs()
    {
        for (UINT i = 0; i < m_nCount; i++)
            ::VariantClear(&m_args[i]);
    }
    ConvertedArgs(const ConvertedArgs&) = delete;
    ConvertedArgs& operator=(const ConvertedArgs&) = delete;

    static const UINT kMaxArgs = 32;
    VARIANT* Data() { return m_args; }
    VARIANT& operator[](UINT i) { return m_args[i]; }

private:
    UINT m_nCount;
    VARIANT m_args[kMaxArgs];
};

void FillException(EXCEPINFO* pExcepInfo, CException* pException)
{
    if (pExcepInfo == NULL)
        return;
    ::ZeroMemory(pExcepInfo, sizeof(*pExcepInfo));
    wchar_t text[512] = L"";
    pException->GetErrorMessage(text, _countof(text));
    pExcepInfo->bstrDescription = ::SysAllocString(text);
    pExcepInfo->scode = E_FAIL;
}

}  // namespace

STDMETHODIMP CCmdTarget::XDispatch::Invoke(DISPID dispIdMember, REFIID riid, LCID, WORD wFlags,
                                           DISPPARAMS* pDispParams, VARIANT* pVarResult,
                                           EXCEPINFO* pExcepInfo, UINT* puArgErr)
{
    if (!::IsEqualIID(riid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (pDispParams == NULL)
        return E_POINTER;
    if (pVarResult != NULL)
        ::VariantInit(pVarResult);

    // Dispatch maps here hold methods only.
    const AFX_DISPMAP_ENTRY* pEntry = m_pThis->FindDispatchEntry(dispIdMember);
    if (pEntry == NULL || (wFlags & DISPATCH_METHOD) == 0)
        return DISP_E_MEMBERNOTFOUND;
    if (pDispParams->cNamedArgs != 0)
        return DISP_E_NONAMEDARGS;
    UINT nParams = static_cast<UINT>(std::strlen(pEntry->lpszParams));
    if (pDispParams->cArgs != nParams || nParams > ConvertedArgs::kMaxArgs)
        return DISP_E_BADPARAMCOUNT;
    if (nParams != 0 && pDispParams->rgvarg == NULL)
        return E_POINTER;

    // rgvarg holds the arguments last to first.
    ConvertedArgs args(nParams);
    for (UINT i = 0; i < nParams; i++) {
        UINT nSource = nParams - 1 - i;
        VARTYPE vt = static_cast<VARTYPE>(static_cast<unsigned char>(pEntry->lpszParams[i]));
        HRESULT hr = vt == VT_VARIANT
                         ? ::VariantCopyInd(&args[i], &pDispParams->rgvarg[nSource])
                         : ::VariantChangeType(&args[i], &pDispParams->rgvarg[nSource], 0, vt);
        if (FAILED(hr)) {
            if (puArgErr != NULL)
                *puArgErr = nSource;
            return hr == E_OUTOFMEMORY ? hr : DISP_E_TYPEMISMATCH;
        }
    }

    // The object stays alive through the call even if the member releases it.
    m_pThis->InternalAddRef();
    HRESULT hr = S_OK;
    try {
        pEntry->pfnInvoke(m_pThis, args.Data(), pVarResult);
    } catch (CException* pException) {
        FillException(pExcepInfo, pException);
        pException->Delete();
        hr = DISP_E_EXCEPTION;
    }
    m_pThis->InternalRelease();
    return hr;
}
