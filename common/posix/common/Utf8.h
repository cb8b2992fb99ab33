// UTF-8, and wide strings, which hold a character in each unit here.
#pragma once

#include <string>
#include <string_view>

namespace common {

/// `text` in UTF-8; half of a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

/// `text` in UTF-8; empty when it holds half of a surrogate pair.
[[nodiscard]] std::string ToUtf8Strict(std::wstring_view text);

/// The text of UTF-8; what is not valid becomes U+FFFD.
[[nodiscard]] std::wstring FromUtf8(std::string_view bytes);

/// The text of a name that the file system has, whose bytes may be anything: those that are not valid UTF-8
/// become U+DC80 to U+DCFF, which no valid text contains.
[[nodiscard]] std::wstring FromNameBytes(std::string_view bytes);

/// The bytes of such a name again.
[[nodiscard]] std::string ToNameBytes(std::wstring_view text);

} // namespace common
