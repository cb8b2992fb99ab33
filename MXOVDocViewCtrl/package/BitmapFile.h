// Checks bitmap files before the system's loader reads them.
#pragma once

#include <string>

namespace docview {

/// Whether the file is a bitmap whose headers agree with each other and with the file's length, and whose
/// size is one that can be shown. The system's loader trusts the headers, so it must not see any other file.
[[nodiscard]] bool IsSoundBitmap(const std::wstring& path);

} // namespace docview
