// Sizes of controls: containers speak of hundredths of a millimetre, windows of pixels.
#pragma once

#include "core/Types.h"

/// Converts by the resolution of the screen.
SIZE OleToPixels(SIZE himetric) noexcept;
SIZE OleToHimetric(SIZE pixels) noexcept;
