// Modal dialogs of the module inside a container.
#pragma once

#include "afxctl.h"
#include "common/ComPtr.h"

namespace docview {

/// Around a modal dialog: the container of the control in which a window lies disables its modeless dialogs
/// meanwhile. A control that the container closes and releases under the dialog is deleted after the scope.
/// Does nothing for a window outside a control.
class ModalScope {
public:
    explicit ModalScope(const CWnd& window);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    COleControl* m_control;
    common::ComPtr<IDispatch> m_alive;
};

} // namespace docview
