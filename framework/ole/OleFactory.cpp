#include "OleFactory.h"

using namespace framework;

IMPLEMENT_DYNAMIC(COleObjectFactory, CCmdTarget)

COleObjectFactory::COleObjectFactory(REFCLSID clsid, CRuntimeClass* pRuntimeClass, BOOL bMultiInstance,
                                     LPCTSTR lpszProgID)
    : m_clsid(clsid), m_pRuntimeClass(pRuntimeClass), m_lpszProgID(lpszProgID) {
    static_cast<void>(bMultiInstance);
    COleObjectFactory** end = &AfxGetStaticModuleState()->m_pFactoryList;
    while (*end) {
        end = &(*end)->m_pNextFactory;
    }
    *end = this;
}

COleObjectFactory::~COleObjectFactory() {
    COleObjectFactory** place = &AfxGetStaticModuleState()->m_pFactoryList;
    while (*place && *place != this) {
        place = &(*place)->m_pNextFactory;
    }
    if (*place) {
        *place = m_pNextFactory;
    }
}

BOOL PASCAL COleObjectFactory::UpdateRegistryAll(BOOL bRegister) {
    for (COleObjectFactory* factory = AfxGetStaticModuleState()->m_pFactoryList; factory;
         factory = factory->m_pNextFactory) {
        if (!factory->UpdateRegistry(bRegister)) {
            return FALSE;
        }
    }
    return TRUE;
}

CCmdTarget* COleObjectFactory::OnCreateObject() {
    CObject* object = m_pRuntimeClass->CreateObject();
    return object && object->IsKindOf(RUNTIME_CLASS(CCmdTarget)) ? static_cast<CCmdTarget*>(object) : nullptr;
}

HRESULT COleObjectFactory::Create(IUnknown* outer, REFIID iid, void** object) {
    Apartment::ReleaseDeferred();
    const Apartment::Entry entry;
    if (!entry.IsAllowed()) {
        return RPC_E_WRONG_THREAD;
    }
    CCmdTarget* target = OnCreateObject();
    if (!target) {
        return E_FAIL;
    }
    HRESULT result = CLASS_E_NOAGGREGATION;
    if (!outer || TargetAccess::Aggregate(*target, outer)) {
        result = static_cast<HRESULT>(target->InternalQueryInterface(&iid, object));
    }
    target->InternalRelease();
    return result;
}

STDMETHODIMP COleObjectFactory::ClassFactory::QueryInterface(REFIID iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
    if (!*object) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) COleObjectFactory::ClassFactory::AddRef() {
    AfxOleLockApp();
    return static_cast<ULONG>(++m_references);
}

STDMETHODIMP_(ULONG) COleObjectFactory::ClassFactory::Release() {
    const LONG left = --m_references;
    AfxOleUnlockApp();
    return static_cast<ULONG>(left);
}

STDMETHODIMP COleObjectFactory::ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (outer && iid != IID_IUnknown) {
        return CLASS_E_NOAGGREGATION;
    }
    return OleProtect([&] { return m_factory.Create(outer, iid, object); });
}

STDMETHODIMP COleObjectFactory::ClassFactory::LockServer(BOOL lock) {
    lock ? AfxOleLockApp() : AfxOleUnlockApp();
    return S_OK;
}

HRESULT AFXAPI AfxDllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv) {
    if (!ppv) {
        return E_POINTER;
    }
    *ppv = nullptr;
    for (COleObjectFactory* factory = AfxGetStaticModuleState()->m_pFactoryList; factory;
         factory = factory->m_pNextFactory) {
        if (factory->m_clsid == rclsid) {
            return factory->m_xClassFactory.QueryInterface(riid, ppv);
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT AFXAPI AfxDllCanUnloadNow() {
    Apartment::ReleaseDeferred();
    return AfxOleCanExitApp() ? S_OK : S_FALSE;
}
