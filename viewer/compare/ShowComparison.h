// Comparing two packages for the user.
#pragma once

#include "compare/PackageDifferences.h"

#include <windows.h>

namespace viewer {

/// Compares two packages, which the user may cancel, and shows what differs until the user closes the list.
/// `name` names the one that is compared with. Returns why they cannot be compared; empty when they could.
[[nodiscard]] std::wstring ShowComparison(HWND owner, const std::wstring& name,
                                          const ComparedPackages& packages);

} // namespace viewer
