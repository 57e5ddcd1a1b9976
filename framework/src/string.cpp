#include <afx.h>
#include <afxwin.h>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <utility>

namespace {

// The shared empty string: never freed, never written.
struct EmptyStringData {
    CStringData header;
    wchar_t terminator;
};
EmptyStringData g_emptyData = {{-1, 0, 0}, L'\0'};

CStringData* EmptyData() { return &g_emptyData.header; }

CStringData* AllocData(int nLength)
{
    if (nLength < 0)
        AfxThrowOleException(E_INVALIDARG);
    if (nLength == 0)
        return EmptyData();
    size_t bytes = sizeof(CStringData) + (static_cast<size_t>(nLength) + 1) * sizeof(wchar_t);
    CStringData* pData = static_cast<CStringData*>(::operator new(bytes, std::nothrow));
    if (pData == NULL)
        AfxThrowMemoryException();
    pData->nRefs = 1;
    pData->nDataLength = 0;
    pData->nAllocLength = nLength;
    pData->data()[0] = L'\0';
    return pData;
}

int SafeLength(const wchar_t* psz)
{
    if (psz == NULL)
        return 0;
    size_t n = wcslen(psz);
    if (n > INT_MAX / 2)
        AfxThrowMemoryException();
    return static_cast<int>(n);
}

bool IsResourceId(const void* p) { return p != NULL && IS_INTRESOURCE(p); }

}  // namespace

CString::CString() { Attach(EmptyData()); }

CString::CString(const CString& src)
{
    CStringData* pData = src.GetData();
    if (pData->nRefs >= 0)
        InterlockedIncrement(&pData->nRefs);
    Attach(pData);
}

CString::CString(CString&& src) noexcept
{
    m_pszData = src.m_pszData;
    src.Attach(EmptyData());
}

CString::CString(const wchar_t* psz)
{
    Attach(EmptyData());
    if (IsResourceId(psz))
        LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(psz)));
    else
        SetString(psz, SafeLength(psz));
}

CString::CString(const char* psz)
{
    Attach(EmptyData());
    if (IsResourceId(psz))
        LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(psz)));
    else if (psz != NULL)
        *this = CString(psz, static_cast<int>(strlen(psz)));
}

CString::CString(const wchar_t* pch, int nLength)
{
    Attach(EmptyData());
    if (pch == NULL && nLength != 0)
        AfxThrowOleException(E_INVALIDARG);
    SetString(pch, nLength);
}

CString::CString(const char* pch, int nLength)
{
    Attach(EmptyData());
    if (nLength < 0 || (pch == NULL && nLength != 0))
        AfxThrowOleException(E_INVALIDARG);
    if (nLength == 0)
        return;
    int nWide = ::MultiByteToWideChar(CP_THREAD_ACP, 0, pch, nLength, NULL, 0);
    PrepareWrite(nWide);
    ::MultiByteToWideChar(CP_THREAD_ACP, 0, pch, nLength, m_pszData, nWide);
    SetLength(nWide);
}

CString::CString(wchar_t ch, int nRepeat)
{
    Attach(EmptyData());
    if (nRepeat > 0) {
        PrepareWrite(nRepeat);
        for (int i = 0; i < nRepeat; i++)
            m_pszData[i] = ch;
        SetLength(nRepeat);
    }
}

CString::~CString() { Release(); }

void CString::Release()
{
    CStringData* pData = GetData();
    if (pData != EmptyData() && InterlockedDecrement(&pData->nRefs) == 0)
        ::operator delete(pData);
}

CString& CString::operator=(const CString& src)
{
    if (m_pszData != src.m_pszData) {
        CStringData* pData = src.GetData();
        if (pData->nRefs >= 0)
            InterlockedIncrement(&pData->nRefs);
        Release();
        Attach(pData);
    }
    return *this;
}

CString& CString::operator=(CString&& src) noexcept
{
    if (this != &src) {
        Release();
        m_pszData = src.m_pszData;
        src.Attach(EmptyData());
    }
    return *this;
}

CString& CString::operator=(const wchar_t* psz)
{
    if (IsResourceId(psz))
        LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(psz)));
    else
        SetString(psz, SafeLength(psz));
    return *this;
}

CString& CString::operator=(const char* psz) { return *this = CString(psz); }

CString& CString::operator=(wchar_t ch)
{
    SetString(&ch, 1);
    return *this;
}

void CString::PrepareWrite(int nLength)
{
    CStringData* pOld = GetData();
    if (pOld->nRefs == 1 && nLength <= pOld->nAllocLength)
        return;
    int nOldLength = pOld->nDataLength;
    // Grow by half again so that repeated appends stay linear.
    int nAlloc = nLength;
    if (pOld->nRefs == 1 && nLength > pOld->nAllocLength && nLength < INT_MAX / 3)
        nAlloc = nLength + nLength / 2;
    CStringData* pNew = AllocData(nAlloc);
    if (pNew == EmptyData())
        return;
    int nCopy = nOldLength < nLength ? nOldLength : nLength;
    wmemcpy(pNew->data(), pOld->data(), static_cast<size_t>(nCopy));
    pNew->data()[nCopy] = L'\0';
    pNew->nDataLength = nCopy;
    Release();
    Attach(pNew);
}

void CString::SetLength(int nLength)
{
    CStringData* pData = GetData();
    if (pData == EmptyData())
        return;
    pData->nDataLength = nLength;
    m_pszData[nLength] = L'\0';
}

void CString::SetString(const wchar_t* pch, int nLength)
{
    if (nLength < 0)
        AfxThrowOleException(E_INVALIDARG);
    if (nLength == 0) {
        Empty();
        return;
    }
    if (pch == NULL)
        AfxThrowOleException(E_INVALIDARG);
    // The source may lie inside our own buffer: copy through a new one in that case.
    CStringData* pData = GetData();
    bool bOverlaps = pch >= m_pszData && pch <= m_pszData + pData->nAllocLength;
    if (bOverlaps || pData->nRefs != 1 || nLength > pData->nAllocLength) {
        CStringData* pNew = AllocData(nLength);
        wmemcpy(pNew->data(), pch, static_cast<size_t>(nLength));
        Release();
        Attach(pNew);
    } else {
        wmemmove(m_pszData, pch, static_cast<size_t>(nLength));
    }
    SetLength(nLength);
}

void CString::SetString(const wchar_t* psz) { SetString(psz, SafeLength(psz)); }

void CString::Empty()
{
    Release();
    Attach(EmptyData());
}

wchar_t CString::GetAt(int nIndex) const
{
    if (nIndex < 0 || nIndex > GetLength())
        AfxThrowOleException(E_INVALIDARG);
    return m_pszData[nIndex];
}

void CString::SetAt(int nIndex, wchar_t ch)
{
    if (nIndex < 0 || nIndex >= GetLength())
        AfxThrowOleException(E_INVALIDARG);
    int nLength = GetLength();
    PrepareWrite(nLength);
    m_pszData[nIndex] = ch;
}

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength() - nFirst); }

CString CString::Mid(int nFirst, int nCount) const
{
    if (nFirst < 0)
        nFirst = 0;
    if (nCount < 0)
        nCount = 0;
    int nLength = GetLength();
    if (nFirst > nLength)
        nFirst = nLength;
    if (nCount > nLength - nFirst)
        nCount = nLength - nFirst;
    if (nFirst == 0 && nCount == nLength)
        return *this;
    return CString(m_pszData + nFirst, nCount);
}

CString CString::Left(int nCount) const { return Mid(0, nCount); }

CString CString::Right(int nCount) const
{
    if (nCount < 0)
        nCount = 0;
    int nLength = GetLength();
    if (nCount >= nLength)
        return *this;
    return CString(m_pszData + nLength - nCount, nCount);
}

CString CString::SpanIncluding(const wchar_t* pszCharSet) const
{
    return Left(static_cast<int>(wcsspn(m_pszData, pszCharSet)));
}

CString CString::SpanExcluding(const wchar_t* pszCharSet) const
{
    return Left(static_cast<int>(wcscspn(m_pszData, pszCharSet)));
}

int CString::Find(wchar_t ch, int nStart) const
{
    int nLength = GetLength();
    if (nStart < 0 || nStart >= nLength)
        return -1;
    const wchar_t* p = wcschr(m_pszData + nStart, ch);
    return p == NULL ? -1 : static_cast<int>(p - m_pszData);
}

int CString::Find(const wchar_t* pszSub, int nStart) const
{
    if (pszSub == NULL)
        return -1;
    int nLength = GetLength();
    if (nStart < 0 || nStart > nLength)
        return -1;
    const wchar_t* p = wcsstr(m_pszData + nStart, pszSub);
    return p == NULL ? -1 : static_cast<int>(p - m_pszData);
}

int CString::ReverseFind(wchar_t ch) const
{
    const wchar_t* p = wcsrchr(m_pszData, ch);
    return p == NULL ? -1 : static_cast<int>(p - m_pszData);
}

int CString::FindOneOf(const wchar_t* pszCharSet) const
{
    if (pszCharSet == NULL)
        return -1;
    const wchar_t* p = wcspbrk(m_pszData, pszCharSet);
    return p == NULL ? -1 : static_cast<int>(p - m_pszData);
}

CString& CString::MakeLower()
{
    int nLength = GetLength();
    if (nLength > 0) {
        PrepareWrite(nLength);
        ::CharLowerBuffW(m_pszData, static_cast<DWORD>(nLength));
    }
    return *this;
}

CString& CString::MakeUpper()
{
    int nLength = GetLength();
    if (nLength > 0) {
        PrepareWrite(nLength);
        ::CharUpperBuffW(m_pszData, static_cast<DWORD>(nLength));
    }
    return *this;
}

CString& CString::MakeReverse()
{
    int nLength = GetLength();
    if (nLength > 1) {
        PrepareWrite(nLength);
        for (int i = 0, j = nLength - 1; i < j; ++i, --j) {
            wchar_t t = m_pszData[i];
            m_pszData[i] = m_pszData[j];
            m_pszData[j] = t;
        }
    }
    return *this;
}

namespace {
bool IsTrimmed(wchar_t ch, const wchar_t* pszTargets)
{
    return pszTargets == NULL ? iswspace(ch) != 0 : (ch != L'\0' && wcschr(pszTargets, ch) != NULL);
}
}  // namespace

int CString::TrimRightIndex(const wchar_t* pszTargets) const
{
    int nEnd = GetLength();
    while (nEnd > 0 && IsTrimmed(m_pszData[nEnd - 1], pszTargets))
        --nEnd;
    return nEnd;
}

CString& CString::TrimRight(const wchar_t* pszTargets)
{
    int nEnd = TrimRightIndex(pszTargets);
    if (nEnd != GetLength()) {
        PrepareWrite(GetLength());
        SetLength(nEnd);
    }
    return *this;
}

CString& CString::TrimLeft(const wchar_t* pszTargets)
{
    int nStart = 0;
    int nLength = GetLength();
    while (nStart < nLength && IsTrimmed(m_pszData[nStart], pszTargets))
        ++nStart;
    if (nStart > 0)
        SetString(m_pszData + nStart, nLength - nStart);
    return *this;
}

CString& CString::TrimRight() { return TrimRight(static_cast<const wchar_t*>(NULL)); }
CString& CString::TrimLeft() { return TrimLeft(static_cast<const wchar_t*>(NULL)); }
CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimRight(wchar_t chTarget)
{
    wchar_t set[2] = {chTarget, L'\0'};
    return TrimRight(set);
}

CString& CString::TrimLeft(wchar_t chTarget)
{
    wchar_t set[2] = {chTarget, L'\0'};
    return TrimLeft(set);
}

CString& CString::Trim(wchar_t chTarget) { return TrimRight(chTarget).TrimLeft(chTarget); }

CString& CString::Trim(const wchar_t* pszTargets) { return TrimRight(pszTargets).TrimLeft(pszTargets); }

int CString::Replace(wchar_t chOld, wchar_t chNew)
{
    int nCount = 0;
    int nLength = GetLength();
    for (int i = 0; i < nLength; i++) {
        if (m_pszData[i] == chOld) {
            if (nCount == 0)
                PrepareWrite(nLength);
            m_pszData[i] = chNew;
            nCount++;
        }
    }
    return nCount;
}

int CString::Replace(const wchar_t* pszOld, const wchar_t* pszNew)
{
    int nOldLength = SafeLength(pszOld);
    if (nOldLength == 0)
        return 0;
    int nNewLength = SafeLength(pszNew);
    CString result;
    int nCount = 0;
    int nPos = 0;
    for (;;) {
        int nFound = Find(pszOld, nPos);
        if (nFound < 0)
            break;
        result.Append(m_pszData + nPos, nFound - nPos);
        result.Append(pszNew, nNewLength);
        nPos = nFound + nOldLength;
        nCount++;
    }
    if (nCount > 0) {
        result.Append(m_pszData + nPos, GetLength() - nPos);
        *this = std::move(result);
    }
    return nCount;
}

int CString::Remove(wchar_t ch)
{
    int nLength = GetLength();
    if (wmemchr(m_pszData, ch, static_cast<size_t>(nLength)) == NULL)
        return 0;
    PrepareWrite(nLength);
    int nKept = 0;
    for (int i = 0; i < nLength; i++)
        if (m_pszData[i] != ch)
            m_pszData[nKept++] = m_pszData[i];
    SetLength(nKept);
    return nLength - nKept;
}

int CString::Insert(int nIndex, wchar_t ch)
{
    wchar_t text[2] = {ch, L'\0'};
    return Insert(nIndex, text);
}

int CString::Insert(int nIndex, const wchar_t* psz)
{
    int nLength = GetLength();
    if (nIndex < 0)
        nIndex = 0;
    if (nIndex > nLength)
        nIndex = nLength;
    int nInsert = SafeLength(psz);
    if (nInsert > 0) {
        CString result(m_pszData, nIndex);
        result.Append(psz, nInsert);
        result.Append(m_pszData + nIndex, nLength - nIndex);
        *this = std::move(result);
    }
    return GetLength();
}

int CString::Delete(int nIndex, int nCount)
{
    int nLength = GetLength();
    if (nIndex < 0)
        nIndex = 0;
    if (nCount > 0 && nIndex < nLength) {
        if (nCount > nLength - nIndex)
            nCount = nLength - nIndex;
        PrepareWrite(nLength);
        wmemmove(m_pszData + nIndex, m_pszData + nIndex + nCount,
                 static_cast<size_t>(nLength - nIndex - nCount));
        SetLength(nLength - nCount);
    }
    return GetLength();
}

CString CString::Tokenize(const wchar_t* pszTokens, int& iStart) const
{
    if (iStart < 0)
        AfxThrowOleException(E_INVALIDARG);
    if (pszTokens == NULL || *pszTokens == L'\0') {
        if (iStart < GetLength())
            return Mid(iStart);
    } else if (iStart < GetLength()) {
        const wchar_t* pStart = m_pszData + iStart;
        const wchar_t* pEnd = m_pszData + GetLength();
        pStart += wcsspn(pStart, pszTokens);
        if (pStart < pEnd) {
            size_t nToken = wcscspn(pStart, pszTokens);
            int nFrom = static_cast<int>(pStart - m_pszData);
            iStart = nFrom + static_cast<int>(nToken) + 1;
            return Mid(nFrom, static_cast<int>(nToken));
        }
    }
    iStart = -1;
    return CString();
}

void CString::FormatV(const wchar_t* pszFormat, va_list args)
{
    if (pszFormat == NULL)
        AfxThrowOleException(E_INVALIDARG);
    va_list argsCount;
    va_copy(argsCount, args);
    int nLength = AfxCrtVscwprintf(pszFormat, argsCount);
    va_end(argsCount);
    if (nLength < 0)
        AfxThrowOleException(E_INVALIDARG);
    CString result;
    result.PrepareWrite(nLength);
    if (nLength > 0) {
        AfxCrtVsnwprintf(result.m_pszData, static_cast<size_t>(nLength) + 1, pszFormat, args);
        result.SetLength(nLength);
    }
    *this = std::move(result);
}

void CString::Format(const wchar_t* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    FormatV(pszFormat, args);
    va_end(args);
}

void CString::Format(UINT nFormatID, ...)
{
    CString strFormat;
    strFormat.LoadString(nFormatID);
    va_list args;
    va_start(args, nFormatID);
    FormatV(strFormat, args);
    va_end(args);
}

void CString::AppendFormatV(const wchar_t* pszFormat, va_list args)
{
    CString tail;
    tail.FormatV(pszFormat, args);
    Append(tail);
}

void CString::AppendFormat(const wchar_t* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    AppendFormatV(pszFormat, args);
    va_end(args);
}

BOOL CString::LoadString(UINT nID)
{
    HINSTANCE hInst = AfxFindStringResourceHandle(nID);
    const wchar_t* pText = NULL;
    int nLength = hInst ? ::LoadStringW(hInst, nID, reinterpret_cast<LPWSTR>(&pText), 0) : 0;
    if (nLength <= 0 || pText == NULL) {
        Empty();
        return FALSE;
    }
    SetString(pText, nLength);
    return TRUE;
}

wchar_t* CString::GetBuffer() { return GetBuffer(GetLength()); }

wchar_t* CString::GetBuffer(int nMinBufLength)
{
    if (nMinBufLength < 0)
        AfxThrowOleException(E_INVALIDARG);
    int nLength = GetLength();
    int nWant = nMinBufLength > nLength ? nMinBufLength : nLength;
    if (nWant == 0) {
        // Callers may write the terminator: hand out a private one-character buffer.
        CStringData* pNew = AllocData(1);
        Release();
        Attach(pNew);
        return m_pszData;
    }
    CStringData* pOld = GetData();
    if (pOld->nRefs != 1 || nWant > pOld->nAllocLength) {
        CStringData* pNew = AllocData(nWant);
        wmemcpy(pNew->data(), m_pszData, static_cast<size_t>(nLength) + 1);
        pNew->nDataLength = nLength;
        Release();
        Attach(pNew);
    }
    return m_pszData;
}

wchar_t* CString::GetBufferSetLength(int nNewLength)
{
    wchar_t* p = GetBuffer(nNewLength);
    SetLength(nNewLength);
    return p;
}

void CString::ReleaseBuffer(int nNewLength)
{
    CStringData* pData = GetData();
    if (pData == EmptyData())
        return;
    if (nNewLength == -1)
        nNewLength = static_cast<int>(wcsnlen(m_pszData, static_cast<size_t>(pData->nAllocLength)));
    if (nNewLength < 0 || nNewLength > pData->nAllocLength)
        AfxThrowOleException(E_INVALIDARG);
    SetLength(nNewLength);
    if (nNewLength == 0)
        Empty();
}

void CString::ReleaseBufferSetLength(int nNewLength) { ReleaseBuffer(nNewLength); }

void CString::FreeExtra()
{
    CStringData* pData = GetData();
    if (pData->nRefs == 1 && pData->nDataLength < pData->nAllocLength)
        *this = CString(m_pszData, pData->nDataLength);
}

void CString::Preallocate(int nLength)
{
    if (nLength > GetLength())
        PrepareWrite(nLength);
}

BSTR CString::AllocSysString() const
{
    BSTR bstr = ::SysAllocStringLen(m_pszData, static_cast<UINT>(GetLength()));
    if (bstr == NULL)
        AfxThrowMemoryException();
    return bstr;
}

BSTR CString::SetSysString(BSTR* pbstr) const
{
    if (!::SysReAllocStringLen(pbstr, m_pszData, static_cast<UINT>(GetLength())))
        AfxThrowMemoryException();
    return *pbstr;
}

CString& CString::Append(const wchar_t* pch, int nLength)
{
    if (nLength < 0 || (pch == NULL && nLength != 0))
        AfxThrowOleException(E_INVALIDARG);
    if (nLength == 0)
        return *this;
    int nOldLength = GetLength();
    if (nLength > INT_MAX / 2 - nOldLength)
        AfxThrowMemoryException();
    CStringData* pData = GetData();
    bool bOverlaps = pch >= m_pszData && pch <= m_pszData + pData->nAllocLength;
    if (bOverlaps) {
        CString copy(pch, nLength);
        return Append(copy.m_pszData, nLength);
    }
    PrepareWrite(nOldLength + nLength);
    wmemcpy(m_pszData + nOldLength, pch, static_cast<size_t>(nLength));
    SetLength(nOldLength + nLength);
    return *this;
}

CString& CString::Append(const wchar_t* psz) { return Append(psz, SafeLength(psz)); }

CString& CString::Append(const CString& str)
{
    if (IsEmpty()) {
        *this = str;
        return *this;
    }
    return Append(str.m_pszData, str.GetLength());
}

CString& CString::AppendChar(wchar_t ch) { return Append(&ch, 1); }

int CString::Compare(const wchar_t* psz) const
{
    if (psz == NULL)
        AfxThrowOleException(E_INVALIDARG);
    return wcscmp(m_pszData, psz);
}

int CString::CompareNoCase(const wchar_t* psz) const
{
    if (psz == NULL)
        AfxThrowOleException(E_INVALIDARG);
    return _wcsicmp(m_pszData, psz);
}

int CString::Collate(const wchar_t* psz) const
{
    if (psz == NULL)
        AfxThrowOleException(E_INVALIDARG);
    return wcscoll(m_pszData, psz);
}

CString AFXAPI operator+(const CString& a, const CString& b)
{
    CString s(a);
    s.Append(b);
    return s;
}

CString AFXAPI operator+(const CString& a, const wchar_t* b)
{
    CString s(a);
    s.Append(b);
    return s;
}

CString AFXAPI operator+(const wchar_t* a, const CString& b)
{
    CString s(a);
    s.Append(b);
    return s;
}

CString AFXAPI operator+(const CString& a, wchar_t b)
{
    CString s(a);
    s.AppendChar(b);
    return s;
}

CString AFXAPI operator+(wchar_t a, const CString& b)
{
    CString s(a, 1);
    s.Append(b);
    return s;
}
