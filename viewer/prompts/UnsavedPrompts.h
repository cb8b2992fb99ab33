// Prompts about unsaved changes.
#pragma once

#include "session/FolderComparison.h"

#include <string>
#include <vector>

namespace viewer {

enum class RecoveryAnswer { Continue, Discard, Later };

/// Asks what to do with the changes to a package that a viewer left which crashed. `changed` is the time of
/// the last one, UTC.
[[nodiscard]] RecoveryAnswer AskToRecover(HWND owner, const std::wstring& packageFile,
                                          const FILETIME& changed);

enum class ChangesAnswer { Save, Discard, GoOn };

/// Asks, before a package is closed, whether to save the files that other programs changed. `declined` states
/// that the user has just refused to save what else was changed.
[[nodiscard]] ChangesAnswer AskAboutChanges(HWND owner, const std::wstring& packageFile,
                                            const std::vector<FileChange>& changes, bool declined);

/// One line for each change, in their order, with a remark at new and removed files; see `ShortList`.
[[nodiscard]] std::wstring ListOfChanges(const std::vector<FileChange>& changes);

/// The lines, ended by line feeds; of more than ten the first nine and the number of the others.
[[nodiscard]] std::wstring ShortList(const std::vector<std::wstring>& lines);

enum class OpenAnswer { TryAgain, Close, GoOn };

/// Asks, before a package is closed, what to do about its files that are open in other programs.
[[nodiscard]] OpenAnswer AskAboutOpenDocuments(HWND owner, const std::wstring& packageFile,
                                               const std::vector<std::wstring>& names);

enum class FailedSaveAnswer { GoOn, SaveCopy, Keep, Discard };

/// Asks, before a package is closed, what to do with its changes after saving them failed.
[[nodiscard]] FailedSaveAnswer AskAboutFailedSave(HWND owner, const std::wstring& packageFile);

} // namespace viewer
