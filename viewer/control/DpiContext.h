// Windows of other dots per inch inside the viewer's window, which has those of its monitor. The control lays
// itself out once, for the dots of the system; where the system can, it enlarges the control on other
// monitors.
#pragma once

#include <windows.h>

namespace viewer {

/// Lets the windows that this thread creates from now on have windows of other dots per inch inside. Systems
/// before Windows 10 1803 cannot do that; the control then keeps its size on every monitor.
void AllowMixedDpi();

/// Whether this thread may create such windows.
[[nodiscard]] bool IsMixedDpiAllowed();

/// Whether the system enlarges a window that is laid out for the dots of the system.
[[nodiscard]] bool IsScaledBySystem(HWND window);

/// A size in pixels for some dots per inch, in those for others.
[[nodiscard]] SIZE SizeForDpi(SIZE size, UINT from, UINT to);

/// While it lives, the thread creates and measures windows for the dots of the system, or for those that the
/// code of a window has.
class DpiContext {
public:
    enum SystemTag { kSystem };

    explicit DpiContext(SystemTag) : DpiContext(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE) {}
    explicit DpiContext(HWND window) : DpiContext(GetWindowDpiAwarenessContext(window)) {}
    ~DpiContext() {
        if (m_before) {
            SetThreadDpiAwarenessContext(m_before);
        }
    }
    DpiContext(const DpiContext&) = delete;
    DpiContext& operator=(const DpiContext&) = delete;

private:
    explicit DpiContext(DPI_AWARENESS_CONTEXT context) : m_before(SetThreadDpiAwarenessContext(context)) {}

    DPI_AWARENESS_CONTEXT m_before; // null when the context could not be set
};

} // namespace viewer
