// The system's dialogs for choosing a file or folder.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace viewer {

/// Asks for a package; nothing when the user cancels. Titles are numbers of texts.
[[nodiscard]] std::optional<std::wstring> AskForPackage(HWND owner, UINT title);

/// Asks for a package or for the folder of an unpacked one, which a button of the dialog asks for; nothing
/// when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForPackageOrFolder(HWND owner, UINT title, UINT folderTitle);

/// Asks where to save a package, offering `name`; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForCopy(HWND owner, const std::wstring& name, UINT title);

/// Asks for the file that a document is to be found in, beginning with `name`; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForDocument(HWND owner, const std::wstring& name);

/// Asks for a folder; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForFolder(HWND owner, UINT title);

/// Asks where to save a copy of a document, offering `name`; nothing when the user cancels.
[[nodiscard]] std::optional<std::wstring> AskForDocumentCopy(HWND owner, const std::wstring& name);

} // namespace viewer
