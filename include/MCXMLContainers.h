// The containers of the UI description reader and its callers.
#pragma once
#include <afxtempl.h>

// The framework's growable array under the reader's name; elements stay in the
// order of Add. Who deletes the records an array of pointers holds is up to the
// operation that filled it.
template <class TYPE, class ARG_TYPE = const TYPE&>
class MCArray : public CArray<TYPE, ARG_TYPE> {
public:
    MCArray() {}
    virtual ~MCArray() {}
};

// A keyed map with the framework's CMap interface.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class MCMap : public CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> {
public:
    explicit MCMap(INT_PTR nBlockSize = 10) : CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>(nBlockSize) {}
    virtual ~MCMap() {}
};

// A CMap that also lists its keys in the order of their first insertion, so that
// a caller can walk it in document order. Setting an existing key again replaces
// the value and keeps the key where it was.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class MCOrderedMap : public CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> {
    typedef CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> Base;

public:
    explicit MCOrderedMap(INT_PTR nBlockSize = 10) : Base(nBlockSize) {}
    virtual ~MCOrderedMap() {}

    VALUE& operator[](ARG_KEY key)
    {
        if (Base::PLookup(key) == NULL)
            m_arrKeys.Add(KEY(key));
        return Base::operator[](key);
    }
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }

    BOOL RemoveKey(ARG_KEY key)
    {
        if (!Base::RemoveKey(key))
            return FALSE;
        for (INT_PTR i = 0; i < m_arrKeys.GetSize(); ++i) {
            if (CompareElements(&m_arrKeys[i], &key)) {
                m_arrKeys.RemoveAt(i);
                break;
            }
        }
        return TRUE;
    }
    void RemoveAll()
    {
        Base::RemoveAll();
        m_arrKeys.RemoveAll();
    }

    // The keys in the order of their first insertion.
    const MCArray<KEY>& GetKeys() const { return m_arrKeys; }
    INT_PTR GetKeyCount() const { return m_arrKeys.GetSize(); }
    const KEY& GetKeyAt(INT_PTR nIndex) const { return m_arrKeys[nIndex]; }

private:
    MCArray<KEY> m_arrKeys;
};

// Deletes every record that a map of heap records holds and empties the map:
// the reader's callers own what it allocates into their maps.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void MDeleteMapValues(CMap<KEY, ARG_KEY, VALUE*, ARG_VALUE>& map)
{
    for (POSITION position = map.GetStartPosition(); position != NULL;) {
        KEY key;
        VALUE* value = NULL;
        map.GetNextAssoc(position, key, value);
        delete value;
    }
    map.RemoveAll();
}

// The same for an ordered map, whose key order is emptied too.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void MDeleteMapValues(MCOrderedMap<KEY, ARG_KEY, VALUE*, ARG_VALUE>& map)
{
    MDeleteMapValues(static_cast<CMap<KEY, ARG_KEY, VALUE*, ARG_VALUE>&>(map));
    map.RemoveAll();
}
