// Finds windows that are not placed as a reader and the keyboard expect.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

/// What is wrong with the visible windows inside a window, a sentence each: one that reaches beyond its
/// parent or over another one, a tab stop that comes after one below or right of it, a mnemonic of two.
[[nodiscard]] std::vector<std::wstring> LayoutFaults(HWND window);
