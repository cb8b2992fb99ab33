// Making a package file out of a folder.
#pragma once

#include "mxovpackage.h"

namespace mxovshare {

/// Packs everything below `folder` into `file`: into a new file beside it, which is read back and checked
/// entry by entry before it takes the old one's place in one step. Throws FileFailure, PackageError or
/// Cancelled; the old file is then as it was and nothing else is left behind.
void PackFolder(const std::wstring& folder, const std::wstring& file, PackageProgress* progress);

} // namespace mxovshare
