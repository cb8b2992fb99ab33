#include "BrowsingParts.h"

#include "control/ControlParts.h"

#include <algorithm>

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

STDMETHODIMP PerPropertyBrowsingPart::GetDisplayString(DISPID id, BSTR* text) {
    return Guard(text, [&]() -> HRESULT {
        CString shown;
        if (!m_control.OnGetDisplayString(id, shown)) {
            return S_FALSE;
        }
        *text = shown.AllocSysString();
        return S_OK;
    });
}

STDMETHODIMP PerPropertyBrowsingPart::MapPropertyToPage(DISPID id, CLSID* page) {
    return Guard(page, [&]() -> HRESULT {
        BOOL optional = FALSE;
        return m_control.OnMapPropertyToPage(id, page, &optional) ? S_OK : PERPROP_E_NOPAGEAVAILABLE;
    });
}

STDMETHODIMP PerPropertyBrowsingPart::GetPredefinedStrings(DISPID, CALPOLESTR* texts, CADWORD* cookies) {
    if (!texts || !cookies) {
        return E_POINTER;
    }
    *texts = {0, nullptr};
    *cookies = {0, nullptr};
    return E_NOTIMPL; // no property has a list of values
}

STDMETHODIMP PerPropertyBrowsingPart::GetPredefinedValue(DISPID, DWORD, VARIANT* value) {
    if (!value) {
        return E_POINTER;
    }
    ::VariantInit(value);
    return E_NOTIMPL;
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
