// The list of what differs between two packages.
#pragma once

#include "care/PackageDifferences.h"

#include <windows.h>

namespace viewer {

/// Shows the lines below `summary` until the user closes the list.
void ShowDifferences(HWND owner, const std::wstring& summary, const std::vector<DifferenceLine>& lines);

} // namespace viewer
