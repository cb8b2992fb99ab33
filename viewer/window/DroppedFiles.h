// Files that the user drops on a window or pastes into it.
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

/// Whether the clipboard holds files.
[[nodiscard]] bool CanPasteFiles();

/// The paths of the files on the clipboard; none when it holds none or another program keeps it open.
[[nodiscard]] std::vector<std::wstring> PastedFiles(HWND owner);

/// The way of attaching that the key held down now asks for: Ctrl copies, Alt links; nothing without a key.
[[nodiscard]] std::optional<AttachMode> AttachModeByKey();

} // namespace viewer
