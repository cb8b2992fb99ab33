// Names of copies whose own name is taken.
#pragma once

#include <string>

namespace viewer {

/// "plan (2).pdf"
[[nodiscard]] std::wstring NumberedName(const std::wstring& name, int number);

/// The first of "plan (2).pdf", "plan (3).pdf", ... that `folder`, which ends with a separator, does not
/// hold.
[[nodiscard]] std::wstring FreeCopyName(const std::wstring& folder, const std::wstring& name);

} // namespace viewer
