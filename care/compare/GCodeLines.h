// Lines of G-code without what a machine ignores. Platform-free.
#pragma once

#include "care/compare/LineComparison.h"

namespace care {

/// A line without its number ("N10"), comments ("(...)" and "; ...") and blanks.
std::string WithoutNoise(std::string_view line);

/// The lines of a text, whose end may be CR LF, LF or CR. With `isPlain` every line counts as it stands;
/// otherwise without noise, and lines that hold nothing else are left out. They refer to `text`.
std::vector<ComparedLine> LinesOf(std::string_view text, bool isPlain);

} // namespace care
