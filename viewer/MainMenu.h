// The items of the main menu that depend on what is open.
#pragma once

#include <windows.h>

namespace viewer {

class PackageController;

/// Enables the items of a menu that is about to open, and fills that of the recent packages.
void UpdateMenu(HMENU menu, const PackageController& packages);

} // namespace viewer
