// IQuickActivate of a control: all of a container's connections in one call.
#pragma once

#include "ole/OleTarget.h"

class COleControl;

class ControlQuickActivatePart final : public OlePart<IQuickActivate> {
public:
    explicit ControlQuickActivatePart(COleControl& control) noexcept;

    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    STDMETHODIMP SetContentExtent(LPSIZEL size) override;
    STDMETHODIMP GetContentExtent(LPSIZEL size) override;

private:
    COleControl& m_control;
};
