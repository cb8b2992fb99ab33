// Run-length compressed pixels of a bitmap (BI_RLE4 and BI_RLE8).
#pragma once

#include <string_view>

namespace docview {

/// The image that the pixels are of.
struct RunLengthImage {
    int width = 0; ///< pixels
    int height = 0;
    int bits = 8; ///< of a pixel: 4 or 8
};

/// Whether the bytes hold a complete image: they stay inside its rows and reach the end mark.
[[nodiscard]] bool IsCompleteRunLength(std::string_view bytes, const RunLengthImage& image);

} // namespace docview
