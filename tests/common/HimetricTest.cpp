#include "common/Himetric.h"

#include <gtest/gtest.h>

using common::HimetricToPixels;
using common::PixelsToHimetric;

TEST(Himetric, AnInchIsTheResolutionOfTheScreen) {
    const HDC screen = GetDC(nullptr);
    const int across = GetDeviceCaps(screen, LOGPIXELSX);
    const int down = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    const SIZE pixels = HimetricToPixels({2540, 5080});
    EXPECT_EQ(pixels.cx, across);
    EXPECT_EQ(pixels.cy, 2 * down);
    const SIZE himetric = PixelsToHimetric({3 * across, down});
    EXPECT_EQ(himetric.cx, 7620);
    EXPECT_EQ(himetric.cy, 2540);
}
