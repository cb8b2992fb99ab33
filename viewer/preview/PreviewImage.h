// The package's preview picture.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

/// Loads a bitmap file; empty when there is none or it is damaged.
[[nodiscard]] common::UniqueBitmap LoadPreview(const std::wstring& path);

} // namespace viewer
