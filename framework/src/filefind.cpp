#include <afx.h>

CFileFind::CFileFind() : m_hContext(NULL), m_pFoundInfo(NULL), m_pNextInfo(NULL) {}

CFileFind::~CFileFind() { Close(); }

void CFileFind::Close()
{
    delete m_pFoundInfo;
    delete m_pNextInfo;
    m_pFoundInfo = m_pNextInfo = NULL;
    if (m_hContext != NULL) {
        if (m_hContext != INVALID_HANDLE_VALUE)
            ::FindClose(m_hContext);
        m_hContext = NULL;
    }
}

BOOL CFileFind::FindFile(LPCTSTR pstrName, DWORD dwUnused)
{
    UNUSED_ALWAYS(dwUnused);
    Close();
    if (pstrName == NULL)
        pstrName = L"*.*";

    m_pNextInfo = new WIN32_FIND_DATAW;
    m_hContext = ::FindFirstFileW(pstrName, m_pNextInfo);
    if (m_hContext == INVALID_HANDLE_VALUE) {
        DWORD dwError = ::GetLastError();
        Close();
        ::SetLastError(dwError);
        return FALSE;
    }

    // The root is the full path of the pattern up to its last separator.
    DWORD nNeeded = ::GetFullPathNameW(pstrName, 0, NULL, NULL);
    if (nNeeded == 0) {
        Close();
        ::SetLastError(ERROR_INVALID_NAME);
        return FALSE;
    }
    wchar_t* pszRoot = m_strRoot.GetBuffer(static_cast<int>(nNeeded));
    ::GetFullPathNameW(pstrName, nNeeded, pszRoot, NULL);
    wchar_t* pBack = wcsrchr(pszRoot, L'\\');
    wchar_t* pFront = wcsrchr(pszRoot, L'/');
    if (pBack != NULL || pFront != NULL)
        *(pFront > pBack ? pFront : pBack) = L'\0';
    m_strRoot.ReleaseBuffer();
    return TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (m_hContext == NULL || m_hContext == INVALID_HANDLE_VALUE)
        return FALSE;
    if (m_pFoundInfo == NULL)
        m_pFoundInfo = new WIN32_FIND_DATAW;
    WIN32_FIND_DATAW* pTemp = m_pFoundInfo;
    m_pFoundInfo = m_pNextInfo;
    m_pNextInfo = pTemp;
    return ::FindNextFileW(m_hContext, m_pNextInfo);
}

CString CFileFind::GetRoot() const { return m_strRoot; }

CString CFileFind::GetFileName() const
{
    return m_pFoundInfo != NULL ? CString(m_pFoundInfo->cFileName) : CString();
}

CString CFileFind::GetFilePath() const
{
    CString strResult = m_strRoot;
    int nLength = strResult.GetLength();
    if (nLength == 0 || (strResult[nLength - 1] != L'\\' && strResult[nLength - 1] != L'/'))
        strResult += L'\\';
    strResult += GetFileName();
    return strResult;
}

ULONGLONG CFileFind::GetLength() const
{
    if (m_pFoundInfo == NULL)
        return 0;
    return (static_cast<ULONGLONG>(m_pFoundInfo->nFileSizeHigh) << 32) | m_pFoundInfo->nFileSizeLow;
}

BOOL CFileFind::MatchesMask(DWORD dwMask) const
{
    return m_pFoundInfo != NULL && (m_pFoundInfo->dwFileAttributes & dwMask) != 0;
}

BOOL CFileFind::IsDots() const
{
    if (m_pFoundInfo == NULL || !IsDirectory())
        return FALSE;
    const wchar_t* pszName = m_pFoundInfo->cFileName;
    return pszName[0] == L'.' && (pszName[1] == L'\0' || (pszName[1] == L'.' && pszName[2] == L'\0'));
}
