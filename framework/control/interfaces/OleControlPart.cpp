#include "OleControlPart.h"

#include "control/ControlParts.h"

#include <algorithm>

namespace framework {

STDMETHODIMP OleControlPart::GetControlInfo(CONTROLINFO* info) {
    if (!info) {
        return E_POINTER;
    }
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return Guard([&]() -> HRESULT {
        m_control.OnGetControlInfo(info);
        return S_OK;
    });
}

STDMETHODIMP OleControlPart::OnMnemonic(MSG* message) {
    return Guard([&]() -> HRESULT {
        if (!message) {
            return E_POINTER;
        }
        m_control.OnMnemonic(message);
        return S_OK;
    });
}

STDMETHODIMP OleControlPart::OnAmbientPropertyChange(DISPID id) {
    return Guard([&]() -> HRESULT {
        m_control.OnAmbientPropertyChange(id);
        return S_OK;
    });
}

STDMETHODIMP OleControlPart::FreezeEvents(BOOL freeze) {
    return Guard([&]() -> HRESULT {
        m_parts.frozen = std::max<LONG>(m_parts.frozen + (freeze ? 1 : -1), 0);
        m_control.OnFreezeEvents(m_parts.frozen > 0);
        return S_OK;
    });
}

} // namespace framework
