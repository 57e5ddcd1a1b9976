// afxlite: CFileFind, a file search over FindFirstFileW/FindNextFileW.
//
// As in the framework, the search runs one match ahead: FindFile starts it,
// each FindNextFile makes the next match current and returns 0 when that
// match is the last one, so a loop reads
//     BOOL more = finder.FindFile(pattern);
//     while (more) { more = finder.FindNextFile(); use(finder); }
#pragma once
#include "afxlite_object.h"
#include "afxlite_string.h"

class AFXLITE_API CFileFind : public CObject {
public:
    CFileFind();
    ~CFileFind() override;
    CFileFind(const CFileFind&) = delete;
    CFileFind& operator=(const CFileFind&) = delete;

    // Starts a search for pstrName (wild cards allowed; null means "*.*").
    virtual BOOL FindFile(LPCTSTR pstrName = NULL, DWORD dwUnused = 0);
    // Makes the next match current; 0 when it is the last one (or on error).
    virtual BOOL FindNextFile();
    void Close();

    CString GetRoot() const;      // the searched folder, as a full path
    CString GetFileName() const;  // name of the current match
    CString GetFilePath() const;  // root + separator + name
    ULONGLONG GetLength() const;
    BOOL MatchesMask(DWORD dwMask) const;
    BOOL IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
    BOOL IsReadOnly() const { return MatchesMask(FILE_ATTRIBUTE_READONLY); }
    BOOL IsHidden() const { return MatchesMask(FILE_ATTRIBUTE_HIDDEN); }
    // True for the "." and ".." entries of a folder.
    BOOL IsDots() const;

private:
    HANDLE m_hContext;
    WIN32_FIND_DATAW* m_pFoundInfo;  // the current match (null before the first FindNextFile)
    WIN32_FIND_DATAW* m_pNextInfo;   // the match read ahead
    CString m_strRoot;
};
