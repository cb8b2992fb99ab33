// The documented macros of classes and maps for the headers that headers.py makes: each declares what its
// documentation says that the class gets, and checks that what it names fits. Nothing behind them works.
#pragma once

#include <tchar.h>

#include <type_traits>

namespace porters {

template <class Signature>
struct Handler;

/// Accepts a member function of this signature only.
template <class Result, class... Args>
struct Handler<Result(Args...)> {
    template <class Class>
    static void Accept(Result (Class::*member)(Args...));
};

template <class Class, class Result, class... Args>
void AcceptMethod(LPCTSTR name, DISPID id, Result (Class::*method)(Args...), VARTYPE result,
                  const char* params);
template <class Class, class Type>
void AcceptProperty(LPCTSTR name, DISPID id, Type Class::*variable, void (Class::*afterSet)(), VARTYPE type);
template <class Class, class... Args>
void AcceptEvent(LPCTSTR name, DISPID id, void (Class::*fire)(Args...), const char* params);

struct ManagedState {
    explicit ManagedState(AFX_MODULE_STATE* state);
    ~ManagedState();
};

} // namespace porters

// Run-time classes
#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)
#define DECLARE_DYNAMIC(class_name)                                                                          \
public:                                                                                                      \
    static CRuntimeClass class##class_name;                                                                  \
    virtual CRuntimeClass* GetRuntimeClass() const;
#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    static_assert(std::is_base_of_v<base_class_name, class_name>);                                           \
    CRuntimeClass* class_name::GetRuntimeClass() const {                                                     \
        return RUNTIME_CLASS(class_name);                                                                    \
    }
#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* PASCAL CreateObject();
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                           \
    CObject* PASCAL class_name::CreateObject() {                                                             \
        return new class_name;                                                                               \
    }

// Message maps; headers.py makes the entries
#define DECLARE_MESSAGE_MAP()                                                                                \
private:                                                                                                     \
    void CheckMessageMap();                                                                                  \
                                                                                                             \
protected:
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    void theClass::CheckMessageMap() {                                                                       \
        using ThisClass = theClass;                                                                          \
        static_assert(std::is_base_of_v<baseClass, ThisClass>);
#define END_MESSAGE_MAP() }

// Module state
#define AFX_MANAGE_STATE(pModuleState) porters::ManagedState afxModuleState(pModuleState);

// Automation
#define VTS_NONE ""
#define VTS_I2 "2"
#define VTS_I4 "4"
#define VTS_R8 "8"
#define VTS_BOOL "B"
#define VTS_BSTR "S"
#define DECLARE_DISPATCH_MAP()                                                                               \
private:                                                                                                     \
    void CheckDispatchMap();                                                                                 \
                                                                                                             \
protected:
#define BEGIN_DISPATCH_MAP(theClass, baseClass)                                                              \
    void theClass::CheckDispatchMap() {                                                                      \
        static_assert(std::is_base_of_v<baseClass, theClass>);
#define END_DISPATCH_MAP() }
#define DISP_FUNCTION_ID(theClass, pszName, dispid, pfnMember, vtRetVal, vtsParams)                          \
    porters::AcceptMethod(_T(pszName), dispid, &theClass::pfnMember, vtRetVal, vtsParams);
#define DISP_PROPERTY_NOTIFY_ID(theClass, pszName, dispid, memberName, pfnAfterSet, vtPropType)              \
    porters::AcceptProperty(_T(pszName), dispid, &theClass::memberName, &theClass::pfnAfterSet, vtPropType);

// Events
#define DECLARE_EVENT_MAP()                                                                                  \
private:                                                                                                     \
    void CheckEventMap();                                                                                    \
                                                                                                             \
protected:
#define BEGIN_EVENT_MAP(theClass, baseClass)                                                                 \
    void theClass::CheckEventMap() {                                                                         \
        using ThisClass = theClass;                                                                          \
        static_assert(std::is_base_of_v<baseClass, ThisClass>);
#define END_EVENT_MAP() }
#define EVENT_CUSTOM_ID(pszName, dispid, pfnFire, vtsParams)                                                 \
    porters::AcceptEvent(_T(pszName), dispid, &ThisClass::pfnFire, vtsParams);
#define EVENT_PARAM(vtsParams) (BYTE*)(vtsParams)

// Interface maps
#define DECLARE_INTERFACE_MAP()
#define BEGIN_INTERFACE_MAP(theClass, baseClass)
#define INTERFACE_PART(theClass, iid, localClass)
#define END_INTERFACE_MAP()

// Class factories
#define DECLARE_OLECREATE_EX(class_name)                                                                     \
protected:                                                                                                   \
    class class_name##Factory : public COleObjectFactory {                                                   \
    public:                                                                                                  \
        using COleObjectFactory::COleObjectFactory;                                                          \
        virtual BOOL UpdateRegistry(BOOL bRegister);                                                         \
    };                                                                                                       \
    friend class class_name##Factory;                                                                        \
    static class_name##Factory factory;                                                                      \
                                                                                                             \
public:                                                                                                      \
    static const GUID guid;                                                                                  \
    virtual HRESULT GetClassID(LPCLSID pclsid);
#define IMPLEMENT_OLECREATE_EX(class_name, external_name, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8)         \
    const GUID class_name::guid = {l, w1, w2, {b1, b2, b3, b4, b5, b6, b7, b8}};                             \
    class_name::class_name##Factory class_name::factory(class_name::guid, RUNTIME_CLASS(class_name), FALSE,  \
                                                        _T(external_name));                                  \
    HRESULT class_name::GetClassID(LPCLSID pclsid) {                                                         \
        *pclsid = class_name::guid;                                                                          \
        return NOERROR;                                                                                      \
    }

// Type libraries
#define DECLARE_OLETYPELIB(class_name)                                                                       \
protected:                                                                                                   \
    virtual UINT GetTypeInfoCount();                                                                         \
    virtual HRESULT GetTypeLib(LCID lcid, LPTYPELIB* ppTypeLib);                                             \
    virtual CTypeLibCache* GetTypeLibCache();
#define IMPLEMENT_OLETYPELIB(class_name, tlid, wVerMajor, wVerMinor)                                         \
    UINT class_name::GetTypeInfoCount() {                                                                    \
        return 1;                                                                                            \
    }                                                                                                        \
    HRESULT class_name::GetTypeLib(LCID lcid, LPTYPELIB* ppTypeLib) {                                        \
        return ::LoadRegTypeLib(tlid, wVerMajor, wVerMinor, lcid, ppTypeLib);                                \
    }                                                                                                        \
    CTypeLibCache* class_name::GetTypeLibCache() {                                                           \
        return nullptr;                                                                                      \
    }

// Control classes
#define DECLARE_OLECTLTYPE(class_name)                                                                       \
protected:                                                                                                   \
    virtual UINT GetUserTypeNameID();                                                                        \
    virtual DWORD GetMiscStatus();
#define IMPLEMENT_OLECTLTYPE(class_name, idsUserTypeName, dwOleMisc)                                         \
    UINT class_name::GetUserTypeNameID() {                                                                   \
        return idsUserTypeName;                                                                              \
    }                                                                                                        \
    DWORD class_name::GetMiscStatus() {                                                                      \
        return dwOleMisc;                                                                                    \
    }
#define DECLARE_PROPPAGEIDS(class_name)                                                                      \
protected:                                                                                                   \
    virtual LPCLSID GetPropPageIDs(ULONG& cPropPages);
#define BEGIN_PROPPAGEIDS(class_name, count)                                                                 \
    LPCLSID class_name::GetPropPageIDs(ULONG& cPropPages) {                                                  \
        cPropPages = count;                                                                                  \
        static CLSID pages[count] = {
#define PROPPAGEID(clsid) clsid,
#define END_PROPPAGEIDS(class_name)                                                                          \
    }                                                                                                        \
    ;                                                                                                        \
    return pages;                                                                                            \
    }
