// Dragging a file out of the viewer with the mouse.
#pragma once

#include <string>

#include <windows.h>

namespace viewer {

/// Lets the user drop a copy of a file on another program. Begins at a press of the left button in `window`,
/// whose frame takes no drop meanwhile, and returns when the button is up. Where the mouse has not left its
/// place nothing is dragged.
void DragFileOut(HWND window, const std::wstring& path);

} // namespace viewer
