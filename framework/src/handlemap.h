// afxlite internal: the per-thread maps from handles to wrapper objects.
//
// A permanent entry is made by Attach and removed by Detach; the object belongs to
// whoever made it. A temporary entry is made by FromHandle for a handle that has
// no permanent wrapper; the map owns that object and deletes it (after making it
// forget its handle) when the thread's temporaries are cleaned up.
#pragma once
#include <afxwin.h>
#include <map>

template <class T>
class CHandleMapLite {
public:
    // makeTemp creates an unattached wrapper for a handle; forget clears the
    // handle fields of a temporary so that its destructor leaves the handle alone.
    CHandleMapLite(T* (*makeTemp)(HANDLE), void (*forget)(T*)) : m_makeTemp(makeTemp), m_forget(forget) {}
    ~CHandleMapLite() { DeleteTemp(); }
    CHandleMapLite(const CHandleMapLite&) = delete;
    CHandleMapLite& operator=(const CHandleMapLite&) = delete;

    T* FromHandle(HANDLE h)
    {
        if (h == NULL)
            return NULL;
        if (T* p = LookupPermanent(h))
            return p;
        auto it = m_temporary.find(h);
        if (it != m_temporary.end())
            return it->second;
        T* p = m_makeTemp(h);
        if (p != NULL)
            m_temporary[h] = p;
        return p;
    }
    T* LookupPermanent(HANDLE h) const
    {
        auto it = m_permanent.find(h);
        return it == m_permanent.end() ? NULL : it->second;
    }
    void SetPermanent(HANDLE h, T* p) { m_permanent[h] = p; }
    void RemoveHandle(HANDLE h)
    {
        m_permanent.erase(h);
        // A temporary whose handle is detached by hand stops being a temporary.
        m_temporary.erase(h);
    }
    void DeleteTemp()
    {
        std::map<HANDLE, T*> temporary;
        temporary.swap(m_temporary);
        for (auto& entry : temporary) {
            m_forget(entry.second);
            delete entry.second;
        }
    }

private:
    T* (*m_makeTemp)(HANDLE);
    void (*m_forget)(T*);
    std::map<HANDLE, T*> m_permanent;
    std::map<HANDLE, T*> m_temporary;
};

// The calling thread's maps, made on first use and destroyed when the thread ends.
CHandleMapLite<CGdiObject>& AfxLiteGdiMap();
CHandleMapLite<CDC>& AfxLiteDCMap();
CHandleMapLite<CWnd>& AfxLiteWndMap();
