// Reads the windows of another process.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

[[nodiscard]] std::wstring ClassName(HWND window);

/// Title or content of a window of that class. Throws std::runtime_error when the window does not answer.
[[nodiscard]] std::wstring Text(HWND window, const std::wstring& className);

/// The children of a window, the topmost first.
[[nodiscard]] std::vector<HWND> Children(HWND window);

/// The first window with that identifier below another, at any depth; null when there is none.
[[nodiscard]] HWND FindDescendant(HWND window, int id);

/// The frame, shown or not, and the other visible top-level windows of its process.
[[nodiscard]] std::vector<HWND> TopLevelWindows(HWND frame);

/// The window with the focus in the thread of a window; null when there is none.
[[nodiscard]] HWND FocusOfThread(HWND window);
