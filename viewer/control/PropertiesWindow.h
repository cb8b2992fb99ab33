// The window in which the control shows the properties of a document.
#pragma once

#include <windows.h>

namespace viewer {

/// Whether a window is that of the properties, owned by `frame`.
[[nodiscard]] bool IsProperties(HWND window, HWND frame);

/// Places a properties window beside `frame`, where it covers nothing, or, where the monitor has no room for
/// that, beside `control`, which is an area of the frame: to the right, or else to the left. It stays on the
/// monitor that shows the control as a whole.
void PlaceProperties(HWND window, const RECT& control, const RECT& frame);

/// Closes the properties window that `frame` owns, if one is open. A click outside closes that window, a
/// shortcut does not, and the window would then show a document of a closed package. Does nothing while the
/// frame is disabled, because the window then has a modal dialog of its own.
void CloseProperties(HWND frame);

} // namespace viewer
