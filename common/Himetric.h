// Sizes of COM objects: containers count in hundredths of a millimetre (HIMETRIC), windows in pixels.
#pragma once

#include <windows.h>

namespace common {

namespace detail {

constexpr int kHimetricPerInch = 2540;

inline SIZE ScreenPixelsPerInch() noexcept {
    const HDC screen = GetDC(nullptr);
    const SIZE resolution = {GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return resolution;
}

} // namespace detail

/// Converts by the resolution of the screen.
[[nodiscard]] inline SIZE HimetricToPixels(SIZE himetric) noexcept {
    const SIZE resolution = detail::ScreenPixelsPerInch();
    return {MulDiv(himetric.cx, resolution.cx, detail::kHimetricPerInch),
            MulDiv(himetric.cy, resolution.cy, detail::kHimetricPerInch)};
}

/// Converts by the resolution of the screen.
[[nodiscard]] inline SIZE PixelsToHimetric(SIZE pixels) noexcept {
    const SIZE resolution = detail::ScreenPixelsPerInch();
    return {MulDiv(pixels.cx, detail::kHimetricPerInch, resolution.cx),
            MulDiv(pixels.cy, detail::kHimetricPerInch, resolution.cy)};
}

} // namespace common
