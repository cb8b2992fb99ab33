// What a control knows of its container: the client site and the interfaces behind it.
#pragma once

#include "common/ComPtr.h"

#include <ocidl.h>
#include <ole2.h>

namespace framework {

class ControlSite {
public:
    /// Takes another site, or none; what belonged to the old one is released.
    void Set(IOleClientSite* site) noexcept;

    [[nodiscard]] IOleClientSite* Client() const noexcept { return m_client.Get(); }
    /// Null when the container has none.
    [[nodiscard]] IOleControlSite* Control() const noexcept { return m_control.Get(); }

    /// An ambient property converted to a type; FALSE when the container has none, or one of no such type.
    bool Ambient(DISPID id, VARTYPE type, common::Variant& value) const noexcept;

private:
    common::ComPtr<IOleClientSite> m_client;
    common::ComPtr<IOleControlSite> m_control;
    common::ComPtr<IDispatch> m_ambients;
};

} // namespace framework
