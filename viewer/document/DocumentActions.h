// What a user does with the file of a document.
#pragma once

#include <string>

#include <windows.h>

namespace viewer {

/// Each returns a message for the user when it fails; empty on success. `owner` owns dialogs and messages of
/// the system. `path` is a full path.

/// Opens the file with the program that is registered for its kind.
[[nodiscard]] std::wstring OpenDocument(HWND owner, const std::wstring& path);

/// Lets the user choose the program.
[[nodiscard]] std::wstring OpenDocumentWith(HWND owner, const std::wstring& path);

/// Asks for a place and copies the file there. Cancelling is no failure.
[[nodiscard]] std::wstring SaveDocumentAs(HWND owner, const std::wstring& path);

/// Opens the file's folder with the file selected.
[[nodiscard]] std::wstring ShowInFolder(HWND owner, const std::wstring& path);

/// Puts the path on the clipboard.
[[nodiscard]] std::wstring CopyPath(HWND owner, const std::wstring& path);

} // namespace viewer
