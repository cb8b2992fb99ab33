// Reading UTF-8 strictly: no overlong forms, no surrogates, nothing beyond U+10FFFF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mxovshare {

struct Utf8Character {
    char32_t code = 0;
    std::size_t length = 1; ///< bytes it takes; 1 when not valid
    bool valid = false;
};

/// The first character of `text`, which must not be empty.
Utf8Character DecodeUtf8(std::string_view text);

/// Number of bytes in front of the first character that is not ASCII.
std::size_t AsciiLength(std::string_view text);

bool IsUtf8(std::string_view text);

/// Number of UTF-16 units of valid UTF-8.
std::size_t Utf16Length(std::string_view text);

void AppendUtf8(std::string& text, char32_t character);

} // namespace mxovshare
