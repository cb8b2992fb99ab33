#include "ModalScope.h"

namespace docview {

namespace {

/// The control in which a window lies, or null.
COleControl* ControlAround(HWND window) {
    for (; window; window = ::GetParent(window)) {
        CWnd* const object = CWnd::FromHandlePermanent(window);
        if (object && object->IsKindOf(RUNTIME_CLASS(COleControl))) {
            return static_cast<COleControl*>(object);
        }
    }
    return nullptr;
}

} // namespace

ModalScope::ModalScope(const CWnd& window)
    : m_control(ControlAround(window.GetSafeHwnd())),
      m_alive(m_control ? m_control->GetIDispatch(FALSE) : nullptr) {
    if (m_control) {
        m_control->PreModalDialog();
    }
}

ModalScope::~ModalScope() {
    if (m_control) {
        m_control->PostModalDialog();
    }
}

} // namespace docview
