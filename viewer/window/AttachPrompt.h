// How dropped documents are to be attached.
#pragma once

#include "package/Attachment.h"

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

/// Asks whether to attach these files to a package as links or as copies; nothing when the user cancels.
[[nodiscard]] std::optional<AttachMode> AskHowToAttach(HWND owner, const std::wstring& packageFile,
                                                       const std::vector<std::wstring>& files);

} // namespace viewer
