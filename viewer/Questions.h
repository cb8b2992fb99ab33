// What the viewer asks about unsaved work.
#pragma once

#include <windows.h>

#include <string>

enum class LeftAnswer { Continue, Discard, Later };

/// Asks what to do with changes to a package that a viewer that did not end properly left behind. `changed`
/// is the time of the last one, UTC.
[[nodiscard]] LeftAnswer AskAboutLeft(HWND owner, const std::wstring& packageFile, const FILETIME& changed);

enum class UnsavedAnswer { GoOn, SaveCopy, Keep, Discard };

/// Asks what to do with the changes to a package that is to be closed and could not be saved.
[[nodiscard]] UnsavedAnswer AskAboutUnsaved(HWND owner, const std::wstring& packageFile);
