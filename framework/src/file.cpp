// CFile: Win32 file handles with the framework's open flags and exceptions.
#include <afx.h>

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

CFile::CFile() : m_hFile(hFileNull), m_bCloseOnDelete(FALSE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : m_hFile(hFileNull), m_bCloseOnDelete(FALSE)
{
    CFileException error;
    if (!Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    if (m_hFile != hFileNull && m_bCloseOnDelete)
        Abort();
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    m_bCloseOnDelete = FALSE;
    m_hFile = hFileNull;
    m_strFileName.Empty();

    DWORD dwAccess = 0;
    switch (nOpenFlags & 3) {
    case modeRead: dwAccess = GENERIC_READ; break;
    case modeWrite: dwAccess = GENERIC_WRITE; break;
    case modeReadWrite: dwAccess = GENERIC_READ | GENERIC_WRITE; break;
    default: dwAccess = GENERIC_READ; break;
    }

    DWORD dwShareMode = 0;
    switch (nOpenFlags & 0x70) {
    case shareDenyWrite: dwShareMode = FILE_SHARE_READ; break;
    case shareDenyRead: dwShareMode = FILE_SHARE_WRITE; break;
    case shareDenyNone: dwShareMode = FILE_SHARE_READ | FILE_SHARE_WRITE; break;
    default: dwShareMode = 0; break;  // compatibility mode is exclusive on Win32
    }

    SECURITY_ATTRIBUTES sa = {sizeof(sa), NULL, (nOpenFlags & modeNoInherit) == 0};

    DWORD dwCreateFlag = OPEN_EXISTING;
    if (nOpenFlags & modeCreate)
        dwCreateFlag = (nOpenFlags & modeNoTruncate) ? OPEN_ALWAYS : CREATE_ALWAYS;

    HANDLE hFile = lpszFileName == NULL ? INVALID_HANDLE_VALUE
                                        : ::CreateFileW(lpszFileName, dwAccess, dwShareMode, &sa, dwCreateFlag,
                                                        FILE_ATTRIBUTE_NORMAL, NULL);
    if (hFile == INVALID_HANDLE_VALUE) {
        DWORD dwError = lpszFileName == NULL ? ERROR_INVALID_PARAMETER : ::GetLastError();
        if (pError != NULL) {
            pError->m_lOsError = static_cast<LONG>(dwError);
            pError->m_cause = CFileException::OsErrorToException(static_cast<LONG>(dwError));
            pError->m_strFileName = lpszFileName;
        }
        return FALSE;
    }
    m_hFile = hFile;
    m_bCloseOnDelete = TRUE;
    m_strFileName = lpszFileName;
    return TRUE;
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    DWORD dwRead = 0;
    if (!::ReadFile(m_hFile, lpBuf, nCount, &dwRead, NULL))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return dwRead;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    DWORD nWritten = 0;
    if (!::WriteFile(m_hFile, lpBuf, nCount, &nWritten, NULL))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    if (nWritten != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LARGE_INTEGER distance, position;
    distance.QuadPart = lOff;
    if (!::SetFilePointerEx(m_hFile, distance, &position, nFrom))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER zero, position;
    zero.QuadPart = 0;
    if (!::SetFilePointerEx(m_hFile, zero, &position, FILE_CURRENT))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER size;
    if (!::GetFileSizeEx(m_hFile, &size))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(size.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!::SetEndOfFile(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile != hFileNull && !::FlushFileBuffers(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

void CFile::Close()
{
    BOOL bError = FALSE;
    DWORD dwError = 0;
    if (m_hFile != hFileNull && !::CloseHandle(m_hFile)) {
        bError = TRUE;
        dwError = ::GetLastError();
    }
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (bError)
        CFileException::ThrowOsError(static_cast<LONG>(dwError), NULL);
}

void CFile::Abort()
{
    if (m_hFile != hFileNull)
        ::CloseHandle(m_hFile);
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

CString CFile::GetFileName() const
{
    int nSlash = -1;
    for (int i = 0; i < m_strFileName.GetLength(); ++i) {
        if (m_strFileName[i] == L'\\' || m_strFileName[i] == L'/' || m_strFileName[i] == L':')
            nSlash = i;
    }
    return m_strFileName.Mid(nSlash + 1);
}
