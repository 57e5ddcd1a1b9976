// MCEvtSinkAdvisor: base of objects that receive COM events. A derived class
// declares its event methods in a dispatch map; the advisor connects the object
// to a source's connection point and disconnects it, at the latest on destruction.
#pragma once
#include <afxdisp.h>
#include <ocidl.h>
#include "TesvorUtilExport.h"

class TESVORUTIL_API MCEvtSinkAdvisor : public CCmdTarget {
public:
    MCEvtSinkAdvisor();
    ~MCEvtSinkAdvisor() override;

    // Connects to the source's connection point for eventInterface. E_FAIL when
    // already connected; otherwise the first failure of the steps, as it is.
    HRESULT Advise(IUnknown* source, const GUID* eventInterface);
    // S_OK when not connected; E_FAIL (still connected) when the source refuses.
    HRESULT Unadvise();
    int IsAdvised() { return m_pConnPoint != NULL; }

    IConnectionPoint* m_pConnPoint;
    DWORD m_dwCookie;
};
