// Numbers in texts.
#pragma once

#include <string>

namespace docview {

/// The decimal number that a text of digits, signs, points and exponents begins with; 0 without one.
double NumberAtStart(const std::wstring& text);

} // namespace docview
