// afxlite: CFile, unbuffered binary file access over a Win32 file handle. Open
// reports failure through its result and an optional CFileException; the other
// operations throw CFileException* on failure, as the framework does.
#pragma once
#include "afxlite_except.h"

class AFXLITE_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,  // exclusive, as shareExclusive
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,  // meaningful to derived text files only
        typeBinary = 0x8000
    };
    enum SeekPosition { begin = 0x0, current = 0x1, end = 0x2 };

    static const HANDLE hFileNull;

    CFile();
    explicit CFile(HANDLE hFile);
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);  // throws CFileException* on failure
    // Closes an open file; errors are ignored here (call Close to see them).
    ~CFile() override;

    HANDLE m_hFile;
    operator HANDLE() const { return m_hFile; }

    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = NULL);
    virtual UINT Read(void* lpBuf, UINT nCount);
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual void Flush();
    virtual void Close();
    // Closes without reporting errors.
    virtual void Abort();
    virtual CString GetFilePath() const { return m_strFileName; }
    virtual CString GetFileName() const;

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName;
};
