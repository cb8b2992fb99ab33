// Upper case of single characters.
#pragma once

namespace mxovshare {

/// The upper case by which a Windows file system compares names; units without one, and halves of surrogate
/// pairs, stay as they are.
char16_t UpperCase(char16_t unit) noexcept;

} // namespace mxovshare
