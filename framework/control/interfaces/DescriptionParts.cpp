#include "DescriptionParts.h"

#include "control/ControlParts.h"

#include <algorithm>

namespace framework {

STDMETHODIMP SpecifyPropertyPagesPart::GetPages(CAUUID* pages) {
    return Guard(pages, [&]() -> HRESULT {
        ULONG count = 0;
        const CLSID* ids = m_control.GetPropPageIDs(count);
        if (count == 0) {
            return S_OK;
        }
        pages->pElems = static_cast<GUID*>(::CoTaskMemAlloc(count * sizeof(GUID)));
        if (!pages->pElems) {
            return E_OUTOFMEMORY;
        }
        std::copy_n(ids, count, pages->pElems);
        pages->cElems = count;
        return S_OK;
    });
}

STDMETHODIMP ProvideClassInfoPart::GetClassInfo(ITypeInfo** info) {
    return Guard(info, [&]() -> HRESULT {
        CLSID clsid{};
        m_control.GetClassID(&clsid);
        return m_control.GetTypeInfoOfGuid(m_control.AmbientLocaleID(), clsid, info);
    });
}

STDMETHODIMP ProvideClassInfoPart::GetGUID(DWORD kind, GUID* guid) {
    if (!guid) {
        return E_POINTER;
    }
    *guid = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
        return E_INVALIDARG;
    }
    *guid = m_parts.events.Interface();
    return S_OK;
}

} // namespace framework
