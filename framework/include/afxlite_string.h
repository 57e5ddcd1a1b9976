// afxlite: CString, the framework's reference-counted UTF-16 string.
//
// Copies share one buffer until one of them is changed (copy on write). The
// buffer is a header followed by the characters and a terminating zero, so the
// string converts to a plain `const wchar_t*` at no cost.
#pragma once
#include "afxlite_config.h"
#include <oleauto.h>

struct CStringData {
    long nRefs;         // -1: the shared empty buffer, never freed
    int nDataLength;    // characters, without the terminator
    int nAllocLength;   // capacity, without the terminator
    wchar_t* data() { return reinterpret_cast<wchar_t*>(this + 1); }
};

class AFXLITE_API CString {
public:
    CString();
    CString(const CString& src);
    CString(CString&& src) noexcept;
    // A pointer value below 0x10000 is a string-resource identifier (MAKEINTRESOURCE).
    CString(const wchar_t* psz);
    CString(const char* psz);  // converted from the thread's ANSI code page
    CString(const wchar_t* pch, int nLength);
    CString(const char* pch, int nLength);
    explicit CString(wchar_t ch, int nRepeat = 1);
    ~CString();

    CString& operator=(const CString& src);
    CString& operator=(CString&& src) noexcept;
    CString& operator=(const wchar_t* psz);
    CString& operator=(const char* psz);
    CString& operator=(wchar_t ch);

    int GetLength() const { return GetData()->nDataLength; }
    // Characters the buffer holds without growing; 0 for a string never given storage.
    int GetAllocLength() const { return GetData()->nAllocLength; }
    bool IsEmpty() const { return GetData()->nDataLength == 0; }
    void Empty();
    wchar_t GetAt(int nIndex) const;
    void SetAt(int nIndex, wchar_t ch);
    wchar_t operator[](int nIndex) const { return GetAt(nIndex); }
    operator const wchar_t*() const { return m_pszData; }
    const wchar_t* GetString() const { return m_pszData; }

    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    CString SpanIncluding(const wchar_t* pszCharSet) const;
    CString SpanExcluding(const wchar_t* pszCharSet) const;

    int Find(wchar_t ch, int nStart = 0) const;
    int Find(const wchar_t* pszSub, int nStart = 0) const;
    int ReverseFind(wchar_t ch) const;
    int FindOneOf(const wchar_t* pszCharSet) const;

    CString& MakeLower();
    CString& MakeUpper();
    CString& MakeReverse();
    CString& Trim();
    CString& Trim(wchar_t chTarget);
    CString& Trim(const wchar_t* pszTargets);
    CString& TrimLeft();
    CString& TrimLeft(wchar_t chTarget);
    CString& TrimLeft(const wchar_t* pszTargets);
    CString& TrimRight();
    CString& TrimRight(wchar_t chTarget);
    CString& TrimRight(const wchar_t* pszTargets);

    int Replace(wchar_t chOld, wchar_t chNew);
    int Replace(const wchar_t* pszOld, const wchar_t* pszNew);
    int Remove(wchar_t ch);
    int Insert(int nIndex, wchar_t ch);
    int Insert(int nIndex, const wchar_t* psz);
    int Delete(int nIndex, int nCount = 1);
    CString Tokenize(const wchar_t* pszTokens, int& iStart) const;

    void AFX_CDECL Format(const wchar_t* pszFormat, ...);
    void AFX_CDECL Format(UINT nFormatID, ...);
    void FormatV(const wchar_t* pszFormat, va_list args);
    void AFX_CDECL AppendFormat(const wchar_t* pszFormat, ...);
    void AppendFormatV(const wchar_t* pszFormat, va_list args);

    BOOL LoadString(UINT nID);

    wchar_t* GetBuffer();
    wchar_t* GetBuffer(int nMinBufLength);
    wchar_t* GetBufferSetLength(int nNewLength);
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength);
    void FreeExtra();
    void Preallocate(int nLength);

    BSTR AllocSysString() const;
    BSTR SetSysString(BSTR* pbstr) const;

    CString& Append(const wchar_t* psz);
    CString& Append(const wchar_t* pch, int nLength);
    CString& Append(const CString& str);
    CString& AppendChar(wchar_t ch);
    CString& operator+=(const CString& str) { return Append(str); }
    CString& operator+=(const wchar_t* psz) { return Append(psz); }
    CString& operator+=(const char* psz) { return Append(CString(psz)); }
    CString& operator+=(wchar_t ch) { return AppendChar(ch); }

    int Compare(const wchar_t* psz) const;
    int CompareNoCase(const wchar_t* psz) const;
    int Collate(const wchar_t* psz) const;

    // Replaces the content with n characters from pch (which may point into this string).
    void SetString(const wchar_t* pch, int nLength);
    void SetString(const wchar_t* psz);

private:
    CStringData* GetData() const { return reinterpret_cast<CStringData*>(m_pszData) - 1; }
    void Attach(CStringData* pData) { m_pszData = pData->data(); }
    void Release();
    void PrepareWrite(int nLength);  // unshared buffer of at least nLength characters
    void SetLength(int nLength);
    int TrimRightIndex(const wchar_t* pszTargets) const;

    wchar_t* m_pszData;
};

AFXLITE_API CString AFXAPI operator+(const CString& a, const CString& b);
AFXLITE_API CString AFXAPI operator+(const CString& a, const wchar_t* b);
AFXLITE_API CString AFXAPI operator+(const wchar_t* a, const CString& b);
AFXLITE_API CString AFXAPI operator+(const CString& a, wchar_t b);
AFXLITE_API CString AFXAPI operator+(wchar_t a, const CString& b);

inline bool operator==(const CString& a, const CString& b) { return a.Compare(b) == 0; }
inline bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
inline bool operator==(const wchar_t* a, const CString& b) { return b.Compare(a) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return a.Compare(b) != 0; }
inline bool operator!=(const CString& a, const wchar_t* b) { return a.Compare(b) != 0; }
inline bool operator!=(const wchar_t* a, const CString& b) { return b.Compare(a) != 0; }
inline bool operator<(const CString& a, const CString& b) { return a.Compare(b) < 0; }
inline bool operator<(const CString& a, const wchar_t* b) { return a.Compare(b) < 0; }
inline bool operator<(const wchar_t* a, const CString& b) { return b.Compare(a) > 0; }
inline bool operator>(const CString& a, const CString& b) { return a.Compare(b) > 0; }
inline bool operator>(const CString& a, const wchar_t* b) { return a.Compare(b) > 0; }
inline bool operator>(const wchar_t* a, const CString& b) { return b.Compare(a) < 0; }
inline bool operator<=(const CString& a, const CString& b) { return a.Compare(b) <= 0; }
inline bool operator<=(const CString& a, const wchar_t* b) { return a.Compare(b) <= 0; }
inline bool operator<=(const wchar_t* a, const CString& b) { return b.Compare(a) >= 0; }
inline bool operator>=(const CString& a, const CString& b) { return a.Compare(b) >= 0; }
inline bool operator>=(const CString& a, const wchar_t* b) { return a.Compare(b) >= 0; }
inline bool operator>=(const wchar_t* a, const CString& b) { return b.Compare(a) <= 0; }

typedef CString CStringW;
