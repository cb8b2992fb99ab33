// IOleInPlaceObject and IOleInPlaceActiveObject of a control.
#pragma once

#include "ControlPart.h"

namespace framework {

class InPlaceObjectPart final : public ControlPart<IOleInPlaceObject> {
public:
    using ControlPart::ControlPart;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;
};

class InPlaceActiveObjectPart final : public ControlPart<IOleInPlaceActiveObject> {
public:
    using ControlPart::ControlPart;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
};

} // namespace framework
