#include "ControlObject.h"

#include "Control.h"

#include "ControlUnits.h"
#include <algorithm>

ControlObjectPart::ControlObjectPart(COleControl& control) noexcept : OlePart(control), m_control(control) {}

STDMETHODIMP ControlObjectPart::SetClientSite(IOleClientSite* site) {
    return Guard([&]() -> HRESULT {
        m_control.SetClientSite(site);
        return S_OK;
    });
}

STDMETHODIMP ControlObjectPart::GetClientSite(IOleClientSite** site) {
    return Guard([&]() -> HRESULT {
        if (!site) {
            return E_POINTER;
        }
        *site = OlePtr<IOleClientSite>(m_control.GetClientSite()).Detach();
        return S_OK;
    });
}

STDMETHODIMP ControlObjectPart::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK; // names for the title of a window that a control does not have
}

STDMETHODIMP ControlObjectPart::Close(DWORD saveOption) {
    return Guard([&]() -> HRESULT {
        m_control.OnClose(saveOption);
        return S_OK;
    });
}

STDMETHODIMP ControlObjectPart::SetMoniker(DWORD, IMoniker*) {
    return E_NOTIMPL; // nothing links to a control
}

STDMETHODIMP ControlObjectPart::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) {
        *moniker = nullptr;
    }
    return E_NOTIMPL;
}

STDMETHODIMP ControlObjectPart::InitFromData(IDataObject*, BOOL, DWORD) {
    return E_NOTIMPL;
}

STDMETHODIMP ControlObjectPart::GetClipboardData(DWORD, IDataObject** data) {
    if (data) {
        *data = nullptr;
    }
    return E_NOTIMPL;
}

STDMETHODIMP ControlObjectPart::DoVerb(LONG verb, LPMSG message, IOleClientSite* activeSite, LONG,
                                       HWND parent, LPCRECT rect) {
    return Guard([&]() -> HRESULT {
        if (!m_control.GetClientSite() && activeSite) {
            m_control.SetClientSite(activeSite);
        }
        return RunVerb(verb, message, parent, rect);
    });
}

HRESULT ControlObjectPart::RunVerb(LONG verb, LPMSG message, HWND parent, LPCRECT rect) {
    if (m_control.OnDoVerb(verb, message, parent, rect)) {
        return S_OK;
    }
    if (verb == OLEIVERB_INPLACEACTIVATE || verb == OLEIVERB_UIACTIVATE) {
        return OLE_E_NOT_INPLACEACTIVE;
    }
    if (m_control.FindOleVerb(verb)) {
        return E_FAIL;
    }
    if (verb < 0) {
        return E_NOTIMPL;
    }
    // An unknown verb of the object's own stands for the primary one.
    return m_control.OnDoVerb(OLEIVERB_PRIMARY, message, parent, rect) ? OLEOBJ_S_INVALIDVERB : E_FAIL;
}

STDMETHODIMP ControlObjectPart::EnumVerbs(IEnumOLEVERB** verbs) {
    return Guard([&]() -> HRESULT {
        if (!verbs) {
            return E_POINTER;
        }
        *verbs = nullptr;
        return m_control.OnEnumVerbs(verbs) ? S_OK : OLEOBJ_E_NOVERBS;
    });
}

STDMETHODIMP ControlObjectPart::Update() {
    return S_OK;
}

STDMETHODIMP ControlObjectPart::IsUpToDate() {
    return S_OK;
}

STDMETHODIMP ControlObjectPart::GetUserClassID(CLSID* clsid) {
    return clsid ? m_control.GetClassID(clsid) : E_POINTER;
}

STDMETHODIMP ControlObjectPart::GetUserType(DWORD form, LPOLESTR* type) {
    return Guard([&]() -> HRESULT {
        if (!type) {
            return E_POINTER;
        }
        *type = nullptr;
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

STDMETHODIMP ControlObjectPart::SetExtent(DWORD aspect, SIZEL* size) {
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

STDMETHODIMP ControlObjectPart::GetExtent(DWORD aspect, SIZEL* size) {
    return Guard([&]() -> HRESULT {
        if (!size) {
            return E_POINTER;
        }
        *size = {};
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        *size = m_control.m_extent;
        return S_OK;
    });
}

HRESULT ControlObjectPart::NeedHolder() {
    return m_holder ? S_OK : ::CreateOleAdviseHolder(m_holder.Receive());
}

STDMETHODIMP ControlObjectPart::Advise(IAdviseSink* sink, DWORD* connection) {
    return Guard([&]() -> HRESULT {
        if (!sink || !connection) {
            return E_POINTER;
        }
        *connection = 0;
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->Advise(sink, connection) : ready;
    });
}

STDMETHODIMP ControlObjectPart::Unadvise(DWORD connection) {
    return Guard([&] { return m_holder ? m_holder->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

STDMETHODIMP ControlObjectPart::EnumAdvise(IEnumSTATDATA** advises) {
    return Guard([&]() -> HRESULT {
        if (!advises) {
            return E_POINTER;
        }
        *advises = nullptr;
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->EnumAdvise(advises) : ready;
    });
}

STDMETHODIMP ControlObjectPart::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (!status) {
        return E_POINTER;
    }
    *status = aspect == DVASPECT_CONTENT ? m_control.GetMiscStatus() : 0;
    return S_OK;
}

STDMETHODIMP ControlObjectPart::SetColorScheme(LOGPALETTE*) {
    return E_NOTIMPL;
}

ControlPart::ControlPart(COleControl& control) noexcept : OlePart(control), m_control(control) {}

STDMETHODIMP ControlPart::GetControlInfo(CONTROLINFO* info) {
    return Guard([&]() -> HRESULT {
        if (!info) {
            return E_POINTER;
        }
        m_control.OnGetControlInfo(info);
        return S_OK;
    });
}

STDMETHODIMP ControlPart::OnMnemonic(MSG* message) {
    return Guard([&]() -> HRESULT {
        if (!message) {
            return E_POINTER;
        }
        m_control.OnMnemonic(message);
        return S_OK;
    });
}

STDMETHODIMP ControlPart::OnAmbientPropertyChange(DISPID id) {
    return Guard([&]() -> HRESULT {
        m_control.OnAmbientPropertyChange(id);
        return S_OK;
    });
}

STDMETHODIMP ControlPart::FreezeEvents(BOOL freeze) {
    return Guard([&]() -> HRESULT {
        m_control.m_frozen = std::max<LONG>(m_control.m_frozen + (freeze ? 1 : -1), 0);
        m_control.OnFreezeEvents(m_control.m_frozen > 0);
        return S_OK;
    });
}
