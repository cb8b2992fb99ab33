#include "ControlSite.h"

void ControlSite::Set(IOleClientSite* site) noexcept {
    OlePtr<IOleClientSite> client(site);
    OlePtr<IOleControlSite> control = client.As<IOleControlSite>(IID_IOleControlSite);
    OlePtr<IDispatch> ambients = client.As<IDispatch>(IID_IDispatch);
    m_client.Swap(client);
    m_control.Swap(control);
    m_ambients.Swap(ambients);
}

bool ControlSite::Ambient(DISPID id, VARTYPE type, OleVariant& value) const noexcept {
    const OlePtr<IDispatch> ambients = m_ambients.Copy();
    if (!ambients) {
        return false;
    }
    OleVariant given;
    DISPPARAMS none{};
    return SUCCEEDED(ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &given,
                                      nullptr, nullptr)) &&
           given.Get().vt != VT_EMPTY && SUCCEEDED(::VariantChangeType(&value, &given, 0, type));
}
