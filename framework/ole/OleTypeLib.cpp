#include "OleTypeLib.h"

#include "core/ModuleState.h"

#include <list>

CString AfxModulePath(HINSTANCE module) {
    constexpr DWORD kLongest = 32768;
    CString path;
    LPTSTR buffer = path.GetBuffer(kLongest);
    const DWORD length = ::GetModuleFileName(module, buffer, kLongest);
    path.ReleaseBuffer(length < kLongest ? static_cast<int>(length) : 0);
    return path;
}

HRESULT AfxLoadTypeLibOf(const CString& path, REFGUID tlid, common::ComPtr<ITypeLib>& library) {
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

HRESULT AfxLoadTypeLib(REFGUID tlid, WORD wVerMajor, WORD wVerMinor, LCID lcid, ITypeLib** ppTypeLib) {
    const HRESULT registered = ::LoadRegTypeLib(tlid, wVerMajor, wVerMinor, lcid, ppTypeLib);
    common::ComPtr<ITypeLib> own;
    if (SUCCEEDED(registered) || FAILED(AfxLoadTypeLibOf(AfxModulePath(AfxGetInstanceHandle()), tlid, own))) {
        return registered;
    }
    *ppTypeLib = own.Detach();
    return S_OK;
}

void CTypeLibCache::Unlock() noexcept {
    if (--m_locks == 0) {
        m_library.Reset();
    }
}

common::ComPtr<ITypeLib> CTypeLibCache::Lookup(LCID lcid) const noexcept {
    return m_lcid == lcid ? m_library.Copy() : common::ComPtr<ITypeLib>();
}

void CTypeLibCache::Cache(LCID lcid, ITypeLib* library) noexcept {
    if (m_locks > 0) {
        m_lcid = lcid;
        m_library = common::ComPtr<ITypeLib>(library);
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
