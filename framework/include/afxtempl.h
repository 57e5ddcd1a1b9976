// afxlite: the framework's collection templates CArray and CMap.
#pragma once
#include "afx.h"
#include <utility>

template <class TYPE, class ARG_TYPE>
AFX_INLINE BOOL AFXAPI CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2;
}

// Integer and pointer keys hash by their value shifted right by four, strings by
// hash = hash * 33 + character, as in the framework; the bucket is hash % table size.
template <class ARG_KEY>
AFX_INLINE UINT AFXAPI HashKey(ARG_KEY key)
{
    return static_cast<UINT>(static_cast<DWORD_PTR>(key) >> 4);
}

AFX_INLINE UINT AFXAPI AfxHashString(const wchar_t* key)
{
    UINT nHash = 0;
    while (*key)
        nHash = (nHash << 5) + nHash + *key++;
    return nHash;
}
template <> AFX_INLINE UINT AFXAPI HashKey<LPCWSTR>(LPCWSTR key) { return AfxHashString(key); }
template <> AFX_INLINE UINT AFXAPI HashKey<LPWSTR>(LPWSTR key) { return AfxHashString(key); }
template <> AFX_INLINE UINT AFXAPI HashKey<const CString&>(const CString& key) { return AfxHashString(key); }
template <> AFX_INLINE UINT AFXAPI HashKey<CString>(CString key) { return AfxHashString(key); }

/////////////////////////////////////////////////////////////////////////////
// CArray: a growable array. Sizes are INT_PTR; a negative size is an invalid argument.

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() : m_pData(NULL), m_nSize(0), m_nMaxSize(0), m_nGrowBy(-1) {}
    ~CArray() override { RemoveAll(); }
    CArray(const CArray&) = delete;
    CArray& operator=(const CArray&) = delete;

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    INT_PTR GetUpperBound() const { return m_nSize - 1; }
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
    void FreeExtra();
    void RemoveAll() { SetSize(0, -1); }

    const TYPE& GetAt(INT_PTR nIndex) const { CheckIndex(nIndex); return m_pData[nIndex]; }
    TYPE& GetAt(INT_PTR nIndex) { CheckIndex(nIndex); return m_pData[nIndex]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { CheckIndex(nIndex); m_pData[nIndex] = newElement; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& ElementAt(INT_PTR nIndex) { return GetAt(nIndex); }
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }
    const TYPE& operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](INT_PTR nIndex) { return GetAt(nIndex); }

    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
    INT_PTR Add(ARG_TYPE newElement);
    INT_PTR Append(const CArray& src);
    void Copy(const CArray& src);
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);

protected:
    TYPE* m_pData;
    INT_PTR m_nSize;
    INT_PTR m_nMaxSize;
    INT_PTR m_nGrowBy;

private:
    void CheckIndex(INT_PTR nIndex) const
    {
        if (nIndex < 0 || nIndex >= m_nSize)
            AfxThrowInvalidArgException();
    }
    void Reallocate(INT_PTR nNewMax);
};

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(INT_PTR nNewMax)
{
    if (nNewMax < 0 || static_cast<size_t>(nNewMax) > SIZE_MAX / sizeof(TYPE))
        AfxThrowMemoryException();
    TYPE* pNew = NULL;
    if (nNewMax > 0) {
        pNew = static_cast<TYPE*>(::operator new(static_cast<size_t>(nNewMax) * sizeof(TYPE), std::nothrow));
        if (pNew == NULL)
            AfxThrowMemoryException();
        for (INT_PTR i = 0; i < m_nSize; ++i) {
            new (&pNew[i]) TYPE(std::move(m_pData[i]));
            m_pData[i].~TYPE();
        }
    }
    ::operator delete(m_pData);
    m_pData = pNew;
    m_nMaxSize = nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy)
{
    if (nNewSize < 0)
        AfxThrowInvalidArgException();
    if (nGrowBy >= 0)
        m_nGrowBy = nGrowBy;

    if (nNewSize == 0) {
        for (INT_PTR i = 0; i < m_nSize; ++i)
            m_pData[i].~TYPE();
        ::operator delete(m_pData);
        m_pData = NULL;
        m_nSize = m_nMaxSize = 0;
        return;
    }
    if (nNewSize > m_nMaxSize) {
        // Grow geometrically (an eighth, between 4 and 1024 elements) unless a step is set.
        INT_PTR nGrow = m_nGrowBy;
        if (nGrow <= 0) {
            nGrow = m_nSize / 8;
            nGrow = nGrow < 4 ? 4 : (nGrow > 1024 ? 1024 : nGrow);
        }
        INT_PTR nNewMax = m_nMaxSize + nGrow;
        if (nNewMax < nNewSize)
            nNewMax = nNewSize;
        Reallocate(nNewMax);
    }
    for (INT_PTR i = m_nSize; i < nNewSize; ++i)
        new (&m_pData[i]) TYPE();
    for (INT_PTR i = nNewSize; i < m_nSize; ++i)
        m_pData[i].~TYPE();
    m_nSize = nNewSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra()
{
    if (m_nSize != m_nMaxSize)
        Reallocate(m_nSize);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement)
{
    if (nIndex < 0)
        AfxThrowInvalidArgException();
    if (nIndex >= m_nSize) {
        TYPE copy(newElement);  // newElement may live in this array
        SetSize(nIndex + 1, -1);
        m_pData[nIndex] = std::move(copy);
        return;
    }
    m_pData[nIndex] = newElement;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement)
{
    INT_PTR nIndex = m_nSize;
    SetAtGrow(nIndex, newElement);
    return nIndex;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src)
{
    if (this == &src)
        AfxThrowInvalidArgException();
    INT_PTR nOldSize = m_nSize;
    SetSize(m_nSize + src.m_nSize);
    for (INT_PTR i = 0; i < src.m_nSize; ++i)
        m_pData[nOldSize + i] = src.m_pData[i];
    return nOldSize;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src)
{
    if (this == &src)
        return;
    SetSize(src.m_nSize);
    for (INT_PTR i = 0; i < src.m_nSize; ++i)
        m_pData[i] = src.m_pData[i];
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount)
{
    if (nIndex < 0 || nCount <= 0)
        AfxThrowInvalidArgException();
    TYPE copy(newElement);
    if (nIndex >= m_nSize) {
        SetSize(nIndex + nCount, -1);
    } else {
        INT_PTR nOldSize = m_nSize;
        SetSize(m_nSize + nCount, -1);
        for (INT_PTR i = nOldSize - 1; i >= nIndex; --i)
            m_pData[i + nCount] = std::move(m_pData[i]);
    }
    for (INT_PTR i = 0; i < nCount; ++i)
        m_pData[nIndex + i] = copy;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount)
{
    if (nIndex < 0 || nCount < 0 || nIndex + nCount > m_nSize)
        AfxThrowInvalidArgException();
    for (INT_PTR i = nIndex; i + nCount < m_nSize; ++i)
        m_pData[i] = std::move(m_pData[i + nCount]);
    for (INT_PTR i = m_nSize - nCount; i < m_nSize; ++i)
        m_pData[i].~TYPE();
    m_nSize -= nCount;
}

/////////////////////////////////////////////////////////////////////////////
// CMap: a hash map with a fixed number of buckets (17 unless InitHashTable says
// otherwise) whose nodes come from blocks of nBlockSize. Iteration runs through
// the buckets in order; within a bucket the newest key comes first.

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
public:
    class CPair {
    public:
        const KEY key;
        VALUE value;
    protected:
        explicit CPair(ARG_KEY keyval) : key(keyval), value() {}
    };

protected:
    class CAssoc : public CPair {
        friend class CMap;
        CAssoc* pNext;
        UINT nHashValue;
    public:
        explicit CAssoc(ARG_KEY key) : CPair(key), pNext(NULL), nHashValue(0) {}
    };

public:
    explicit CMap(INT_PTR nBlockSize = 10)
        : m_pHashTable(NULL), m_nHashTableSize(17), m_nCount(0), m_pFreeList(NULL),
          m_pBlocks(NULL), m_nBlockSize(nBlockSize > 0 ? nBlockSize : 10) {}
    ~CMap() override { RemoveAll(); }
    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    BOOL Lookup(ARG_KEY key, VALUE& rValue) const
    {
        UINT nBucket, nHash;
        CAssoc* pAssoc = GetAssocAt(key, nBucket, nHash);
        if (pAssoc == NULL)
            return FALSE;
        rValue = pAssoc->value;
        return TRUE;
    }
    const CPair* PLookup(ARG_KEY key) const
    {
        UINT nBucket, nHash;
        return GetAssocAt(key, nBucket, nHash);
    }
    CPair* PLookup(ARG_KEY key)
    {
        UINT nBucket, nHash;
        return GetAssocAt(key, nBucket, nHash);
    }

    VALUE& operator[](ARG_KEY key);
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }
    BOOL RemoveKey(ARG_KEY key);
    void RemoveAll();

    POSITION GetStartPosition() const { return m_nCount == 0 ? NULL : BEFORE_START_POSITION; }
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const;

    UINT GetHashTableSize() const { return m_nHashTableSize; }
    void InitHashTable(UINT hashSize, BOOL bAllocNow = TRUE);

protected:
    CAssoc** m_pHashTable;
    UINT m_nHashTableSize;
    INT_PTR m_nCount;
    CAssoc* m_pFreeList;
    struct CPlex { CPlex* pNext; };
    CPlex* m_pBlocks;
    INT_PTR m_nBlockSize;

    CAssoc* NewAssoc(ARG_KEY key);
    void FreeAssoc(CAssoc* pAssoc);
    CAssoc* GetAssocAt(ARG_KEY key, UINT& nBucket, UINT& nHash) const;
};

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::InitHashTable(UINT nHashSize, BOOL bAllocNow)
{
    if (m_nCount != 0 || nHashSize == 0)
        AfxThrowInvalidArgException();
    delete[] m_pHashTable;
    m_pHashTable = NULL;
    if (bAllocNow) {
        m_pHashTable = new (std::nothrow) CAssoc*[nHashSize];
        if (m_pHashTable == NULL)
            AfxThrowMemoryException();
        memset(m_pHashTable, 0, sizeof(CAssoc*) * nHashSize);
    }
    m_nHashTableSize = nHashSize;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveAll()
{
    if (m_pHashTable != NULL) {
        for (UINT nHash = 0; nHash < m_nHashTableSize; nHash++)
            for (CAssoc* pAssoc = m_pHashTable[nHash]; pAssoc != NULL; pAssoc = pAssoc->pNext)
                pAssoc->~CAssoc();
        delete[] m_pHashTable;
        m_pHashTable = NULL;
    }
    m_nCount = 0;
    m_pFreeList = NULL;
    while (m_pBlocks != NULL) {
        CPlex* pNext = m_pBlocks->pNext;
        ::operator delete(m_pBlocks);
        m_pBlocks = pNext;
    }
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::NewAssoc(ARG_KEY key)
{
    if (m_pFreeList == NULL) {
        // One block holds a link and m_nBlockSize nodes; fresh nodes join the free list.
        size_t nodeSize = (sizeof(CAssoc) + alignof(CAssoc) - 1) / alignof(CAssoc) * alignof(CAssoc);
        size_t header = (sizeof(CPlex) + alignof(CAssoc) - 1) / alignof(CAssoc) * alignof(CAssoc);
        CPlex* pBlock = static_cast<CPlex*>(::operator new(header + nodeSize * m_nBlockSize, std::nothrow));
        if (pBlock == NULL)
            AfxThrowMemoryException();
        pBlock->pNext = m_pBlocks;
        m_pBlocks = pBlock;
        BYTE* pNode = reinterpret_cast<BYTE*>(pBlock) + header + nodeSize * (m_nBlockSize - 1);
        for (INT_PTR i = m_nBlockSize - 1; i >= 0; i--, pNode -= nodeSize) {
            CAssoc* pFree = reinterpret_cast<CAssoc*>(pNode);
            *reinterpret_cast<CAssoc**>(pFree) = m_pFreeList;
            m_pFreeList = pFree;
        }
    }
    CAssoc* pAssoc = m_pFreeList;
    CAssoc* pNextFree = *reinterpret_cast<CAssoc**>(pAssoc);
    new (pAssoc) CAssoc(key);
    m_pFreeList = pNextFree;
    m_nCount++;
    return pAssoc;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FreeAssoc(CAssoc* pAssoc)
{
    pAssoc->~CAssoc();
    *reinterpret_cast<CAssoc**>(pAssoc) = m_pFreeList;
    m_pFreeList = pAssoc;
    m_nCount--;
    if (m_nCount == 0)
        RemoveAll();
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetAssocAt(ARG_KEY key, UINT& nBucket, UINT& nHash) const
{
    nHash = HashKey<ARG_KEY>(key);
    nBucket = nHash % m_nHashTableSize;
    if (m_pHashTable == NULL)
        return NULL;
    for (CAssoc* pAssoc = m_pHashTable[nBucket]; pAssoc != NULL; pAssoc = pAssoc->pNext)
        if (pAssoc->nHashValue == nHash && CompareElements(&pAssoc->key, &key))
            return pAssoc;
    return NULL;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
VALUE& CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator[](ARG_KEY key)
{
    UINT nBucket, nHash;
    CAssoc* pAssoc = GetAssocAt(key, nBucket, nHash);
    if (pAssoc == NULL) {
        if (m_pHashTable == NULL)
            InitHashTable(m_nHashTableSize);
        pAssoc = NewAssoc(key);
        pAssoc->nHashValue = nHash;
        pAssoc->pNext = m_pHashTable[nBucket];
        m_pHashTable[nBucket] = pAssoc;
    }
    return pAssoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveKey(ARG_KEY key)
{
    if (m_pHashTable == NULL)
        return FALSE;
    UINT nHash = HashKey<ARG_KEY>(key);
    CAssoc** ppAssocPrev = &m_pHashTable[nHash % m_nHashTableSize];
    for (CAssoc* pAssoc = *ppAssocPrev; pAssoc != NULL; pAssoc = pAssoc->pNext) {
        if (pAssoc->nHashValue == nHash && CompareElements(&pAssoc->key, &key)) {
            *ppAssocPrev = pAssoc->pNext;
            FreeAssoc(pAssoc);
            return TRUE;
        }
        ppAssocPrev = &pAssoc->pNext;
    }
    return FALSE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetNextAssoc(POSITION& rNextPosition, KEY& rKey,
                                                        VALUE& rValue) const
{
    CAssoc* pAssocRet = reinterpret_cast<CAssoc*>(rNextPosition);
    if (pAssocRet == NULL || m_pHashTable == NULL)
        AfxThrowInvalidArgException();
    if (pAssocRet == reinterpret_cast<CAssoc*>(BEFORE_START_POSITION)) {
        for (UINT nBucket = 0; nBucket < m_nHashTableSize; nBucket++)
            if ((pAssocRet = m_pHashTable[nBucket]) != NULL)
                break;
    }
    CAssoc* pAssocNext = pAssocRet->pNext;
    if (pAssocNext == NULL) {
        for (UINT nBucket = pAssocRet->nHashValue % m_nHashTableSize + 1; nBucket < m_nHashTableSize; nBucket++)
            if ((pAssocNext = m_pHashTable[nBucket]) != NULL)
                break;
    }
    rNextPosition = reinterpret_cast<POSITION>(pAssocNext);
    rKey = pAssocRet->key;
    rValue = pAssocRet->value;
}
