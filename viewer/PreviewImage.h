// The package's preview picture.
#pragma once

#include "Handles.h"

#include <string>

/// Whether the file is a bitmap whose headers agree with each other and with the file's length, and whose
/// size is one that can be shown.
[[nodiscard]] bool IsSoundBitmap(const std::wstring& path);

/// Loads a bitmap file; empty when there is none or it is damaged.
[[nodiscard]] UniqueBitmap LoadPreview(const std::wstring& path);
