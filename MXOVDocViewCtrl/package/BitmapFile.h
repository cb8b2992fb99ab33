// Whether a file is a bitmap that the system's loader can be given.
#pragma once

#include <string>

/// Whether the file is a bitmap whose headers agree with each other and with the file's length, and whose
/// size is one that can be shown. The system's loader trusts the headers, so it must not see any other file.
[[nodiscard]] bool IsSoundBitmap(const std::wstring& path);
