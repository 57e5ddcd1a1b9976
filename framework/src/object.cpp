#include <afx.h>

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF, NULL, &CObject::_GetBaseClass};

CRuntimeClass* __stdcall CObject::_GetBaseClass() { return NULL; }
CRuntimeClass* __stdcall CObject::GetThisClass() { return _RUNTIME_CLASS(CObject); }
CRuntimeClass* CObject::GetRuntimeClass() const { return _RUNTIME_CLASS(CObject); }
CObject::~CObject() {}
void CObject::Serialize(CArchive&) {}
void CObject::AssertValid() const {}
void CObject::Dump(CDumpContext&) const {}

BOOL CObject::IsSerializable() const { return GetRuntimeClass()->m_wSchema != 0xFFFF; }

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

CObject* CRuntimeClass::CreateObject()
{
    return m_pfnCreateObject != NULL ? (*m_pfnCreateObject)() : NULL;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    for (const CRuntimeClass* pClass = this; pClass != NULL;
         pClass = pClass->m_pfnGetBaseClass ? (*pClass->m_pfnGetBaseClass)() : NULL) {
        if (pClass == pBaseClass)
            return TRUE;
    }
    return FALSE;
}

BOOL AFXAPI AfxIsValidString(LPCWSTR psz, int nLength)
{
    return psz != NULL && !::IsBadStringPtrW(psz, nLength == -1 ? static_cast<UINT_PTR>(-1) : static_cast<UINT_PTR>(nLength));
}

BOOL AFXAPI AfxIsValidString(LPCSTR psz, int nLength)
{
    return psz != NULL && !::IsBadStringPtrA(psz, nLength == -1 ? static_cast<UINT_PTR>(-1) : static_cast<UINT_PTR>(nLength));
}

BOOL AFXAPI AfxIsValidAddress(const void* p, UINT_PTR nBytes, BOOL bReadWrite)
{
    return p != NULL && !::IsBadReadPtr(p, nBytes) &&
           (!bReadWrite || !::IsBadWritePtr(const_cast<void*>(p), nBytes));
}
