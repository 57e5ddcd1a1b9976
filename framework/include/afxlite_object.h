// afxlite: CObject and run-time class information.
#pragma once
#include "afxlite_config.h"

class CObject;
class CArchive;
class CDumpContext;

struct AFXLITE_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;  // 0xFFFF for classes that cannot be serialised
    CObject* (__stdcall* m_pfnCreateObject)();
    CRuntimeClass* (__stdcall* m_pfnGetBaseClass)();

    CObject* CreateObject();
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
};

class AFXLITE_API CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = 0;

    virtual void Serialize(CArchive& ar);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;

    static const CRuntimeClass classCObject;
    static CRuntimeClass* __stdcall GetThisClass();
    static CRuntimeClass* __stdcall _GetBaseClass();

protected:
    CObject() {}

private:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
};

#define _RUNTIME_CLASS(class_name) ((CRuntimeClass*)(&class_name::class##class_name))
#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)                         \
public:                                                     \
    static const CRuntimeClass class##class_name;           \
    static CRuntimeClass* __stdcall _GetBaseClass();        \
    static CRuntimeClass* __stdcall GetThisClass();         \
    virtual CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* __stdcall CreateObject();

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)              \
    CRuntimeClass* __stdcall class_name::_GetBaseClass() { return RUNTIME_CLASS(base_class_name); } \
    const CRuntimeClass class_name::class##class_name = {                                 \
        #class_name, sizeof(class class_name), wSchema, pfnNew, &class_name::_GetBaseClass}; \
    CRuntimeClass* __stdcall class_name::GetThisClass() { return _RUNTIME_CLASS(class_name); } \
    CRuntimeClass* class_name::GetRuntimeClass() const { return _RUNTIME_CLASS(class_name); }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, NULL)

// The creation function returns null when the allocation fails, as the framework's does.
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                  \
    CObject* __stdcall class_name::CreateObject() { return new (std::nothrow) class_name; } \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)
