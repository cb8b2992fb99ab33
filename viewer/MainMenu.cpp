#include "MainMenu.h"

#include "controller/PackageController.h"
#include "resources/resource.h"
#include "window/DroppedFiles.h"
#include "window/RecentMenu.h"

namespace viewer {

namespace {

void EnableCommand(HMENU menu, UINT command, bool enabled) {
    EnableMenuItem(menu, command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

} // namespace

void UpdateMenu(HMENU menu, const PackageController& packages) {
    const bool isOpening = packages.IsOpening();
    EnableCommand(menu, IDM_FILE_OPEN, !isOpening);
    for (const UINT command : {IDM_FILE_SAVE_AS, IDM_FILE_SAVE_PORTABLE, IDM_FILE_CHECK, IDM_FILE_COMPARE,
                               IDM_FILE_SHOW_FOLDER, IDM_FILE_PROPERTIES, IDM_FILE_CLOSE, IDM_VIEW_REFRESH}) {
        EnableCommand(menu, command, packages.Session() && !isOpening);
    }
    for (const UINT command : {IDM_FILE_SAVE, IDM_FILE_SAVE_NOTE, IDM_FILE_VERSIONS}) {
        EnableCommand(menu, command, packages.Session() && !isOpening && !packages.IsShowingVersion());
    }
    EnableCommand(menu, IDM_EDIT_PASTE, CanPasteFiles() && !isOpening);
    if (IsRecentMenu(menu)) {
        FillRecentMenu(menu, packages.Recent().Items(), !isOpening);
    }
}

} // namespace viewer
