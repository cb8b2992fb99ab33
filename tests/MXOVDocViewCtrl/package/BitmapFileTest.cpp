// Which bitmap files are sound, at the limits of their headers.
#include "package/BitmapFile.h"

#include "BitmapFiles.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace docview;

namespace {

class BitmapFileTest : public testing::Test {
protected:
    /// Whether a whole bitmap of one bit a pixel is sound; `header`: bytes of its information header.
    bool IsSound(LONG width, LONG height, DWORD header = sizeof(BITMAPINFOHEADER)) {
        constexpr DWORD kPalette = 2 * sizeof(RGBQUAD);
        const DWORD pixels = sizeof(BITMAPFILEHEADER) + header + kPalette;
        std::string bytes = BitmapBytes(1, [&](BitmapHeaders& h) {
            h.info.biSize = header;
            h.info.biWidth = width;
            h.info.biHeight = height;
            h.file.bfOffBits = pixels;
        });
        bytes.resize(pixels + static_cast<std::size_t>((width + 31) / 32) * 4 * std::abs(height));
        return IsSoundBitmap(m_folder.Write(L"a.bmp", bytes));
    }

    TempFolder m_folder;
};

TEST_F(BitmapFileTest, ASideHasAtMost16384Pixels) {
    EXPECT_TRUE(IsSound(1, 1));
    EXPECT_TRUE(IsSound(16384, 1));
    EXPECT_FALSE(IsSound(16385, 1));
    EXPECT_TRUE(IsSound(1, 16384));
    EXPECT_FALSE(IsSound(1, 16385));
    EXPECT_TRUE(IsSound(1, -16384));
    EXPECT_FALSE(IsSound(1, -16385));
}

TEST_F(BitmapFileTest, AllHasAtMost64MebiPixels) {
    EXPECT_TRUE(IsSound(8192, 8192));
    EXPECT_FALSE(IsSound(8192, 8193));
    EXPECT_FALSE(IsSound(8193, 8192));
}

TEST_F(BitmapFileTest, TheInformationHeaderIsOneOfTheSystems) {
    for (const DWORD header : {sizeof(BITMAPINFOHEADER), sizeof(BITMAPV4HEADER), sizeof(BITMAPV5HEADER)}) {
        EXPECT_TRUE(IsSound(10, 10, header)) << header;
    }
    for (const DWORD header : {DWORD{20}, static_cast<DWORD>(sizeof(BITMAPINFOHEADER) - 1),
                               static_cast<DWORD>(sizeof(BITMAPV5HEADER) + 1), DWORD{200}}) {
        EXPECT_FALSE(IsSound(10, 10, header)) << header;
    }
}

TEST_F(BitmapFileTest, AMissingFileIsNotSound) {
    EXPECT_FALSE(IsSoundBitmap(m_folder / L"none.bmp"));
}

} // namespace
