// UTF-8 and the system's wide strings.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace common {

namespace detail {

inline std::string EncodeUtf8(std::wstring_view text, DWORD flags) {
    const int units = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, flags, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, flags, text.data(), units, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace detail

/// `text` in UTF-8; half of a surrogate pair becomes U+FFFD.
[[nodiscard]] inline std::string ToUtf8(std::wstring_view text) {
    return detail::EncodeUtf8(text, 0);
}

/// `text` in UTF-8; empty when it holds half of a surrogate pair.
[[nodiscard]] inline std::string ToUtf8Strict(std::wstring_view text) {
    return detail::EncodeUtf8(text, WC_ERR_INVALID_CHARS);
}

/// The text of UTF-8; what is not valid becomes U+FFFD.
[[nodiscard]] inline std::wstring FromUtf8(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), units);
    return text;
}

} // namespace common
