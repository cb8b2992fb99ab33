// IOleControl of a control.
#pragma once

#include "ControlPart.h"

namespace framework {

class OleControlPart final : public ControlPart<IOleControl> {
public:
    using ControlPart::ControlPart;

    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(MSG* message) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID id) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;
};

} // namespace framework
