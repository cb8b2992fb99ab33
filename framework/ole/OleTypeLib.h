// Type libraries of automation objects: the macros that name a class's library, and the cache of loaded ones.
#pragma once

#include "common/ComPtr.h"
#include "core/CString.h"
#include "core/ModuleState.h"

namespace framework {

/// Keeps a type library loaded, for one locale, while the cache is locked. Any thread may call it.
class TypeLibCache {
public:
    void Lock() noexcept;
    /// The last unlock releases the library.
    void Unlock() noexcept;
    /// The library for a locale; null when it is not the one kept.
    common::ComPtr<ITypeLib> Lookup(LCID lcid) const noexcept;
    /// Keeps a library while the cache is locked.
    void Cache(LCID lcid, ITypeLib* library) noexcept;

    const GUID* m_tlid = nullptr; ///< whose cache this is; null while the object is free

private:
    mutable ModuleLock m_lock;
    LONG m_locks = 0;
    LCID m_lcid = 0;
    common::ComPtr<ITypeLib> m_library;
};

} // namespace framework

class CTypeLibCache : public framework::TypeLibCache {};

namespace framework {

/// The module's cache for a library, made on first use; null when memory is out.
CTypeLibCache* TypeLibCacheOf(const GUID* pTypeLibID);
/// Full path of a module; empty when it is not known.
CString PathOfModule(HINSTANCE module);
/// The library in a file; TYPE_E_LIBNOTREGISTERED when its GUID is another.
HRESULT LoadTypeLibFrom(const CString& path, REFGUID tlid, common::ComPtr<ITypeLib>& library);
/// The registered library for a locale. When there is none, that of the module itself: a host may have
/// activated the module without registration.
HRESULT LoadObjectTypeLib(REFGUID tlid, WORD wVerMajor, WORD wVerMinor, LCID lcid, ITypeLib** ppTypeLib);

} // namespace framework

#define DECLARE_OLETYPELIB(class_name)                                                                       \
protected:                                                                                                   \
    UINT GetTypeInfoCount() override;                                                                        \
    HRESULT GetTypeLib(LCID lcid, ITypeLib** ppTypeLib) override;                                            \
    CTypeLibCache* GetTypeLibCache() override;

#define IMPLEMENT_OLETYPELIB(class_name, tlid, wVerMajor, wVerMinor)                                         \
    UINT class_name::GetTypeInfoCount() {                                                                    \
        return 1;                                                                                            \
    }                                                                                                        \
    HRESULT class_name::GetTypeLib(LCID lcid, ITypeLib** ppTypeLib) {                                        \
        return framework::LoadObjectTypeLib(tlid, wVerMajor, wVerMinor, lcid, ppTypeLib);                    \
    }                                                                                                        \
    CTypeLibCache* class_name::GetTypeLibCache() {                                                           \
        return framework::TypeLibCacheOf(&tlid);                                                             \
    }
