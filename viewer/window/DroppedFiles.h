// Files that the user drops on a window.
#pragma once

#include "package/Attachment.h"

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include <shellapi.h>

namespace viewer {

/// The paths of dropped files. Frees `drop`.
[[nodiscard]] std::vector<std::wstring> TakeDroppedFiles(HDROP drop);

/// The way of attaching that the key held down now asks for: Ctrl copies, Alt links; nothing without a key.
[[nodiscard]] std::optional<AttachMode> AttachModeByKey();

} // namespace viewer
