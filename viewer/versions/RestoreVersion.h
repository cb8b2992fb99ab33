// Taking files out of an earlier version.
#pragma once

#include "mxovpackage.h"
#include "versions/Version.h"

namespace viewer {

/// Unpacks files of a version of `folder` into `target`, which is created when it is needed. They get the
/// mark of the web that the package had. Fails for a file whose content is missing, and for programs where
/// those are refused; what is in `target` then is of no use.
[[nodiscard]] mxovshare::PackageResult RestoreFiles(const std::wstring& folder,
                                                    const std::vector<KeptFile>& files,
                                                    const std::wstring& target,
                                                    mxovshare::PackageProgress* progress = nullptr);

} // namespace viewer
