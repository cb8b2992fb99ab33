// Paths of any length.
#pragma once

#include <string>

namespace mxovshare {

/// The full path of `path` as the file functions take it whatever its length: from 240 characters on behind
/// "\\?\". A path that has that form already stays as it is; empty for one that names nothing.
std::wstring LongPath(const std::wstring& path);

} // namespace mxovshare
