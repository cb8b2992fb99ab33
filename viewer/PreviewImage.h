// The package's preview picture.
#pragma once

#include "Handles.h"

#include <string>

/// Loads a bitmap file; empty when there is none or it is damaged.
[[nodiscard]] UniqueBitmap LoadPreview(const std::wstring& path);
