// The main window when the look of the system or the monitor changes.
#include "MainWindow.h"

namespace viewer {

// The system reports most of such changes to top-level windows alone. Other fonts may need another layout.
void MainWindow::OnLookChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    PassToDescendants(Handle(), message, wParam, lParam);
    m_layout.Arrange();
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// The window has come to a monitor with other dots per inch, or those of its monitor were changed.
void MainWindow::OnDpiChanged(UINT dpi, const RECT& suggested) {
    ChangeDpi(dpi);
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    m_layout.Arrange();
}

void MainWindow::OnMetricsChanged() {
    m_pages.ChangeDpi(Dpi());
    m_news.ChangeDpi(Dpi());
    m_status.ChangeDpi(Dpi());
}

} // namespace viewer
