// Where the window was when it was closed.
#pragma once

#include <windows.h>

namespace viewer {

/// Puts a window, still hidden, where it was at the end of the last run, if that is known. True when it was
/// maximised then.
bool RestorePlacement(HWND window, const wchar_t* settingsKey);

/// Remembers a window's place below HKEY_CURRENT_USER.
void StorePlacement(HWND window, const wchar_t* settingsKey);

} // namespace viewer
