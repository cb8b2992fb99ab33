// The window in which the control shows the properties of a document.
#pragma once

#include <windows.h>

namespace viewer {

/// Whether a window is that of the properties, owned by `frame`.
[[nodiscard]] bool IsProperties(HWND window, HWND frame);

/// Places a properties window beside `control`, an area of the screen: to the right of it, or to the left
/// where the monitor ends, and always as a whole on the monitor that shows the control.
void PlaceProperties(HWND window, const RECT& control);

/// Closes the properties window that `frame` owns, if one is open. A click outside closes that window, a
/// shortcut does not, and the window would then show a document of a closed package. Does nothing while the
/// frame is disabled, because the window then has a modal dialog of its own.
void CloseProperties(HWND frame);

} // namespace viewer
