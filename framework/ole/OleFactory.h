// Class factories of a module, and what its exported functions hand on to.
//
// Every factory is a global object and puts itself on the module's list; DllGetClassObject finds it there by
// CLSID. Covered: creation, aggregation where the class allows it, locking, registration of all factories.
// Not covered: licences, running servers (Register, Revoke).
#pragma once

#include "OleTarget.h"

class COleObjectFactory : public CCmdTarget {
    DECLARE_DYNAMIC(COleObjectFactory)

public:
    /// bMultiInstance concerns running servers only. The ProgID may be null and is not copied.
    COleObjectFactory(REFCLSID clsid, CRuntimeClass* pRuntimeClass, BOOL bMultiInstance, LPCTSTR lpszProgID);
    ~COleObjectFactory() override;

    REFCLSID GetClassID() const noexcept { return m_clsid; }

    /// Writes (TRUE) or removes (FALSE) the class's entries in the registry; FALSE when that failed.
    virtual BOOL UpdateRegistry(BOOL bRegister) = 0;
    /// The same for every factory of the module, up to the first that fails.
    static BOOL PASCAL UpdateRegistryAll(BOOL bRegister = TRUE);

protected:
    /// A new object with one reference, the caller's; null when it could not be made.
    virtual CCmdTarget* OnCreateObject();

    CLSID m_clsid;
    CRuntimeClass* m_pRuntimeClass;
    LPCTSTR m_lpszProgID;

private:
    friend HRESULT AFXAPI AfxDllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv);

    /// Every reference counts as a lock of the module.
    class ClassFactory final : public IClassFactory {
    public:
        explicit ClassFactory(COleObjectFactory& factory) noexcept : m_factory(factory) {}
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
        STDMETHODIMP_(ULONG) AddRef() override;
        STDMETHODIMP_(ULONG) Release() override;
        STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
        STDMETHODIMP LockServer(BOOL lock) override;

    private:
        COleObjectFactory& m_factory;
        std::atomic<LONG> m_references = 0;
    };

    HRESULT Create(IUnknown* outer, REFIID iid, void** object);

    ClassFactory m_xClassFactory{*this};
    COleObjectFactory* m_pNextFactory = nullptr;
};

/// Body of a module's DllGetClassObject.
HRESULT AFXAPI AfxDllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv);
/// Body of a module's DllCanUnloadNow: S_OK when no object, enumerator, class factory or lock is left.
HRESULT AFXAPI AfxDllCanUnloadNow();

#define DECLARE_OLECREATE_EX(class_name)                                                                     \
protected:                                                                                                   \
    class class_name##Factory : public COleObjectFactory {                                                   \
    public:                                                                                                  \
        class_name##Factory(REFCLSID clsid, CRuntimeClass* pRuntimeClass, BOOL bMultiInstance,               \
                            LPCTSTR lpszProgID)                                                              \
            : COleObjectFactory(clsid, pRuntimeClass, bMultiInstance, lpszProgID) {}                         \
        BOOL UpdateRegistry(BOOL bRegister) override;                                                        \
    };                                                                                                       \
    friend class class_name##Factory;                                                                        \
    static class_name##Factory factory;                                                                      \
                                                                                                             \
public:                                                                                                      \
    static const GUID guid;                                                                                  \
    HRESULT GetClassID(LPCLSID pclsid) override;

#define IMPLEMENT_OLECREATE_EX(class_name, external_name, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8)         \
    constinit const GUID class_name::guid = {l, w1, w2, {b1, b2, b3, b4, b5, b6, b7, b8}};                   \
    class_name::class_name##Factory class_name::factory(class_name::guid, RUNTIME_CLASS(class_name), FALSE,  \
                                                        _T(external_name));                                  \
    HRESULT class_name::GetClassID(LPCLSID pclsid) {                                                         \
        *pclsid = class_name::guid;                                                                          \
        return S_OK;                                                                                         \
    }
