#include "Object.h"

constinit CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), nullptr, nullptr};

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const noexcept {
    const CRuntimeClass* type = this;
    while (type && type != pBaseClass) {
        type = type->m_pBaseClass;
    }
    return type != nullptr;
}

CRuntimeClass* CObject::GetRuntimeClass() const {
    return RUNTIME_CLASS(CObject);
}

void CException::Delete() {
    if (m_bAutoDelete) {
        delete this;
    }
}

// NOLINTBEGIN(misc-throw-by-value-catch-by-reference): the documented exceptions are pointers
void AFXAPI AfxThrowUserException() {
    static CUserException exception(FALSE);
    throw &exception;
}

void AFXAPI AfxThrowResourceException() {
    static CResourceException exception(FALSE);
    throw &exception;
}

void AFXAPI AfxThrowNotSupportedException() {
    static CNotSupportedException exception(FALSE);
    throw &exception;
}
// NOLINTEND(misc-throw-by-value-catch-by-reference)
