// The viewer's texts in the language that the user chose.
#pragma once

#include "texts/numbers.h"

#include <windows.h>

#include <initializer_list>
#include <string>

namespace viewer {

/// Loads the texts of a language, such as "German", from `lang\` beside a module, the program for null.
/// Called once, before any text is shown and before other threads start. A language that is not there leaves
/// the English texts.
void UseTexts(const std::wstring& language, HMODULE beside = nullptr);

/// A text by its number, with %1 to %9 replaced by the inserts in their order. The English one where the
/// language lacks it; empty for a number without a text.
[[nodiscard]] std::wstring Text(UINT number, std::initializer_list<std::wstring> inserts = {});

/// Replaces the texts of a menu's items, and of the menus below it, by those of their numbers. An item whose
/// number has no text keeps its own.
void TranslateMenu(HMENU menu);

} // namespace viewer
