// An earlier version as a package file of its own, for looking at it.
#pragma once

#include "session/WorkProgress.h"
#include "versions/VersionStore.h"

#include <windows.h>

namespace viewer {

/// The file name under which a version is looked at: that of its package and the time of the save.
[[nodiscard]] std::wstring ShownName(const Version& version);

/// Writes a version as a read-only package `file`; `folder` is used for the work and removed. It gets the
/// mark of the web that the package had.
[[nodiscard]] mxovshare::PackageResult WriteShownVersion(const VersionStore& store, const Version& version,
                                                         const std::wstring& folder, const std::wstring& file,
                                                         WorkProgress& progress);

/// Starts this program anew, in the same language, with a package. Returns the system's code; ERROR_SUCCESS
/// on success.
[[nodiscard]] DWORD StartViewer(const std::wstring& package);

} // namespace viewer
