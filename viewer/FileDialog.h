// The system's dialog for choosing a package.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// Asks for a package to open; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForPackage(HWND owner);
