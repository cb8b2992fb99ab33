// Which names an entry of a package may bear, so that unpacking it creates that file and no other.
#pragma once

#include <cstddef>
#include <string_view>

namespace mxovshare {

/// Longest part between two separators and longest whole name, in UTF-16 units.
inline constexpr std::size_t kLongestNamePart = 255;
inline constexpr std::size_t kLongestName = 32000;

/// Why `name` (UTF-8, parts separated by "/", none at the end) may not be unpacked; empty when it may.
std::string_view EntryNameFault(std::string_view name);

} // namespace mxovshare
