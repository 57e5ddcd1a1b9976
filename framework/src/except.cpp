#include <afx.h>
#include <afxwin.h>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(COleException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

CException::CException(BOOL bAutoDelete) : m_bAutoDelete(bAutoDelete) {}
CException::~CException() {}

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::CopyErrorText(const wchar_t* text, LPTSTR lpszError, UINT nMaxError)
{
    if (lpszError == NULL || nMaxError == 0)
        return FALSE;
    lstrcpynW(lpszError, text, static_cast<int>(nMaxError));
    return TRUE;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != NULL)
        *pnHelpContext = 0;
    if (lpszError != NULL && nMaxError != 0)
        *lpszError = L'\0';
    return FALSE;
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    wchar_t szErrorMessage[512];
    UINT nHelpContext = 0;
    if (GetErrorMessage(szErrorMessage, 512, &nHelpContext))
        return AfxMessageBox(szErrorMessage, nType, nHelpContext);
    if (nMessageID != 0)
        return AfxMessageBox(nMessageID, nType);
    return AfxMessageBox(L"No error message is available.", nType);
}

CSimpleException::~CSimpleException() {}
const wchar_t* CSimpleException::GetDefaultText() const { return L"An unknown error has occurred."; }

BOOL CSimpleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != NULL)
        *pnHelpContext = 0;
    return CopyErrorText(GetDefaultText(), lpszError, nMaxError);
}

CMemoryException::~CMemoryException() {}
const wchar_t* CMemoryException::GetDefaultText() const { return L"Out of memory."; }
CNotSupportedException::~CNotSupportedException() {}
const wchar_t* CNotSupportedException::GetDefaultText() const { return L"Unsupported operation was attempted."; }
CInvalidArgException::~CInvalidArgException() {}
const wchar_t* CInvalidArgException::GetDefaultText() const
{
    return L"Encountered an improper argument.";
}

COleException::~COleException() {}

BOOL COleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != NULL)
        *pnHelpContext = 0;
    wchar_t* pszText = NULL;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     NULL, static_cast<DWORD>(m_sc), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<LPWSTR>(&pszText), 0, NULL);
    if (pszText == NULL) {
        CopyErrorText(L"", lpszError, nMaxError);
        return FALSE;
    }
    BOOL bResult = CopyErrorText(pszText, lpszError, nMaxError);
    ::LocalFree(pszText);
    return bResult;
}

SCODE __stdcall COleException::Process(const CException* pAnyException)
{
    if (pAnyException == NULL)
        return E_UNEXPECTED;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(COleException)))
        return static_cast<const COleException*>(pAnyException)->m_sc;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CMemoryException)))
        return E_OUTOFMEMORY;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CNotSupportedException)))
        return E_NOTIMPL;
    if (pAnyException->IsKindOf(RUNTIME_CLASS(CInvalidArgException)))
        return E_INVALIDARG;
    return E_UNEXPECTED;
}

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName ? lpszArchiveName : L"")
{
}

CFileException::~CFileException() {}

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext != NULL)
        *pnHelpContext = 0;
    static const wchar_t* const causes[] = {
        L"No error occurred.", L"An unspecified error occurred while accessing %1.",
        L"%1 was not found.", L"%1 contains an incorrect path.",
        L"%1 could not be opened because there are too many open files.",
        L"Access to %1 was denied.", L"An incorrect file handle was associated with %1.",
        L"%1 could not be removed because it is the current directory.",
        L"%1 could not be created because the directory is full.", L"Seek failed on %1.",
        L"A hardware I/O error was reported while accessing %1.",
        L"A sharing violation occurred while accessing %1.",
        L"A locking violation occurred while accessing %1.",
        L"Disk full while accessing %1.", L"An attempt was made to access %1 past its end."};
    int cause = (m_cause >= 0 && m_cause <= endOfFile) ? m_cause : genericException;
    CString text(causes[cause]);
    text.Replace(L"%1", m_strFileName.IsEmpty() ? L"an unnamed file" : static_cast<const wchar_t*>(m_strFileName));
    return CopyErrorText(text, lpszError, nMaxError);
}

int __stdcall CFileException::OsErrorToException(LONG lOsError)
{
    switch (lOsError) {
    case NO_ERROR: return none;
    case ERROR_FILE_NOT_FOUND: return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE: return badPath;
    case ERROR_TOO_MANY_OPEN_FILES: return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return accessDenied;
    case ERROR_INVALID_HANDLE: return invalidFile;
    case ERROR_CURRENT_DIRECTORY: return removeCurrentDir;
    case ERROR_CANNOT_MAKE: return directoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK: return badSeek;
    case ERROR_SHARING_VIOLATION: return sharingViolation;
    case ERROR_LOCK_VIOLATION: return lockViolation;
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL: return diskFull;
    case ERROR_HANDLE_EOF: return endOfFile;
    case ERROR_CRC:
    case ERROR_GEN_FAILURE:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT: return hardIO;
    default: return genericException;
    }
}

void __stdcall CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName)
{
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

// Out of memory may leave no room for a new exception object, so a static one
// (not auto-deleted) is thrown, as the framework does.
void AFXAPI AfxThrowMemoryException()
{
    static CMemoryException s_memoryException(FALSE);
    throw static_cast<CMemoryException*>(&s_memoryException);
}

void AFXAPI AfxThrowNotSupportedException() { throw new CNotSupportedException; }
void AFXAPI AfxThrowInvalidArgException() { throw new CInvalidArgException; }
void AFXAPI AfxThrowOleException(SCODE sc) { throw new COleException(sc); }

void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName)
{
    throw new CFileException(cause, lOsError, lpszFileName);
}
