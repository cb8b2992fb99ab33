// Base of the objects behind a control's interfaces.
#pragma once

#include "control/Control.h"
#include "ole/OleTarget.h"

namespace framework {

/// Forwards IUnknown to the control and lives as long as it.
template <class Interface>
class ControlPart : public OlePart<Interface> {
public:
    ControlPart(COleControl& control, ControlParts& parts) noexcept
        : OlePart<Interface>(control), m_control(control), m_parts(parts) {}

protected:
    ~ControlPart() = default;

    COleControl& m_control;
    ControlParts& m_parts;
};

} // namespace framework
