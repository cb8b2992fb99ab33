#include "preview/PreviewImage.h"

#include "common/Handles.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

using namespace viewer;

namespace {

struct Headers {
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
};

// A bitmap file of 10 by 6 pixels whose headers a test may spoil.
std::string BitmapBytes(const std::function<void(Headers&)>& spoil = nullptr, int bits = 24) {
    constexpr int kWidth = 10;
    constexpr int kHeight = 6;
    const int palette = bits <= 8 ? 4 << bits : 0;
    const int rowBytes = (kWidth * bits + 31) / 32 * 4;
    Headers headers;
    headers.file.bfType = 0x4D42;
    headers.file.bfOffBits = static_cast<DWORD>(14 + sizeof(BITMAPINFOHEADER) + palette);
    headers.file.bfSize = headers.file.bfOffBits + rowBytes * kHeight;
    headers.info.biSize = sizeof(BITMAPINFOHEADER);
    headers.info.biWidth = kWidth;
    headers.info.biHeight = kHeight;
    headers.info.biPlanes = 1;
    headers.info.biBitCount = static_cast<WORD>(bits);
    std::string bytes(headers.file.bfSize, '\x40');
    if (spoil) {
        spoil(headers);
    }
    std::memcpy(bytes.data(), &headers.file, sizeof headers.file);
    std::memcpy(bytes.data() + sizeof headers.file, &headers.info, sizeof headers.info);
    return bytes;
}

bool Loads(const std::string& bytes) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"preview.bmp", bytes);
    return LoadPreview(path) != nullptr;
}

} // namespace

TEST(PreviewImage, LoadsEveryUsualDepth) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        EXPECT_TRUE(Loads(BitmapBytes(nullptr, bits))) << bits;
    }
    EXPECT_TRUE(Loads(BitmapBytes([](Headers& h) { h.info.biHeight = -6; }))) << "top down";
}

TEST(PreviewImage, HasTheSizeOfTheFile) {
    const TempFolder folder;
    const common::UniqueBitmap picture = LoadPreview(folder.Write(L"preview.bmp", BitmapBytes()));
    BITMAP bitmap = {};
    ASSERT_TRUE(GetObjectW(picture.get(), sizeof bitmap, &bitmap));
    EXPECT_EQ(bitmap.bmWidth, 10);
    EXPECT_EQ(bitmap.bmHeight, 6);
}

TEST(PreviewImage, MissingAndForeignFilesCountAsAbsent) {
    const TempFolder folder;
    EXPECT_FALSE(LoadPreview(L""));
    EXPECT_FALSE(LoadPreview(folder / L"none.bmp"));
    EXPECT_FALSE(LoadPreview(folder.Path()));
    EXPECT_FALSE(Loads(""));
    EXPECT_FALSE(Loads("BM"));
    EXPECT_FALSE(Loads(std::string(5000, 'x')));
}

TEST(PreviewImage, EveryTruncationCountsAsAbsent) {
    const std::string whole = BitmapBytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(Loads(whole.substr(0, length))) << length;
    }
}

TEST(PreviewImage, HeadersThatLieCountAsAbsent) {
    const std::function<void(Headers&)> lies[] = {
        [](Headers& h) { h.file.bfType = 0x4D43; },
        [](Headers& h) { h.file.bfOffBits = 0x7FFFFFFF; },
        [](Headers& h) { h.file.bfOffBits = 20; },
        [](Headers& h) { h.info.biSize = 12; },
        [](Headers& h) { h.info.biSize = 0xFFFFFFF0; },
        [](Headers& h) { h.info.biWidth = 0; },
        [](Headers& h) { h.info.biWidth = -10; },
        [](Headers& h) { h.info.biWidth = 30000; },
        [](Headers& h) { h.info.biHeight = 0; },
        [](Headers& h) { h.info.biHeight = 7; },
        [](Headers& h) { h.info.biHeight = static_cast<LONG>(0x80000000); },
        [](Headers& h) { h.info.biPlanes = 3; },
        [](Headers& h) { h.info.biBitCount = 32; },
        [](Headers& h) { h.info.biBitCount = 2; },
        [](Headers& h) { h.info.biBitCount = 8; },
        [](Headers& h) { h.info.biCompression = BI_JPEG; },
        [](Headers& h) { h.info.biCompression = BI_RLE8; },
    };
    for (const auto& lie : lies) {
        EXPECT_FALSE(Loads(BitmapBytes(lie))) << (&lie - lies);
    }
    EXPECT_FALSE(Loads(BitmapBytes([](Headers& h) { h.info.biClrUsed = 5000; }, 8)));
    EXPECT_FALSE(Loads(BitmapBytes([](Headers& h) { h.info.biClrUsed = 0xFFFFFFFF; }, 8)));
}

TEST(PreviewImage, DamagedCompressedPixelsDoNoHarm) {
    const TempFolder folder;
    const auto compress = [](Headers& h) {
        h.info.biCompression = BI_RLE8;
        h.info.biSizeImage = 60;
    };
    for (const char filling : {'\x00', '\x01', '\x40', '\xFF'}) {
        std::string bytes = BitmapBytes(compress, 8);
        std::memset(bytes.data() + bytes.size() - 72, filling, 72);
        const common::UniqueBitmap picture = LoadPreview(folder.Write(L"preview.bmp", bytes));
        BITMAP bitmap = {};
        EXPECT_EQ(picture != nullptr, GetObjectW(picture.get(), sizeof bitmap, &bitmap) != 0);
    }
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}
