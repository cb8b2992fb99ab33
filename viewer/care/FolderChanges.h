// Changes of a package, made in the folder that it was unpacked into.
#pragma once

#include "mxovchange.h"

#include <string>

namespace viewer {

/// Makes the changes in `folder`, which ends with a separator; no history entry is added. Returns a message
/// for the user about the first file that cannot be copied into the folder, of which nothing is changed then
/// but the files copied before; empty on success.
[[nodiscard]] std::wstring ApplyToFolder(const std::wstring& folder,
                                         const mxovshare::PackageChanges& changes);

} // namespace viewer
