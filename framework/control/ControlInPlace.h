// IOleInPlaceObject and IOleInPlaceActiveObject of a control.
#pragma once

#include "ole/OleTarget.h"

class COleControl;

class ControlInPlacePart final : public OlePart<IOleInPlaceObject> {
public:
    explicit ControlInPlacePart(COleControl& control) noexcept;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

private:
    COleControl& m_control;
};

class ControlActivePart final : public OlePart<IOleInPlaceActiveObject> {
public:
    explicit ControlActivePart(COleControl& control) noexcept;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;

private:
    COleControl& m_control;
};
