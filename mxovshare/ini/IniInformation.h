// How much of the information file of a package is read.
#pragma once

#include "ini/IniDocument.h"
#include "mxovinformation.h"

namespace mxovshare {

inline constexpr IniLimits kMostInformation = {.sections = IniDocument::kMost.sections,
                                               .lines = IniDocument::kMost.lines,
                                               .length = std::size_t{1} << 20};

} // namespace mxovshare
