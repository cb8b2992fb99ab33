// The upper case by which Windows compares names.
#pragma once

namespace common {

/// Units without an upper case, and halves of surrogate pairs, stay as they are.
[[nodiscard]] char16_t UpperCase(char16_t unit) noexcept;

} // namespace common
