// CObject with run-time class information, and the framework's exceptions.
//
// Covered: IsKindOf, creation by class, the DYNAMIC and DYNCREATE macros. Not covered: serialisation,
// diagnostics.
#pragma once

#include "Types.h"

class CObject;

/// What is known of a class at run time; one constant-initialised object per class, never deleted.
struct CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;               ///< bytes
    CObject* (*m_pfnCreateObject)(); ///< null for a class that cannot be created by class
    CRuntimeClass* m_pBaseClass;     ///< null for CObject

    /// A new object, owned by the caller; null for a class without dynamic creation.
    CObject* CreateObject() const;
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const noexcept;
};

/// Root of the framework's classes. Objects are not copyable.
class CObject {
public:
    virtual ~CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    virtual CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const { return GetRuntimeClass()->IsDerivedFrom(pClass); }

    static CRuntimeClass classCObject;

protected:
    CObject() = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                                                          \
public:                                                                                                      \
    static CRuntimeClass class##class_name;                                                                  \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* CreateObject();

#define FRAMEWORK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, create)                                \
    constinit CRuntimeClass class_name::class##class_name = {#class_name, sizeof(class_name), create,        \
                                                             RUNTIME_CLASS(base_class_name)};                \
    CRuntimeClass* class_name::GetRuntimeClass() const {                                                     \
        return RUNTIME_CLASS(class_name);                                                                    \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    FRAMEWORK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    CObject* class_name::CreateObject() {                                                                    \
        return new class_name;                                                                               \
    }                                                                                                        \
    FRAMEWORK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, &class_name::CreateObject)

/// Base of the framework's exceptions, which are thrown as pointers. Those that the framework throws itself
/// are static objects: Delete leaves them alone, so a handler that forgets it leaks nothing.
class CException : public CObject {
    DECLARE_DYNAMIC(CException)

public:
    explicit CException(BOOL bAutoDelete) noexcept : m_bAutoDelete(bAutoDelete) {}

    /// Frees the exception when it was made with `new`; every handler calls it when it is done.
    void Delete();

private:
    BOOL m_bAutoDelete;
};

/// Ends a data exchange. The user has seen the reason already, or needs none.
class CUserException : public CException {
    DECLARE_DYNAMIC(CUserException)
public:
    using CException::CException;
};

/// A system resource could not be made or found.
class CResourceException : public CException {
    DECLARE_DYNAMIC(CResourceException)
public:
    using CException::CException;
};

/// What was asked for cannot be done, such as binding a control that does not exist.
class CNotSupportedException : public CException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    using CException::CException;
};

[[noreturn]] void AFXAPI AfxThrowUserException();
[[noreturn]] void AFXAPI AfxThrowResourceException();
[[noreturn]] void AFXAPI AfxThrowNotSupportedException();
