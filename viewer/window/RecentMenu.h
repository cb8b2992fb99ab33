// The menu of the packages that were opened last.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace viewer {

/// Whether a popup menu is that of the recent packages.
[[nodiscard]] bool IsRecentMenu(HMENU menu);

/// Fills that menu with these paths, newest first; `enabled` allows the user to choose one.
void FillRecentMenu(HMENU menu, const std::vector<std::wstring>& paths, bool enabled);

} // namespace viewer
