#include "preview/PreviewImage.h"

#include "BitmapFiles.h"
#include "common/Handles.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

bool Loads(const std::string& bytes) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"preview.bmp", bytes);
    return LoadPreview(path) != nullptr;
}

} // namespace

TEST(PreviewImage, LoadsEveryUsualDepth) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        EXPECT_TRUE(Loads(BitmapBytes(bits))) << bits;
    }
    EXPECT_TRUE(Loads(BitmapBytes(24, [](BitmapHeaders& h) { h.info.biHeight = -6; }))) << "top down";
}

TEST(PreviewImage, HasTheSizeOfTheFile) {
    const TempFolder folder;
    const common::UniqueBitmap picture = LoadPreview(folder.Write(L"preview.bmp", BitmapBytes(24)));
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
    const std::string whole = BitmapBytes(24);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(Loads(whole.substr(0, length))) << length;
    }
}

TEST(PreviewImage, HeadersThatLieCountAsAbsent) {
    std::vector<SpoilHeaders> lies = AbsurdHeaders();
    lies.insert(lies.end(), {
                                [](BitmapHeaders& h) { h.info.biSize = 12; },
                                [](BitmapHeaders& h) { h.info.biHeight = 7; },
                                [](BitmapHeaders& h) { h.info.biBitCount = 32; },
                                [](BitmapHeaders& h) { h.info.biBitCount = 8; },
                                [](BitmapHeaders& h) { h.info.biCompression = BI_RLE8; },
                            });
    for (const auto& lie : lies) {
        EXPECT_FALSE(Loads(BitmapBytes(24, lie))) << (&lie - lies.data());
    }
    EXPECT_FALSE(Loads(BitmapBytes(8, [](BitmapHeaders& h) { h.info.biClrUsed = 5000; })));
    EXPECT_FALSE(Loads(BitmapBytes(8, [](BitmapHeaders& h) { h.info.biClrUsed = 0xFFFFFFFF; })));
}

TEST(PreviewImage, DamagedCompressedPixelsDoNoHarm) {
    const TempFolder folder;
    const auto compress = [](BitmapHeaders& h) {
        h.info.biCompression = BI_RLE8;
        h.info.biSizeImage = 60;
    };
    for (const char filling : {'\x00', '\x01', '\x40', '\xFF'}) {
        std::string bytes = BitmapBytes(8, compress);
        std::memset(bytes.data() + bytes.size() - 72, filling, 72);
        const common::UniqueBitmap picture = LoadPreview(folder.Write(L"preview.bmp", bytes));
        BITMAP bitmap = {};
        EXPECT_EQ(picture != nullptr, GetObjectW(picture.get(), sizeof bitmap, &bitmap) != 0);
    }
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}
