#include "OleTarget.h"

#include "OleTypeLib.h"

using namespace framework;

namespace framework {

void OleTargetStateDeleter::operator()(OleTargetState* state) const noexcept {
    if (state->typeLibCache) {
        state->typeLibCache->Unlock();
    }
    delete state;
}

STDMETHODIMP OleIdentity::QueryInterface(REFIID iid, void** object) {
    return static_cast<HRESULT>(m_target.InternalQueryInterface(&iid, object));
}

STDMETHODIMP_(ULONG) OleIdentity::AddRef() {
    return m_target.InternalAddRef();
}

STDMETHODIMP_(ULONG) OleIdentity::Release() {
    return m_target.InternalRelease();
}

bool OleIsOnItsThread(const CCmdTarget& target) noexcept {
    return !target.m_ole || target.m_ole->thread == ::GetCurrentThreadId();
}

} // namespace framework

OleTargetState& CCmdTarget::NeedOleState() {
    if (!m_ole) {
        m_ole.reset(new OleTargetState(*this));
    }
    return *m_ole;
}

void CCmdTarget::EnableAutomation() {
    NeedOleState().dispatch.emplace(*this);
}

void CCmdTarget::EnableAggregation() {
    NeedOleState().aggregatable = true;
}

BOOL CCmdTarget::Aggregate(IUnknown* outer) {
    if (!m_ole || !m_ole->aggregatable) {
        return FALSE;
    }
    m_ole->outer = outer;
    return TRUE;
}

void CCmdTarget::EnableTypeLib() {
    OleTargetState& state = NeedOleState();
    CTypeLibCache* cache = GetTypeLibCache();
    if (cache && !state.typeLibCache) {
        cache->Lock();
        state.typeLibCache = cache;
    }
}

IDispatch* CCmdTarget::GetIDispatch(BOOL bAddRef) {
    if (!m_ole || !m_ole->dispatch) {
        return nullptr;
    }
    if (bAddRef) {
        ExternalAddRef();
    }
    return &*m_ole->dispatch;
}

BOOL CCmdTarget::GetDispatchIID(IID* pIID) {
    static_cast<void>(pIID);
    return FALSE;
}

UINT CCmdTarget::GetTypeInfoCount() {
    return 0;
}

CTypeLibCache* CCmdTarget::GetTypeLibCache() {
    return nullptr;
}

HRESULT CCmdTarget::GetTypeLib(LCID lcid, ITypeLib** ppTypeLib) {
    static_cast<void>(lcid);
    *ppTypeLib = nullptr;
    return TYPE_E_CANTLOADLIBRARY;
}

HRESULT CCmdTarget::GetTypeInfoOfGuid(LCID lcid, const GUID& guid, ITypeInfo** ppTypeInfo) {
    *ppTypeInfo = nullptr;
    CTypeLibCache* cache = GetTypeLibCache();
    common::ComPtr<ITypeLib> library = cache ? cache->Lookup(lcid) : common::ComPtr<ITypeLib>();
    if (!library) {
        const HRESULT loaded = GetTypeLib(lcid, library.Receive());
        if (FAILED(loaded)) {
            return loaded;
        }
        if (cache) {
            cache->Cache(lcid, library.Get());
        }
    }
    return library->GetTypeInfoOfGuid(guid, ppTypeInfo);
}

BOOL CCmdTarget::IsInvokeAllowed(DISPID dispid) {
    static_cast<void>(dispid);
    return TRUE;
}

void CCmdTarget::OnFinalRelease() {
    delete this;
}

const DispatchMap* CCmdTarget::GetThisDispatchMap() {
    static constexpr DispatchEntry entries[] = {{}};
    static constexpr DispatchMap map = {nullptr, entries};
    return &map;
}

const DispatchMap* CCmdTarget::GetDispatchMap() const {
    return GetThisDispatchMap();
}

const InterfaceMap* CCmdTarget::GetThisInterfaceMap() {
    static constexpr InterfaceEntry entries[] = {{nullptr, nullptr}};
    static constexpr InterfaceMap map = {nullptr, entries};
    return &map;
}

const InterfaceMap* CCmdTarget::GetInterfaceMap() const {
    return GetThisInterfaceMap();
}

namespace {

/// The part that answers an interface; null when no line of the maps names it.
IUnknown* FindPart(CCmdTarget& target, const InterfaceMap* map, REFIID iid) {
    while (map) {
        for (const InterfaceEntry* entry = map->pEntry; entry->piid; ++entry) {
            if (*entry->piid == iid) {
                return entry->pfnGetPart(target);
            }
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

} // namespace

DWORD CCmdTarget::InternalQueryInterface(const void* iid, void** ppvObj) {
    if (!ppvObj) {
        return static_cast<DWORD>(E_POINTER);
    }
    *ppvObj = nullptr;
    if (!m_ole) {
        return static_cast<DWORD>(E_NOINTERFACE);
    }
    const IID& wanted = *static_cast<const IID*>(iid);
    IUnknown* found = nullptr;
    IID primary{};
    if (wanted == IID_IUnknown) {
        found = &m_ole->identity;
    } else if (wanted == IID_IDispatch || (GetDispatchIID(&primary) && wanted == primary)) {
        found = GetIDispatch(FALSE);
    } else {
        found = FindPart(*this, GetInterfaceMap(), wanted);
    }
    if (!found) {
        return static_cast<DWORD>(E_NOINTERFACE);
    }
    found->AddRef();
    *ppvObj = found;
    return static_cast<DWORD>(S_OK);
}

DWORD CCmdTarget::InternalAddRef() {
    return static_cast<DWORD>(++NeedOleState().references);
}

DWORD CCmdTarget::InternalRelease() {
    const LONG left = --NeedOleState().references;
    if (left > 0) {
        return static_cast<DWORD>(left);
    }
    if (!OleIsOnItsThread(*this)) {
        m_ole->references = 1; // that of the list
        Apartment::Defer(*this, m_ole->thread);
        return 0;
    }
    // What runs during the clean-up may take and release references: they must not start it again.
    constexpr LONG kDying = 0x40000000;
    m_ole->references = kDying;
    m_ole->outer = nullptr;
    OleProtect([this]() -> HRESULT {
        OnFinalRelease();
        return S_OK;
    });
    return 0;
}

DWORD CCmdTarget::ExternalQueryInterface(const void* iid, void** ppvObj) {
    if (m_ole && m_ole->outer) {
        return static_cast<DWORD>(m_ole->outer->QueryInterface(*static_cast<const IID*>(iid), ppvObj));
    }
    return InternalQueryInterface(iid, ppvObj);
}

DWORD CCmdTarget::ExternalAddRef() {
    return m_ole && m_ole->outer ? m_ole->outer->AddRef() : InternalAddRef();
}

DWORD CCmdTarget::ExternalRelease() {
    return m_ole && m_ole->outer ? m_ole->outer->Release() : InternalRelease();
}
