// MCVLRException: the exception the applications throw (by pointer, through
// MU_ThrowVLRException) and catch to report a failure with a text or a result.
#pragma once
#include <afx.h>
#include "TesvorUtilExport.h"

// GetErrorMessage and ReportError below hide CException's virtual functions of
// the same names on purpose: a catcher that knows only CException* gets the
// framework's generic text, one that knows MCVLRException* gets this class's.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif

class TESVORUTIL_API MCVLRException : public CException {
    DECLARE_DYNCREATE(MCVLRException)
public:
    explicit MCVLRException(UINT nID = 0);
    explicit MCVLRException(int nCode);  // the code is not kept
    explicit MCVLRException(HRESULT hr);
    explicit MCVLRException(const CString& strMessage);
    ~MCVLRException() override;

    // The message if there is one; else the (empty) COM text of a result other
    // than S_OK and S_FALSE; else the code in decimal; else empty.
    CString GetErrorMessage(bool bUnused = false);
    // Shows the message alone in a framework message box.
    void ReportError();

    int m_nCode;
    HRESULT m_hResult;
    UINT m_nID;  // the thrower's identifier, kept for the catcher only
    CString m_strMessage;

protected:
    void Init();
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
