// Comparing paths as Windows does.
#pragma once

#include <string>
#include <string_view>

namespace common {

/// Compares two names without regard to case: less than, equal to or greater than 0. The order is that of
/// their UTF-16.
[[nodiscard]] int ComparePaths(std::wstring_view left, std::wstring_view right) noexcept;

/// Whether two names or full paths are the same but for case.
[[nodiscard]] inline bool IsSamePath(std::wstring_view left, std::wstring_view right) noexcept {
    return left.size() == right.size() && ComparePaths(left, right) == 0;
}

/// `text` with the letters of ASCII in lower case.
[[nodiscard]] std::wstring LowerCase(std::wstring text);

} // namespace common
