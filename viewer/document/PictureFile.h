// Pictures of the formats that the system decodes.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

/// The picture in the bytes of a file; empty when they hold none, are damaged, or it has more than 64 million
/// pixels. Transparent parts are white. Called on a thread that is in a COM apartment.
[[nodiscard]] common::UniqueBitmap DecodePicture(std::string bytes);

} // namespace viewer
