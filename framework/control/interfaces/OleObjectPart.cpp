#include "OleObjectPart.h"

#include "control/ControlParts.h"

#include "common/Himetric.h"
#include "ole/OleTaskString.h"

namespace framework {

STDMETHODIMP OleObjectPart::SetClientSite(IOleClientSite* site) {
    return Guard([&]() -> HRESULT {
        m_parts.SetClientSite(site);
        return S_OK;
    });
}

STDMETHODIMP OleObjectPart::GetClientSite(IOleClientSite** site) {
    return Guard(site, [&]() -> HRESULT {
        *site = common::ComPtr<IOleClientSite>(m_control.GetClientSite()).Detach();
        return S_OK;
    });
}

STDMETHODIMP OleObjectPart::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK; // names for the title of a window that a control does not have
}

STDMETHODIMP OleObjectPart::Close(DWORD saveOption) {
    return Guard([&]() -> HRESULT {
        m_control.OnClose(saveOption);
        return S_OK;
    });
}

STDMETHODIMP OleObjectPart::SetMoniker(DWORD, IMoniker*) {
    return E_NOTIMPL; // nothing links to a control
}

STDMETHODIMP OleObjectPart::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) {
        *moniker = nullptr;
    }
    return E_NOTIMPL;
}

STDMETHODIMP OleObjectPart::InitFromData(IDataObject*, BOOL, DWORD) {
    return E_NOTIMPL;
}

STDMETHODIMP OleObjectPart::GetClipboardData(DWORD, IDataObject** data) {
    if (data) {
        *data = nullptr;
    }
    return E_NOTIMPL;
}

STDMETHODIMP OleObjectPart::DoVerb(LONG verb, LPMSG message, IOleClientSite* activeSite, LONG, HWND parent,
                                   LPCRECT rect) {
    return Guard([&]() -> HRESULT {
        if (!m_control.GetClientSite() && activeSite) {
            m_parts.SetClientSite(activeSite);
        }
        return RunVerb(verb, message, parent, rect);
    });
}

HRESULT OleObjectPart::RunVerb(LONG verb, LPMSG message, HWND parent, LPCRECT rect) {
    if (m_control.OnDoVerb(verb, message, parent, rect)) {
        return S_OK;
    }
    if (verb == OLEIVERB_INPLACEACTIVATE || verb == OLEIVERB_UIACTIVATE) {
        return OLE_E_NOT_INPLACEACTIVE;
    }
    if (TargetAccess::FindOleVerb(m_control, verb)) {
        return E_FAIL;
    }
    if (verb < 0) {
        return E_NOTIMPL;
    }
    // An unknown verb of the object's own stands for the primary one.
    return m_control.OnDoVerb(OLEIVERB_PRIMARY, message, parent, rect) ? OLEOBJ_S_INVALIDVERB : E_FAIL;
}

STDMETHODIMP OleObjectPart::EnumVerbs(IEnumOLEVERB** verbs) {
    return Guard(verbs, [&]() -> HRESULT { return m_control.OnEnumVerbs(verbs) ? S_OK : OLEOBJ_E_NOVERBS; });
}

STDMETHODIMP OleObjectPart::Update() {
    return S_OK;
}

STDMETHODIMP OleObjectPart::IsUpToDate() {
    return S_OK;
}

STDMETHODIMP OleObjectPart::GetUserClassID(CLSID* clsid) {
    return clsid ? m_control.GetClassID(clsid) : E_POINTER;
}

STDMETHODIMP OleObjectPart::GetUserType(DWORD form, LPOLESTR* type) {
    return Guard(type, [&]() -> HRESULT {
        CString name;
        if (!name.LoadString(m_control.GetUserTypeNameID())) {
            CLSID clsid{};
            m_control.GetClassID(&clsid);
            return ::OleRegGetUserType(clsid, form, type);
        }
        *type = OleTaskString(name);
        return *type ? S_OK : E_OUTOFMEMORY;
    });
}

STDMETHODIMP OleObjectPart::SetExtent(DWORD aspect, SIZEL* size) {
    return Guard([&]() -> HRESULT {
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        if (!size) {
            return E_POINTER;
        }
        if (size->cx < 0 || size->cy < 0) {
            return E_INVALIDARG;
        }
        SIZEL wanted = *size;
        return m_control.OnSetExtent(&wanted) ? S_OK : E_FAIL;
    });
}

STDMETHODIMP OleObjectPart::GetExtent(DWORD aspect, SIZEL* size) {
    return Guard(size, [&]() -> HRESULT {
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        *size = m_parts.extent;
        return S_OK;
    });
}

HRESULT OleObjectPart::NeedHolder() {
    return m_holder ? S_OK : ::CreateOleAdviseHolder(m_holder.Receive());
}

STDMETHODIMP OleObjectPart::Advise(IAdviseSink* sink, DWORD* connection) {
    return Guard(connection, [&]() -> HRESULT {
        if (!sink) {
            return E_POINTER;
        }
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->Advise(sink, connection) : ready;
    });
}

STDMETHODIMP OleObjectPart::Unadvise(DWORD connection) {
    return Guard([&] { return m_holder ? m_holder->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

STDMETHODIMP OleObjectPart::EnumAdvise(IEnumSTATDATA** advises) {
    return Guard(advises, [&]() -> HRESULT {
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->EnumAdvise(advises) : ready;
    });
}

STDMETHODIMP OleObjectPart::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (!status) {
        return E_POINTER;
    }
    *status = aspect == DVASPECT_CONTENT ? m_control.GetMiscStatus() : 0;
    return S_OK;
}

STDMETHODIMP OleObjectPart::SetColorScheme(LOGPALETTE*) {
    return E_NOTIMPL;
}

} // namespace framework
