// How much of the information file of a package is read.
#pragma once

#include "ini/IniDocument.h"
#include "mxovinformation.h"

namespace mxovshare {

/// Fewer than a document may have that is edited in place: reading a package must take little memory, whoever
/// made it.
inline constexpr IniLimits kMostInformation = {
    .sections = 25'000, .lines = 100'000, .length = std::size_t{1} << 20};

} // namespace mxovshare
