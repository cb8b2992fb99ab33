// Keeping what a package holds now as a version.
#pragma once

#include "mxovpackage.h"

#include <cstdint>
#include <string>

namespace viewer {

/// Adds what a package file holds to the versions in `folder`, which is created when it is needed. Files that
/// the versions there have already, with the same name, size and checksum, are not stored again; all others
/// are copied as they are packed. Adds nothing when the latest version holds the same. Fails when the new
/// files take more than `most` bytes. On failure or cancel there is no new version; what is left of it is for
/// `SweepVersions`.
[[nodiscard]] mxovshare::PackageResult KeepVersion(const std::wstring& folder,
                                                   const std::wstring& packageFile, std::uint64_t most,
                                                   mxovshare::PackageProgress* progress = nullptr);

} // namespace viewer
