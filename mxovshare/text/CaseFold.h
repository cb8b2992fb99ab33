// Names that differ only in case, as a Windows file system sees it.
#pragma once

#include <string>
#include <string_view>

namespace mxovshare {

/// `text` (valid UTF-8) in the upper case by which a Windows file system compares names.
std::string FoldCase(std::string_view text);

} // namespace mxovshare
