// Paths of folders and of files in them.
#pragma once

#include <string>

namespace mxovshare {

/// The full path of a folder without a separator at its end, unless it is a root.
std::wstring FolderPath(const std::wstring& folder);

/// The path of `name` in a folder.
std::wstring JoinPath(const std::wstring& folder, const std::wstring& name);

} // namespace mxovshare
