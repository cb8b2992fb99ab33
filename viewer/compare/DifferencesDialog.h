// The list of what differs between two packages.
#pragma once

#include "compare/PackageDifferences.h"

#include <windows.h>

namespace viewer {

/// Shows what differs until the user closes the list, from which changed texts are shown beside each other.
void ShowDifferences(HWND owner, const ComparedPackages& packages, const DifferenceReport& report);

} // namespace viewer
