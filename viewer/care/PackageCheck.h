// The check of what is open.
#pragma once

#include "session/WorkProgress.h"

#include <care/check/Findings.h>

#include <string>
#include <vector>

namespace viewer {

struct CheckReport {
    bool ok = false;        ///< the package could be checked
    bool cancelled = false; ///< by the user
    std::wstring message;   ///< why it could not; empty after a cancel
    std::vector<care::Finding> findings;
};

/// Checks a package that was unpacked into `folder`, which ends with a separator. Computers that its links
/// lead to are asked, so this may take long.
[[nodiscard]] CheckReport CheckUnpacked(const std::wstring& folder, WorkProgress& progress);

} // namespace viewer
