#include "ControlQuickActivate.h"

#include "Control.h"

ControlQuickActivatePart::ControlQuickActivatePart(COleControl& control) noexcept
    : OlePart(control), m_control(control) {}

STDMETHODIMP ControlQuickActivatePart::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    return Guard([&]() -> HRESULT {
        if (!container || !control) {
            return E_POINTER;
        }
        const ULONG size = control->cbSize;
        *control = {};
        control->cbSize = size;
        m_control.SetClientSite(container->pClientSite);
        if (container->pAdviseSink) {
            m_control.m_xViewObject.SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        }
        if (container->pUnkEventSink) {
            m_control.m_eventPoint.Advise(container->pUnkEventSink, &control->dwEventCookie);
        }
        if (container->pPropertyNotifySink) {
            m_control.m_notifyPoint.Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie);
        }
        control->dwMiscStatus = m_control.GetMiscStatus();
        control->dwViewStatus = m_control.OnGetViewStatus();
        return S_OK;
    });
}

STDMETHODIMP ControlQuickActivatePart::SetContentExtent(LPSIZEL size) {
    return m_control.m_xOleObject.SetExtent(DVASPECT_CONTENT, size);
}

STDMETHODIMP ControlQuickActivatePart::GetContentExtent(LPSIZEL size) {
    return m_control.m_xOleObject.GetExtent(DVASPECT_CONTENT, size);
}
