// A control that is active in a container, as the fuzz runs need it.
#pragma once

#include "ControlObject.h"
#include "MockContainer.h"

#include <stdexcept>

class HostedControl {
public:
    HostedControl() {
        ComPtr<IUnknown> control;
        if (FAILED(CoCreateInstance(kControlClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                    reinterpret_cast<void**>(control.GetAddressOf())))) {
            throw std::runtime_error("the control cannot be created; is it registered?");
        }
        control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(m_automation.GetAddressOf()));
        m_container.position = m_container.clip = {0, 0, 390, 290};
        m_container.Embed(control.Get());
    }

    [[nodiscard]] HRESULT Activate() { return m_container.DoVerb(OLEIVERB_UIACTIVATE); }
    [[nodiscard]] MockContainer& Container() { return m_container; }
    [[nodiscard]] IDispatch* Automation() const { return m_automation.Get(); }
    [[nodiscard]] HWND Window() const { return m_container.ControlWindow(); }
    [[nodiscard]] HWND Dialog() const {
        return Window() ? FindWindowExW(Window(), nullptr, L"#32770", nullptr) : nullptr;
    }

    /// Handles messages until none is waiting.
    static void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }

private:
    MockContainer m_container;
    ComPtr<IDispatch> m_automation;
};
