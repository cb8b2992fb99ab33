// Text that is printed on one line.
#pragma once

#include <string>
#include <string_view>

/// `text` made printable on one line: control characters become "?".
std::wstring OneLine(std::wstring text);

/// How many characters a text has; a surrogate pair is one.
std::size_t CharacterCount(std::wstring_view text);

/// The text of bytes in UTF-8, else in Latin-1, as programs for machines write it.
std::wstring Decoded(std::string_view bytes);

/// `text` on one line: control characters but the tab become "\uXXXX".
std::wstring Escaped(const std::wstring& text);
