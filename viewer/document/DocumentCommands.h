// The commands for a document, as buttons and as a menu.
#pragma once

#include "package/DocumentDetails.h"

#include <vector>

namespace viewer {

struct DocumentCommand {
    int number;
    std::wstring text; ///< with the mark of its key
};

/// All commands in their order.
[[nodiscard]] std::vector<DocumentCommand> DocumentCommands();

/// Whether a command makes sense for a document.
[[nodiscard]] bool IsOffered(int command, const DocumentDetails& document);

/// Shows a menu at a point of the screen; 0 when the user chooses nothing.
[[nodiscard]] int ChooseDocumentCommand(HWND window, POINT place, const DocumentDetails& document);

/// Carries a command out for the file at a path and shows why it failed. What changes the package is passed
/// on to the frame.
void RunDocumentCommand(HWND frame, int command, const std::wstring& path);

} // namespace viewer
