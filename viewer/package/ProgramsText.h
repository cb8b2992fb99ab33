// The programs in a package, for sentences.
#pragma once

#include "mxovpackage.h"

#include <string>
#include <vector>

namespace viewer {

/// The programs among the entries of a package, such as "a.exe, b.js, c.lnk and 3 more"; empty for none.
[[nodiscard]] std::wstring ProgramsText(const std::vector<mxovshare::PackageEntry>& entries);

} // namespace viewer
