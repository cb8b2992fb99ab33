// The window in which the control shows the properties of a document.
#pragma once

#include <windows.h>

namespace viewer {

/// Closes the properties window that the frame owns, if one is open. A click outside closes that window, a
/// shortcut does not, and it would go on to show a document of a package that is closed. Does nothing while
/// the frame is disabled: the window it owns is then a modal dialog.
void CloseProperties(HWND frame);

} // namespace viewer
