// What differs between a package and what is open.
#pragma once

#include "session/WorkProgress.h"

#include <string>
#include <vector>

namespace viewer {

/// One line of the list.
struct DifferenceLine {
    std::wstring kind; ///< such as "Added"
    std::wstring name; ///< of the file, key or entry
    std::wstring details;
};

struct DifferenceReport {
    mxovshare::PackageResult result;
    std::vector<DifferenceLine> lines;
};

/// Compares `package`, the older side, with the package that was unpacked into `folder`. G-code is compared
/// line by line without numbers, comments and blanks. Reads every file of the folder.
[[nodiscard]] DifferenceReport CompareUnpacked(const std::wstring& package, const std::wstring& folder,
                                               WorkProgress& progress);

} // namespace viewer
