// Choosing one of several texts.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace viewer {

/// Shows the texts as a menu over `owner`; nothing when the user chooses none.
[[nodiscard]] std::optional<std::wstring> ChooseFromMenu(HWND owner, const std::vector<std::wstring>& texts);

} // namespace viewer
