// What the viewer asks about unsaved work.
#pragma once

#include "package/FolderComparison.h"

#include <string>
#include <vector>

namespace viewer {

enum class LeftAnswer { Continue, Discard, Later };

/// Asks what to do with changes to a package that a viewer that did not end properly left behind. `changed`
/// is the time of the last one, UTC.
[[nodiscard]] LeftAnswer AskAboutLeft(HWND owner, const std::wstring& packageFile, const FILETIME& changed);

enum class ChangesAnswer { Save, Discard, GoOn };

/// Asks what to do with files of a package that is to be closed and that other programs changed. `declined`
/// says that the user has just declined to save what else was changed.
[[nodiscard]] ChangesAnswer AskAboutChanges(HWND owner, const std::wstring& packageFile,
                                            const std::vector<FileChange>& changes, bool declined);

/// The changed files for such a question, in the order given, and what is new or removed called so.
[[nodiscard]] std::wstring ListOfChanges(const std::vector<FileChange>& changes);

/// Lines for a question: the first ones as they are, the others by their number.
[[nodiscard]] std::wstring ShortList(const std::vector<std::wstring>& lines);

enum class OpenAnswer { TryAgain, Close, GoOn };

/// Asks what to do with files, given by name, that are still open in other programs while their package is to
/// be closed.
[[nodiscard]] OpenAnswer AskAboutOpen(HWND owner, const std::wstring& packageFile,
                                      const std::vector<std::wstring>& names);

enum class UnsavedAnswer { GoOn, SaveCopy, Keep, Discard };

/// Asks what to do with the changes to a package that is to be closed and could not be saved.
[[nodiscard]] UnsavedAnswer AskAboutUnsaved(HWND owner, const std::wstring& packageFile);

} // namespace viewer
