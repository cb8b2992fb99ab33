#include "ControlParts.h"

#include "Control.h"

namespace framework {

ControlParts::ControlParts(COleControl& owner)
    : control(owner), persistStreamInit(owner, persistence), persistStorage(owner, persistence),
      persistPropertyBag(owner, persistence), persistMemory(owner, persistence),
      connectionPointContainer(owner), events(owner, connectionPointContainer, IID_NULL, true),
      propertyNotifications(owner, connectionPointContainer, IID_IPropertyNotifySink, false) {
    connectionPointContainer.Add(events);
    connectionPointContainer.Add(propertyNotifications);
}

void ControlParts::SetClientSite(IOleClientSite* client) {
    if (client != site.Client()) {
        activation.Deactivate();
    }
    site.Set(client);
    control.OnSetClientSite();
}

void ControlParts::Clear() {
    site.Set(nullptr);
    viewObject.Clear();
    dataObject.Clear();
    events.Clear();
    propertyNotifications.Clear();
}

HRESULT ControlParts::GetClassID(CLSID* clsid) {
    return control.GetClassID(clsid);
}

void ControlParts::Exchange(CPropExchange& exchange) {
    control.DoPropExchange(&exchange);
}

void ControlParts::Reset() {
    control.OnResetState();
}

void ControlParts::Redraw() {
    control.InvalidateControl();
}

void ControlParts::ReportSaved() {
    const common::ComPtr<IOleAdviseHolder> holder = oleObject.Holder();
    if (holder) {
        holder->SendOnSave();
    }
}

} // namespace framework
