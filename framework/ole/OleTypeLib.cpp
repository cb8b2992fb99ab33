#include "OleTypeLib.h"

#include "common/Paths.h"

#include "core/ModuleState.h"

#include <list>
#include <mutex>

namespace framework {

CString PathOfModule(HINSTANCE module) {
    return common::ModulePath(module).c_str();
}

HRESULT LoadTypeLibFrom(const CString& path, REFGUID tlid, common::ComPtr<ITypeLib>& library) {
    common::ComPtr<ITypeLib> found;
    TLIBATTR* attributes = nullptr;
    HRESULT result = ::LoadTypeLibEx(path, REGKIND_NONE, found.Receive());
    if (SUCCEEDED(result)) {
        result = found->GetLibAttr(&attributes);
    }
    if (FAILED(result)) {
        return result;
    }
    const bool same = attributes->guid == tlid;
    found->ReleaseTLibAttr(attributes);
    if (!same) {
        return TYPE_E_LIBNOTREGISTERED;
    }
    library.Swap(found);
    return S_OK;
}

HRESULT LoadObjectTypeLib(REFGUID tlid, WORD wVerMajor, WORD wVerMinor, LCID lcid, ITypeLib** ppTypeLib) {
    const HRESULT registered = ::LoadRegTypeLib(tlid, wVerMajor, wVerMinor, lcid, ppTypeLib);
    common::ComPtr<ITypeLib> own;
    if (SUCCEEDED(registered) || FAILED(LoadTypeLibFrom(PathOfModule(AfxGetInstanceHandle()), tlid, own))) {
        return registered;
    }
    *ppTypeLib = own.Detach();
    return S_OK;
}

void TypeLibCache::Lock() noexcept {
    const std::lock_guard lock(m_lock);
    ++m_locks;
}

void TypeLibCache::Unlock() noexcept {
    common::ComPtr<ITypeLib> released; // outside the lock
    const std::lock_guard lock(m_lock);
    if (--m_locks == 0) {
        released.Swap(m_library);
    }
}

common::ComPtr<ITypeLib> TypeLibCache::Lookup(LCID lcid) const noexcept {
    const std::lock_guard lock(m_lock);
    return m_lcid == lcid ? m_library.Copy() : common::ComPtr<ITypeLib>();
}

void TypeLibCache::Cache(LCID lcid, ITypeLib* library) noexcept {
    common::ComPtr<ITypeLib> kept(library); // holds the former one afterwards, outside the lock
    const std::lock_guard lock(m_lock);
    if (m_locks > 0) {
        m_lcid = lcid;
        kept.Swap(m_library);
    }
}

CTypeLibCache* TypeLibCacheOf(const GUID* pTypeLibID) {
    static ModuleLock listLock;
    static std::list<CTypeLibCache> caches;
    const std::lock_guard lock(listLock);
    for (CTypeLibCache& cache : caches) {
        if (*cache.m_tlid == *pTypeLibID) {
            return &cache;
        }
    }
    CTypeLibCache& added = caches.emplace_back();
    added.m_tlid = pTypeLibID;
    return &added;
}

} // namespace framework
