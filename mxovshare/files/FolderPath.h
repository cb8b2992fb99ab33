// Paths of folders and of what lies in them.
#pragma once

#include <string>

namespace mxovshare {

/// The full path of a folder without a separator at its end, unless it is a root.
std::wstring FolderPath(const std::wstring& folder);

/// Whether two full paths are the same but for case.
bool IsSamePath(const std::wstring& left, const std::wstring& right);

/// The path of `name` in a folder.
std::wstring JoinPath(const std::wstring& folder, const std::wstring& name);

} // namespace mxovshare
