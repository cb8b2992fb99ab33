#include "common/Paths.h"

#include "common/UpperCase.h"

#include <algorithm>
#include <cstdint>

namespace common {

namespace {

// The units of a character, so that numbers compare as UTF-16 does.
std::uint32_t OrderOf(wchar_t character) noexcept {
    const auto code = static_cast<char32_t>(character);
    if (code < 0x10000) {
        return std::uint32_t{UpperCase(static_cast<char16_t>(code))} << 16;
    }
    const char32_t rest = code - 0x10000;
    return (0xD800 + (rest >> 10)) << 16 | (0xDC00 + (rest & 0x3FF));
}

} // namespace

int ComparePaths(std::wstring_view left, std::wstring_view right) noexcept {
    const auto [one, other] = std::ranges::mismatch(left, right, {}, OrderOf, OrderOf);
    if (one == left.end() || other == right.end()) {
        return static_cast<int>(one != left.end()) - static_cast<int>(other != right.end());
    }
    return OrderOf(*one) < OrderOf(*other) ? -1 : 1;
}

std::wstring LowerCase(std::wstring text) {
    std::ranges::transform(text, text.begin(), [](wchar_t unit) {
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + (L'a' - L'A')) : unit;
    });
    return text;
}

} // namespace common
