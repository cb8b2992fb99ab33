// One state of a package file.
#pragma once

#include <string>

namespace mxovshare {

/// Identifies one state of a package file in one word: size, last write and identity. Empty for a file that
/// does not exist or cannot be queried.
std::wstring StampOfPackage(const std::wstring& file);

} // namespace mxovshare
