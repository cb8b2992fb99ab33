// Judging paths that a package brings along, without asking any file system.
#pragma once

#include <string_view>

namespace docview {

/// Whether a path that is appended to the package folder leads out of it through "..".
bool LeavesPackageFolder(std::wstring_view path);

/// Whether a path names another computer or a device: it begins with two separators.
bool IsNetworkPath(std::wstring_view path);

} // namespace docview
