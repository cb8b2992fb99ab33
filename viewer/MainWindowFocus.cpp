// Where the focus of the main window is, and where it goes.
#include "control/PropertiesWindow.h"
#include "MainWindow.h"

namespace viewer {

// Whether a window is the frame, inside it, or floats over it as the properties of a document do. Modal
// dialogs float too, but handle their messages themselves.
bool MainWindow::IsOfFrame(HWND window) const {
    return GetAncestor(window, GA_ROOTOWNER) == Handle();
}

// The control leaves Tab to its container at both ends. F6 leads to the other side of the window.
bool MainWindow::WrapTabFocus(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || !m_control.HasFocus()) {
        return false;
    }
    m_control.SetFocus(GetKeyState(VK_SHIFT) < 0);
    return true;
}

// The focus returns to where it was inside the window.
void MainWindow::OnActivate(bool active, HWND other) {
    if (!active) {
        m_lastFocus = GetFocus();
        if (IsProperties(other, Handle())) {
            RECT frame = {};
            GetWindowRect(Handle(), &frame);
            PlaceProperties(other, m_control.ScreenArea(), frame); // the control knows of no monitors
        }
    } else if (IsChild(Handle(), m_lastFocus) && IsWindowVisible(m_lastFocus)) {
        SetFocus(m_lastFocus);
    } else {
        SetFocus(Handle());
    }
}

// The frame itself has nothing to type into.
void MainWindow::PassFocusOn() {
    if (m_control.IsShown()) {
        m_control.SetFocus();
    } else {
        m_pages.TakeFocus();
    }
}

// Without a package there is nothing to attach documents to.
void MainWindow::ShowControl(bool shown) {
    if (shown == m_control.IsShown()) {
        return;
    }
    const bool focused = m_control.HasFocus();
    m_control.Show(shown);
    m_layout.Arrange();
    if (shown) {
        m_control.SetFocus(); // the frame may have the focus already, and then passes none on
    } else if (focused) {
        SetFocus(Handle());
    }
}

} // namespace viewer
