// Which names an entry of a package may have, so that unpacking it creates exactly that file.
#pragma once

#include <cstddef>
#include <string_view>

namespace mxovshare {

/// Longest part between two separators and longest whole name, in UTF-16 units.
inline constexpr std::size_t kLongestNamePart = 255;
inline constexpr std::size_t kLongestName = 32000;
/// Longest name in bytes, so that its length and that of a folder's "/" fit a header.
inline constexpr std::size_t kLongestStoredName = 65534;
/// How many folders a name may lead through.
inline constexpr std::ptrdiff_t kDeepestName = 250;
/// Ends the names of files that are written to replace others.
inline constexpr std::string_view kTemporarySuffix = ".mxov-new";

/// Why `name` (UTF-8, parts separated by "/", none at the end) may not be unpacked; empty when it may.
std::string_view EntryNameFault(std::string_view name);

} // namespace mxovshare
