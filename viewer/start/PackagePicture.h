// The preview picture inside a package file.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

/// Reads the picture without unpacking the package; empty when there is none or it cannot be read. Called on
/// a thread that is in a COM apartment.
[[nodiscard]] common::UniqueBitmap ReadPackagePicture(const std::wstring& packageFile);

} // namespace viewer
