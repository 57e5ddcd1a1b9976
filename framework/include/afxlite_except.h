// afxlite: the framework's exception classes. Exceptions are allocated on the
// heap and thrown by pointer; the catcher releases them with Delete().
#pragma once
#include "afxlite_object.h"
#include "afxlite_string.h"

class AFXLITE_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    explicit CException(BOOL bAutoDelete = TRUE);
    virtual ~CException() = 0;

    // Deletes the object if it was made on the heap (auto-delete); a static or
    // stack object survives the call.
    void Delete();

    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const;
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

    BOOL m_bAutoDelete;

protected:
    // Copies text into the caller's buffer, truncated and terminated as the framework does.
    static BOOL CopyErrorText(const wchar_t* text, LPTSTR lpszError, UINT nMaxError);
};

// Exceptions without state of their own; the text is fixed per class.
class AFXLITE_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)
public:
    explicit CSimpleException(BOOL bAutoDelete = TRUE) : CException(bAutoDelete) {}
    ~CSimpleException() override;
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

protected:
    virtual const wchar_t* GetDefaultText() const;
};

class AFXLITE_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)
public:
    explicit CMemoryException(BOOL bAutoDelete = TRUE) : CSimpleException(bAutoDelete) {}
    ~CMemoryException() override;
protected:
    const wchar_t* GetDefaultText() const override;
};

class AFXLITE_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    explicit CNotSupportedException(BOOL bAutoDelete = TRUE) : CSimpleException(bAutoDelete) {}
    ~CNotSupportedException() override;
protected:
    const wchar_t* GetDefaultText() const override;
};

class AFXLITE_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)
public:
    explicit CInvalidArgException(BOOL bAutoDelete = TRUE) : CSimpleException(bAutoDelete) {}
    ~CInvalidArgException() override;
protected:
    const wchar_t* GetDefaultText() const override;
};

class AFXLITE_API COleException : public CException {
    DECLARE_DYNAMIC(COleException)
public:
    COleException() : m_sc(S_OK) {}
    explicit COleException(SCODE sc) : m_sc(sc) {}
    ~COleException() override;
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    // The status code an exception stands for: its own for an OLE exception,
    // E_OUTOFMEMORY for a memory exception, E_UNEXPECTED otherwise.
    static SCODE __stdcall Process(const CException* pAnyException);

    SCODE m_sc;
};

class AFXLITE_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    enum {
        none, genericException, fileNotFound, badPath, tooManyOpenFiles, accessDenied,
        invalidFile, removeCurrentDir, directoryFull, badSeek, hardIO, sharingViolation,
        lockViolation, diskFull, endOfFile
    };

    explicit CFileException(int cause = none, LONG lOsError = -1, LPCTSTR lpszArchiveName = NULL);
    ~CFileException() override;
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    static int __stdcall OsErrorToException(LONG lOsError);
    [[noreturn]] static void __stdcall ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = NULL);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

[[noreturn]] AFXLITE_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] AFXLITE_API void AFXAPI AfxThrowNotSupportedException();
[[noreturn]] AFXLITE_API void AFXAPI AfxThrowInvalidArgException();
[[noreturn]] AFXLITE_API void AFXAPI AfxThrowOleException(SCODE sc);
[[noreturn]] AFXLITE_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1,
                                                           LPCTSTR lpszFileName = NULL);
