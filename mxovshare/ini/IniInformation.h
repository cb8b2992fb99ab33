// How much of the information file of a package is read.
#pragma once

#include "ini/IniDocument.h"
#include "mxovinformation.h"

namespace mxovshare {

/// Lower than the limits of a document that is edited in place: a hostile package must not exhaust memory.
inline constexpr IniLimits kMostInformation = {
    .sections = 25'000, .lines = 100'000, .length = std::size_t{1} << 20};

} // namespace mxovshare
