#include "OleTypeLib.h"

#include <list>

void CTypeLibCache::Unlock() noexcept {
    if (--m_locks == 0) {
        m_library.Reset();
    }
}

OlePtr<ITypeLib> CTypeLibCache::Lookup(LCID lcid) const noexcept {
    return m_lcid == lcid ? m_library.Copy() : OlePtr<ITypeLib>();
}

void CTypeLibCache::Cache(LCID lcid, ITypeLib* library) noexcept {
    if (m_locks > 0) {
        m_lcid = lcid;
        m_library = OlePtr<ITypeLib>(library);
    }
}

CTypeLibCache* AFXAPI AfxGetTypeLibCache(const GUID* pTypeLibID) {
    static std::list<CTypeLibCache> caches;
    for (CTypeLibCache& cache : caches) {
        if (*cache.m_tlid == *pTypeLibID) {
            return &cache;
        }
    }
    CTypeLibCache& added = caches.emplace_back();
    added.m_tlid = pTypeLibID;
    return &added;
}
