// The information file of a package, read from memory.
#pragma once

#include "mxovpackage.h"

#include <string>
#include <vector>

namespace mxovshare {

/// The sections of an INI file with these bytes, in order of appearance and each once; none when it is larger
/// than an INI file on the disk may be. Throws only std::bad_alloc.
std::vector<InformationSection> ParseInformation(std::string bytes);

} // namespace mxovshare
