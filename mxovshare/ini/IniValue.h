// How a value stands in an INI file.
//
// A value is stored as it is whenever a plain reader returns it unchanged: blanks at either end or a pair of
// quotes around it are protected by one more pair, which plain readers strip. What a line of text cannot
// carry (line breaks, other control characters, half surrogate pairs) is stored behind the marker "\esc:"
// with \\ \r \n and \uXXXX inside; so is a value that begins with the marker itself. Text is taken for that
// form only when it is exactly what this writer makes, so that any other text stays what it is.
#pragma once

#include <string>
#include <string_view>

namespace mxovshare {

/// Whether plain readers drop this unit at the ends of names and values: tab to carriage return, ^Z and
/// space.
constexpr bool IsIniBlank(char16_t unit) {
    return (unit >= 0x09 && unit <= 0x0D) || unit == 0x1A || unit == u' ';
}

/// `text` without blanks at either end.
std::u16string_view TrimBlanks(std::u16string_view text);

/// The text to store for a value; never longer than one line, without blanks at either end. A NUL ends the
/// value.
std::u16string StoredForm(std::u16string_view value);

/// The value of stored text without blanks at either end. A NUL ends the text.
std::u16string PlainValue(std::u16string stored);

/// Whether `text` holds a unit that may not stand in a line as it is.
bool NeedsEscape(std::u16string_view text);

} // namespace mxovshare
