// Prompts about documents that are to be attached.
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

enum class SharedNameAnswer { KeepBoth, Replace, Cancel };

/// Asks what to do with a new copy of this name, which a document of the package has already.
[[nodiscard]] SharedNameAnswer AskAboutSharedName(HWND owner, const std::wstring& name);

} // namespace viewer
