#include "OleDispatch.h"

#include "OleArguments.h"
#include "OleTarget.h"

#include <algorithm>

namespace framework {

STDMETHODIMP OleDispatchPart::QueryInterface(REFIID iid, void** object) {
    return static_cast<HRESULT>(m_target.ExternalQueryInterface(&iid, object));
}

STDMETHODIMP_(ULONG) OleDispatchPart::AddRef() {
    return m_target.ExternalAddRef();
}

STDMETHODIMP_(ULONG) OleDispatchPart::Release() {
    return m_target.ExternalRelease();
}

template <class Accept>
const DispatchEntry* OleDispatchPart::Find(Accept accept) const {
    const DispatchMap* map = m_target.GetDispatchMap();
    while (map) {
        for (const DispatchEntry* entry = map->lpEntries; entry->lpszName; ++entry) {
            if (accept(*entry)) {
                return entry;
            }
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

HRESULT OleDispatchPart::OwnTypeInfo(LCID lcid, ITypeInfo** info) {
    IID primary{};
    return m_target.GetDispatchIID(&primary) ? m_target.GetTypeInfoOfGuid(lcid, primary, info)
                                             : TYPE_E_ELEMENTNOTFOUND;
}

STDMETHODIMP OleDispatchPart::GetTypeInfoCount(UINT* count) {
    return OleGuard(m_target, count, [&]() -> HRESULT {
        *count = m_target.GetTypeInfoCount();
        return S_OK;
    });
}

STDMETHODIMP OleDispatchPart::GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) {
    return OleGuard(m_target, info, [&]() -> HRESULT {
        return index < m_target.GetTypeInfoCount() ? OwnTypeInfo(lcid, info) : DISP_E_BADINDEX;
    });
}

STDMETHODIMP OleDispatchPart::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) {
    if (ids) {
        std::fill_n(ids, count, DISPID_UNKNOWN);
    }
    return OleGuard(m_target, [&]() -> HRESULT {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (!names || !ids || count == 0) {
            return E_INVALIDARG;
        }
        const DispatchEntry* entry = Find([&](const DispatchEntry& line) {
            return names[0] && ::CompareStringOrdinal(line.lpszName, -1, names[0], -1, TRUE) == CSTR_EQUAL;
        });
        if (!entry) {
            return DISP_E_UNKNOWNNAME;
        }
        ids[0] = entry->lDispID;
        if (count == 1) {
            return S_OK;
        }
        // The map knows no names of parameters; the type library does.
        common::ComPtr<ITypeInfo> info;
        return SUCCEEDED(OwnTypeInfo(lcid, info.Receive())) ? info->GetIDsOfNames(names, count, ids)
                                                            : DISP_E_UNKNOWNNAME;
    });
}

STDMETHODIMP OleDispatchPart::Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params,
                                     VARIANT* result, EXCEPINFO*, UINT* wrongArgument) {
    if (result) {
        ::VariantInit(result);
    }
    return OleGuard(m_target, [&]() -> HRESULT {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (!params || (params->cArgs > 0 && !params->rgvarg) ||
            (params->cNamedArgs > 0 && !params->rgdispidNamedArgs)) {
            return E_INVALIDARG;
        }
        if (params->cNamedArgs > params->cArgs) {
            return DISP_E_BADPARAMCOUNT;
        }
        const DispatchEntry* entry = Find([&](const DispatchEntry& line) { return line.lDispID == id; });
        if (!entry) {
            return DISP_E_MEMBERNOTFOUND;
        }
        return m_target.IsInvokeAllowed(id) ? Run(*entry, lcid, flags, *params, result, wrongArgument)
                                            : E_UNEXPECTED;
    });
}

HRESULT OleDispatchPart::Run(const DispatchEntry& entry, LCID lcid, WORD flags, const DISPPARAMS& params,
                             VARIANT* result, UINT* wrongArgument) {
    OleArguments arguments(lcid, wrongArgument);
    common::Variant discarded;
    VARIANT* const wanted = result ? result : &discarded;
    HRESULT read = DISP_E_MEMBERNOTFOUND;
    if (entry.pfnCall && (flags & DISPATCH_METHOD)) {
        read = arguments.Read(params, entry.params);
        if (SUCCEEDED(read)) {
            entry.pfnCall(m_target, arguments.Values(), wanted);
        }
    } else if (entry.pfnGet && (flags & DISPATCH_PROPERTYGET)) {
        read = arguments.Read(params, VTS_NONE);
        if (SUCCEEDED(read)) {
            entry.pfnGet(m_target, wanted);
        }
    } else if (entry.pfnSet && (flags & DISPATCH_PROPERTYPUT)) {
        read = arguments.ReadValue(params, entry.params);
        if (SUCCEEDED(read)) {
            entry.pfnSet(m_target, arguments.Values()[0]);
        }
    }
    return read;
}

} // namespace framework
