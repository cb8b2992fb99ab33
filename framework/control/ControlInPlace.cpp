#include "ControlInPlace.h"

#include "Control.h"

namespace {

HRESULT WindowOf(const COleControl& control, HWND* window) noexcept {
    if (!window) {
        return E_POINTER;
    }
    *window = control.m_hWnd;
    return *window ? S_OK : E_FAIL;
}

/// The keys held down, as IOleControlSite wants them.
DWORD Modifiers() noexcept {
    constexpr DWORD kShift = 1;
    constexpr DWORD kControl = 2;
    constexpr DWORD kAlt = 4;
    return (::GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (::GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
           (::GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

} // namespace

ControlInPlacePart::ControlInPlacePart(COleControl& control) noexcept
    : OlePart(control), m_control(control) {}

STDMETHODIMP ControlInPlacePart::GetWindow(HWND* window) {
    return Guard([&] { return WindowOf(m_control, window); });
}

STDMETHODIMP ControlInPlacePart::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP ControlInPlacePart::InPlaceDeactivate() {
    return Guard([&]() -> HRESULT {
        m_control.m_activation.Deactivate();
        return S_OK;
    });
}

STDMETHODIMP ControlInPlacePart::UIDeactivate() {
    return Guard([&]() -> HRESULT {
        m_control.m_activation.DeactivateUI();
        return S_OK;
    });
}

STDMETHODIMP ControlInPlacePart::SetObjectRects(LPCRECT position, LPCRECT clip) {
    return Guard([&]() -> HRESULT {
        if (!position) {
            return E_INVALIDARG;
        }
        m_control.OnSetObjectRects(position, clip);
        return S_OK;
    });
}

STDMETHODIMP ControlInPlacePart::ReactivateAndUndo() {
    return INPLACE_E_NOTUNDOABLE;
}

ControlActivePart::ControlActivePart(COleControl& control) noexcept : OlePart(control), m_control(control) {}

STDMETHODIMP ControlActivePart::GetWindow(HWND* window) {
    return Guard([&] { return WindowOf(m_control, window); });
}

STDMETHODIMP ControlActivePart::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP ControlActivePart::TranslateAccelerator(LPMSG message) {
    return Guard([&]() -> HRESULT {
        if (!message) {
            return E_POINTER;
        }
        if (m_control.PreTranslateMessage(message)) {
            return S_OK;
        }
        const OlePtr<IOleControlSite> site(m_control.m_site.Control());
        return site && site->TranslateAccelerator(message, Modifiers()) == S_OK ? S_OK : S_FALSE;
    });
}

STDMETHODIMP ControlActivePart::OnFrameWindowActivate(BOOL) {
    return S_OK;
}

STDMETHODIMP ControlActivePart::OnDocWindowActivate(BOOL activate) {
    return Guard([&]() -> HRESULT {
        if (m_control.m_activation.IsUIActive()) {
            m_control.m_activation.NameActiveObject(activate);
        }
        return S_OK;
    });
}

STDMETHODIMP ControlActivePart::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) {
    return S_OK; // there are no tools around the container's window
}

STDMETHODIMP ControlActivePart::EnableModeless(BOOL) {
    return S_OK; // there are no modeless dialogs beside the control's window
}
