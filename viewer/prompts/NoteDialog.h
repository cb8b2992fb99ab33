// Asks for the note with which a package is saved.
#pragma once

#include <optional>
#include <string>

#include <windows.h>

namespace viewer {

/// The note that the user writes for saving a package, which may be empty; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForNote(HWND owner, const std::wstring& packageFile);

} // namespace viewer
