// Unpacking a package into a folder.
#pragma once

#include "mxovpackage.h"

#include <string>

namespace mxovshare {

/// Unpacks the package `file` into `folder`, which must not exist or be empty; missing folders above it are
/// made. Throws FileFailure, PackageError or Cancelled after removing everything that it had made.
void UnpackInto(const std::wstring& file, const std::wstring& folder, PackageProgress* progress);

} // namespace mxovshare
