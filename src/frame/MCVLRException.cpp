#include "MCVLRException.h"
#include <afxwin.h>
#include "TesvorFunctions.h"

IMPLEMENT_DYNCREATE(MCVLRException, CException)

MCVLRException::MCVLRException(UINT nID)
{
    Init();
    m_nID = nID;
}

MCVLRException::MCVLRException(int) { Init(); }

MCVLRException::MCVLRException(HRESULT hr)
{
    Init();
    m_hResult = hr;
}

MCVLRException::MCVLRException(const CString& strMessage)
{
    Init();
    m_strMessage = strMessage;
}

MCVLRException::~MCVLRException() {}

void MCVLRException::Init()
{
    m_nCode = 0;
    m_hResult = E_FAIL;
    m_nID = 0;
    m_strMessage.Empty();
}

CString MCVLRException::GetErrorMessage(bool)
{
    CString result;
    if (!m_strMessage.IsEmpty())
        result = m_strMessage;
    else if (m_hResult != S_OK && m_hResult != S_FALSE)
        result = UGetComError(m_hResult);
    else if (m_nCode != 0)
        result.Format(L"%d", m_nCode);
    return result;
}

void MCVLRException::ReportError() { AfxMessageBox(m_strMessage, MB_OK, 0); }

// The thrower's file and line are not traced: the catcher decides what to report.
// A failed allocation throws a null pointer, as the framework's own throws would.

void MU_ThrowVLRException(HRESULT hr, const wchar_t*, DWORD) { throw new (std::nothrow) MCVLRException(hr); }

void MU_ThrowVLRException(UINT id, const wchar_t*, DWORD) { throw new (std::nothrow) MCVLRException(id); }

void MU_ThrowVLRException(int code, const wchar_t*, DWORD) { throw new (std::nothrow) MCVLRException(code); }

void MU_ThrowVLRException(const wchar_t* message, const wchar_t*, DWORD)
{
    CString text(message);  // MAKEINTRESOURCE(id) loads the string from the module chain
    throw new (std::nothrow) MCVLRException(text);
}
