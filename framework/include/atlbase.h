// afxlite: the part of ATL's atlbase.h that the library uses: CComPtr and
// CComQIPtr, counted references to COM interfaces.
#pragma once
#include "afxlite_config.h"
#include <objbase.h>
#include <unknwn.h>
#include <memory>

namespace ATL {

// Owns one reference to a T; copies AddRef, assignment releases the old pointer.
template <class T>
class CComPtr {
public:
    CComPtr() noexcept : p(NULL) {}
    CComPtr(T* lp) noexcept : p(lp)
    {
        if (p != NULL)
            p->AddRef();
    }
    CComPtr(const CComPtr& lp) noexcept : CComPtr(lp.p) {}
    CComPtr(CComPtr&& lp) noexcept : p(lp.p) { lp.p = NULL; }
    ~CComPtr() { Release(); }

    T* operator=(T* lp) noexcept
    {
        if (p != lp) {
            if (lp != NULL)
                lp->AddRef();
            T* pOld = p;
            p = lp;
            if (pOld != NULL)
                pOld->Release();
        }
        return p;
    }
    T* operator=(const CComPtr& lp) noexcept { return *this = lp.p; }
    T* operator=(CComPtr&& lp) noexcept
    {
        if (this != std::addressof(lp)) {
            Release();
            p = lp.p;
            lp.p = NULL;
        }
        return p;
    }

    operator T*() const noexcept { return p; }
    T& operator*() const { return *p; }
    T* operator->() const noexcept { return p; }
    // For out-parameters: the pointer must be empty, as ATL asserts.
    T** operator&() noexcept { return &p; }
    bool operator!() const noexcept { return p == NULL; }
    bool operator==(T* pT) const noexcept { return p == pT; }
    bool operator!=(T* pT) const noexcept { return p != pT; }

    void Release() noexcept
    {
        T* pTemp = p;
        if (pTemp != NULL) {
            p = NULL;
            pTemp->Release();
        }
    }
    void Attach(T* p2) noexcept
    {
        if (p != NULL)
            p->Release();
        p = p2;
    }
    T* Detach() noexcept
    {
        T* pt = p;
        p = NULL;
        return pt;
    }
    HRESULT CopyTo(T** ppT) const noexcept
    {
        if (ppT == NULL)
            return E_POINTER;
        *ppT = p;
        if (p != NULL)
            p->AddRef();
        return S_OK;
    }
    template <class Q>
    HRESULT QueryInterface(Q** pp) const noexcept
    {
        return p->QueryInterface(__uuidof(Q), reinterpret_cast<void**>(pp));
    }
    HRESULT CoCreateInstance(REFCLSID rclsid, LPUNKNOWN pUnkOuter = NULL, DWORD dwClsContext = CLSCTX_ALL) noexcept
    {
        return ::CoCreateInstance(rclsid, pUnkOuter, dwClsContext, __uuidof(T), reinterpret_cast<void**>(&p));
    }

    T* p;
};

// A CComPtr that queries for its interface when given a pointer of another type.
template <class T, const IID* piid = &__uuidof(T)>
class CComQIPtr : public CComPtr<T> {
public:
    CComQIPtr() noexcept {}
    CComQIPtr(T* lp) noexcept : CComPtr<T>(lp) {}
    CComQIPtr(const CComQIPtr& lp) noexcept : CComPtr<T>(lp.p) {}
    CComQIPtr(IUnknown* lp) noexcept
    {
        if (lp != NULL && lp->QueryInterface(*piid, reinterpret_cast<void**>(&this->p)) != S_OK)
            this->p = NULL;
    }
    T* operator=(T* lp) noexcept { return CComPtr<T>::operator=(lp); }
    T* operator=(const CComQIPtr& lp) noexcept { return CComPtr<T>::operator=(lp.p); }
    T* operator=(IUnknown* lp) noexcept
    {
        T* pNew = NULL;
        if (lp != NULL && lp->QueryInterface(*piid, reinterpret_cast<void**>(&pNew)) != S_OK)
            pNew = NULL;
        this->Release();
        this->p = pNew;
        return this->p;
    }
};

// IUnknown itself needs no query.
template <>
class CComQIPtr<IUnknown, &IID_IUnknown> : public CComPtr<IUnknown> {
public:
    CComQIPtr() noexcept {}
    CComQIPtr(IUnknown* lp) noexcept : CComPtr<IUnknown>(lp) {}
    CComQIPtr(const CComQIPtr& lp) noexcept : CComPtr<IUnknown>(lp.p) {}
    IUnknown* operator=(IUnknown* lp) noexcept { return CComPtr<IUnknown>::operator=(lp); }
    IUnknown* operator=(const CComQIPtr& lp) noexcept { return CComPtr<IUnknown>::operator=(lp.p); }
};

}  // namespace ATL

#ifndef _ATL_NO_AUTOMATIC_NAMESPACE
using namespace ATL;
#endif
