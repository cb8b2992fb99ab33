// The commands of the Help menu.
#pragma once

#include <string>

#include <windows.h>

namespace viewer {

/// Opens the help in the current language. Returns a message for the user when that fails; empty on success.
[[nodiscard]] std::wstring ShowHelpTopics();

/// Shows the versions of the program and of its parts. `control` is the file of the control.
void ShowAbout(HWND owner, const std::wstring& control);

} // namespace viewer
