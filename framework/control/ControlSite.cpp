#include "ControlSite.h"

namespace framework {

void ControlSite::Set(IOleClientSite* site) noexcept {
    common::ComPtr<IOleClientSite> client(site);
    common::ComPtr<IOleControlSite> control = client.As<IOleControlSite>(IID_IOleControlSite);
    common::ComPtr<IDispatch> ambients = client.As<IDispatch>(IID_IDispatch);
    m_client.Swap(client);
    m_control.Swap(control);
    m_ambients.Swap(ambients);
}

bool ControlSite::Ambient(DISPID id, VARTYPE type, common::Variant& value) const noexcept {
    const common::ComPtr<IDispatch> ambients = m_ambients.Copy();
    if (!ambients) {
        return false;
    }
    common::Variant given;
    DISPPARAMS none{};
    return SUCCEEDED(ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &given,
                                      nullptr, nullptr)) &&
           given.Get().vt != VT_EMPTY && SUCCEEDED(::VariantChangeType(&value, &given, 0, type));
}

} // namespace framework
