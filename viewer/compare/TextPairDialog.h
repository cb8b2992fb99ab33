// A window with the two texts of a changed document beside each other.
#pragma once

#include "compare/PackageDifferences.h"

#include <windows.h>

namespace viewer {

/// Reads the texts of a line that has some and shows them until the user closes the window. With `isPlain`
/// numbers, blanks and comments of G-code count, which the user can change.
void ShowTextPair(HWND owner, const ComparedPackages& packages, const DifferenceLine& line, bool isPlain);

} // namespace viewer
