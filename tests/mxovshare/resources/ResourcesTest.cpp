#include "HostResources.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr int kIconSize = 16;
constexpr std::uint32_t kWhite = 0xFFFFFF;
using Pixels = std::array<std::uint32_t, std::size_t{kIconSize} * kIconSize>;

/// Draws a header icon on white at 16 x 16. The pixels are returned row by row from the top, as 0xRRGGBB.
Pixels Draw(WORD id) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kIconSize, -kIconSize, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const common::UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const common::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    const common::UniqueIcon icon(static_cast<HICON>(
        LoadImageW(Resources(), MAKEINTRESOURCEW(id), IMAGE_ICON, kIconSize, kIconSize, 0)));
    EXPECT_NE(icon, nullptr);
    HGDIOBJ previous = SelectObject(dc.get(), bitmap.get());
    PatBlt(dc.get(), 0, 0, kIconSize, kIconSize, WHITENESS);
    DrawIconEx(dc.get(), 0, 0, icon.get(), kIconSize, kIconSize, 0, nullptr, DI_NORMAL);
    GdiFlush();
    Pixels pixels{};
    std::copy_n(static_cast<const std::uint32_t*>(bits), pixels.size(), pixels.begin());
    for (std::uint32_t& pixel : pixels) {
        pixel &= kWhite;
    }
    SelectObject(dc.get(), previous);
    return pixels;
}

/// The number of coloured pixels in the middle two columns of the given rows.
int MiddlePixels(const Pixels& pixels, std::size_t firstRow, std::size_t lastRow) {
    int count = 0;
    for (std::size_t row = firstRow; row <= lastRow; ++row) {
        for (std::size_t column = kIconSize / 2 - 1; column <= kIconSize / 2; ++column) {
            count += pixels[row * kIconSize + column] != kWhite ? 1 : 0;
        }
    }
    return count;
}

TEST(Resources, EveryTextOfTheInterfaceIsThere) {
    EXPECT_EQ(Text(137), L"Name");
    EXPECT_EQ(Text(138), L"Size");
    EXPECT_EQ(Text(139), L"Date");
    EXPECT_EQ(Text(140), L"Action");
    EXPECT_EQ(Text(141), L"By");
    EXPECT_EQ(Text(144), L"Document Properties");
    EXPECT_EQ(Text(145), L"Name");
    EXPECT_EQ(Text(146), L"Path");
    EXPECT_EQ(Text(147), L"Description");
    EXPECT_EQ(Text(148), L"Updated");
    for (UINT id = 149; id <= 152; ++id) {
        EXPECT_FALSE(Text(id).empty()) << id;
    }
}

TEST(Resources, NumbersWithoutAUseHoldNoText) {
    for (const UINT id : {136U, 142U, 143U, 153U}) {
        EXPECT_EQ(Text(id), L"") << id;
    }
}

TEST(Resources, ThePictureForNoPreviewHasThePreviewsSize) {
    const SIZE size = BitmapSize(145);
    EXPECT_EQ(size.cx, 125);
    EXPECT_EQ(size.cy, 125);
}

TEST(Resources, TheHelpIconFitsItsControl) {
    const SIZE size = BitmapSize(149);
    EXPECT_EQ(size.cx, 20);
    EXPECT_EQ(size.cy, 20);
}

TEST(Resources, AnUnfoldedSectionShowsAnArrowUpAndAFoldedOneDown) {
    const auto unfolded = Draw(146);
    const auto folded = Draw(147);
    EXPECT_GT(MiddlePixels(unfolded, 0, 7), 0);
    EXPECT_EQ(MiddlePixels(unfolded, 8, 15), 0);
    EXPECT_EQ(MiddlePixels(folded, 0, 7), 0);
    EXPECT_GT(MiddlePixels(folded, 8, 15), 0);
}

} // namespace
