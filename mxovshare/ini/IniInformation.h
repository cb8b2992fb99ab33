// The information file of a package, read from memory.
#pragma once

#include "ini/IniDocument.h"
#include "mxovpackage.h"

#include <string>
#include <vector>

namespace mxovshare {

/// How much is read.
inline constexpr IniLimits kMostInformation = {.sections = IniDocument::kMost.sections,
                                               .lines = IniDocument::kMost.lines,
                                               .length = std::size_t{1} << 20};

/// Reads the sections of an INI file with these bytes, in order of appearance and each once. False, and none,
/// for more than kMostInformation. Throws only std::bad_alloc.
[[nodiscard]] bool ParseInformation(std::string bytes, std::vector<InformationSection>& sections);

} // namespace mxovshare
