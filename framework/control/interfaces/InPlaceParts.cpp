#include "InPlaceParts.h"

#include "control/ControlParts.h"

namespace framework {

namespace {

HRESULT WindowOf(const COleControl& control, HWND* window) noexcept {
    *window = control.m_hWnd;
    return *window ? S_OK : E_FAIL;
}

/// The modifier keys held down, as IOleControlSite::TranslateAccelerator encodes them.
DWORD Modifiers() noexcept {
    constexpr DWORD kShift = 1;
    constexpr DWORD kControl = 2;
    constexpr DWORD kAlt = 4;
    return (::GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (::GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
           (::GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

} // namespace

STDMETHODIMP InPlaceObjectPart::GetWindow(HWND* window) {
    return Guard(window, [&] { return WindowOf(m_control, window); });
}

STDMETHODIMP InPlaceObjectPart::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP InPlaceObjectPart::InPlaceDeactivate() {
    return Guard([&]() -> HRESULT {
        m_parts.activation.Deactivate();
        return S_OK;
    });
}

STDMETHODIMP InPlaceObjectPart::UIDeactivate() {
    return Guard([&]() -> HRESULT {
        m_parts.activation.DeactivateUI();
        return S_OK;
    });
}

STDMETHODIMP InPlaceObjectPart::SetObjectRects(LPCRECT position, LPCRECT clip) {
    return Guard([&]() -> HRESULT {
        if (!position) {
            return E_INVALIDARG;
        }
        m_control.OnSetObjectRects(position, clip);
        return S_OK;
    });
}

STDMETHODIMP InPlaceObjectPart::ReactivateAndUndo() {
    return INPLACE_E_NOTUNDOABLE;
}

STDMETHODIMP InPlaceActiveObjectPart::GetWindow(HWND* window) {
    return Guard(window, [&] { return WindowOf(m_control, window); });
}

STDMETHODIMP InPlaceActiveObjectPart::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP InPlaceActiveObjectPart::TranslateAccelerator(LPMSG message) {
    return Guard([&]() -> HRESULT {
        if (!message) {
            return E_POINTER;
        }
        if (m_control.PreTranslateMessage(message)) {
            return S_OK;
        }
        const common::ComPtr<IOleControlSite> site(m_parts.site.Control());
        return site && site->TranslateAccelerator(message, Modifiers()) == S_OK ? S_OK : S_FALSE;
    });
}

STDMETHODIMP InPlaceActiveObjectPart::OnFrameWindowActivate(BOOL) {
    return S_OK;
}

STDMETHODIMP InPlaceActiveObjectPart::OnDocWindowActivate(BOOL activate) {
    return Guard([&]() -> HRESULT {
        if (m_parts.activation.IsUIActive()) {
            m_parts.activation.NameActiveObject(activate);
        }
        return S_OK;
    });
}

STDMETHODIMP InPlaceActiveObjectPart::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) {
    return S_OK; // there are no tools around the container's window
}

STDMETHODIMP InPlaceActiveObjectPart::EnableModeless(BOOL) {
    return S_OK; // there are no modeless dialogs beside the control's window
}

} // namespace framework
