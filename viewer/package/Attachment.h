// Attaching documents to an unpacked package, stored as the control stores them.
#pragma once

#include <string>
#include <vector>

namespace viewer {

enum class AttachMode { Link, Copy };

/// Whether a package takes additional documents; older ones do not. `folder` ends with a separator.
[[nodiscard]] bool TakesDocuments(const std::wstring& folder);

/// Adds files to the additional documents of the package in `folder`, which ends with a separator. A copy
/// whose name is taken gets a number behind its name. Returns a message for the user about the files that
/// could not be attached; empty when all were.
[[nodiscard]] std::wstring AttachDocuments(const std::wstring& folder, const std::vector<std::wstring>& files,
                                           AttachMode mode);

} // namespace viewer
