#include "ControlUnits.h"

namespace {

constexpr int kHimetricPerInch = 2540;

SIZE PixelsPerInch() noexcept {
    const HDC screen = ::GetDC(nullptr);
    const SIZE resolution = {::GetDeviceCaps(screen, LOGPIXELSX), ::GetDeviceCaps(screen, LOGPIXELSY)};
    ::ReleaseDC(nullptr, screen);
    return resolution;
}

} // namespace

SIZE OleToPixels(SIZE himetric) noexcept {
    const SIZE resolution = PixelsPerInch();
    return {::MulDiv(himetric.cx, resolution.cx, kHimetricPerInch),
            ::MulDiv(himetric.cy, resolution.cy, kHimetricPerInch)};
}

SIZE OleToHimetric(SIZE pixels) noexcept {
    const SIZE resolution = PixelsPerInch();
    return {::MulDiv(pixels.cx, kHimetricPerInch, resolution.cx),
            ::MulDiv(pixels.cy, kHimetricPerInch, resolution.cy)};
}
