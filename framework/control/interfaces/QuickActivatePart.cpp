#include "QuickActivatePart.h"

#include "control/ControlParts.h"

namespace framework {

STDMETHODIMP QuickActivatePart::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    if (!container || !control) {
        return E_POINTER;
    }
    const ULONG size = control->cbSize;
    *control = {};
    control->cbSize = size;
    return Guard([&]() -> HRESULT {
        m_parts.SetClientSite(container->pClientSite);
        if (container->pAdviseSink) {
            m_parts.viewObject.SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        }
        if (container->pUnkEventSink) {
            m_parts.events.Advise(container->pUnkEventSink, &control->dwEventCookie);
        }
        if (container->pPropertyNotifySink) {
            m_parts.propertyNotifications.Advise(container->pPropertyNotifySink,
                                                 &control->dwPropNotifyCookie);
        }
        control->dwMiscStatus = m_control.GetMiscStatus();
        control->dwViewStatus = m_control.OnGetViewStatus();
        return S_OK;
    });
}

STDMETHODIMP QuickActivatePart::SetContentExtent(LPSIZEL size) {
    return m_parts.oleObject.SetExtent(DVASPECT_CONTENT, size);
}

STDMETHODIMP QuickActivatePart::GetContentExtent(LPSIZEL size) {
    return m_parts.oleObject.GetExtent(DVASPECT_CONTENT, size);
}

} // namespace framework
