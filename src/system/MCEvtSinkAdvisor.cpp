#include "MCEvtSinkAdvisor.h"

MCEvtSinkAdvisor::MCEvtSinkAdvisor() : m_pConnPoint(NULL), m_dwCookie(0) { EnableAutomation(); }

MCEvtSinkAdvisor::~MCEvtSinkAdvisor()
{
    // A source that refuses to let go keeps its own reference to the sink; ours goes.
    if (m_pConnPoint != NULL && FAILED(Unadvise())) {
        m_pConnPoint->Release();
        m_pConnPoint = NULL;
    }
}

HRESULT MCEvtSinkAdvisor::Advise(IUnknown* source, const GUID* eventInterface)
{
    if (m_pConnPoint != NULL)
        return E_FAIL;
    IUnknown* pSelf = GetInterface(&IID_IUnknown);
    if (pSelf == NULL)
        return E_UNEXPECTED;
    if (source == NULL || eventInterface == NULL)
        return E_POINTER;
    pSelf->AddRef();

    IConnectionPointContainer* pContainer = NULL;
    HRESULT hr = source->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&pContainer));
    if (SUCCEEDED(hr) && pContainer == NULL)
        hr = E_UNEXPECTED;
    if (SUCCEEDED(hr)) {
        hr = pContainer->FindConnectionPoint(*eventInterface, &m_pConnPoint);
        if (SUCCEEDED(hr) && m_pConnPoint == NULL)
            hr = E_UNEXPECTED;
        if (FAILED(hr))
            m_pConnPoint = NULL;
    }
    if (SUCCEEDED(hr)) {
        hr = m_pConnPoint->Advise(pSelf, &m_dwCookie);
        if (FAILED(hr)) {
            m_pConnPoint->Release();
            m_pConnPoint = NULL;
            m_dwCookie = 0;
        }
    }

    if (pContainer != NULL)
        pContainer->Release();
    pSelf->Release();
    return hr;
}

HRESULT MCEvtSinkAdvisor::Unadvise()
{
    if (m_pConnPoint == NULL)
        return S_OK;
    if (FAILED(m_pConnPoint->Unadvise(m_dwCookie)))
        return E_FAIL;
    m_pConnPoint->Release();
    m_pConnPoint = NULL;
    m_dwCookie = 0;
    return S_OK;
}
