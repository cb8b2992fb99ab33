// Names of the information file of a package, relative to the package folder.
#pragma once

#include <string_view>

namespace common {

inline constexpr wchar_t kInformationFile[] = L"mxinfo.ini";
/// Used by packages without the first.
inline constexpr wchar_t kPrivateInformationFile[] = L"Private\\mxinfo.ini";

/// The same as entries of a package file, in upper case, in the order in which they count.
inline constexpr std::string_view kInformationEntries[] = {"MXINFO.INI", "PRIVATE/MXINFO.INI"};

} // namespace common
