#include "document/DocumentCommands.h"

#include "common/Handles.h"
#include "document/DocumentActions.h"
#include "resources/resource.h"
#include "texts/Texts.h"

namespace viewer {

std::vector<DocumentCommand> DocumentCommands() {
    std::vector<DocumentCommand> commands;
    for (const int number : {IDM_DOCUMENT_OPEN, IDM_DOCUMENT_FIND, IDM_DOCUMENT_SAVE, IDM_DOCUMENT_SHOW,
                             IDM_DOCUMENT_OPEN_WITH, IDM_DOCUMENT_COPY_PATH}) {
        commands.push_back({number, Text(static_cast<UINT>(number))});
    }
    return commands;
}

bool IsOffered(int command, const DocumentDetails& document) {
    switch (command) {
    case IDM_DOCUMENT_COPY_PATH:
        return true;
    case IDM_DOCUMENT_FIND:
        return !document.exists && document.isLink;
    default:
        return document.exists;
    }
}

int ChooseDocumentCommand(HWND window, POINT place, const DocumentDetails& document) {
    const common::UniqueOf<HMENU, &DestroyMenu> menu(CreatePopupMenu());
    for (const auto& [number, text] : DocumentCommands()) {
        if (IsOffered(number, document)) {
            AppendMenuW(menu.get(), MF_STRING, static_cast<UINT_PTR>(number), text.c_str());
        }
    }
    return TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY, place.x, place.y, 0, window, nullptr);
}

void RunDocumentCommand(HWND frame, int command, const std::wstring& path) {
    std::wstring error;
    switch (command) {
    case IDM_DOCUMENT_OPEN:
        error = OpenDocument(frame, path);
        break;
    case IDM_DOCUMENT_OPEN_WITH:
        error = OpenDocumentWith(frame, path);
        break;
    case IDM_DOCUMENT_SAVE:
        error = SaveDocumentAs(frame, path);
        break;
    case IDM_DOCUMENT_SHOW:
        error = ShowInFolder(frame, path);
        break;
    case IDM_DOCUMENT_COPY_PATH:
        error = CopyPath(frame, path);
        break;
    default:
        SendMessageW(frame, WM_COMMAND, static_cast<WPARAM>(command), 0);
        break;
    }
    if (!error.empty()) {
        MessageBoxW(frame, error.c_str(), L"MXOV Viewer", MB_OK | MB_ICONWARNING);
    }
}

} // namespace viewer
