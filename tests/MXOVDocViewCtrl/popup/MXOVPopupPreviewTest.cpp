// The preview of whole, odd and damaged bitmap files.
#include "PopupFixture.h"

#include "GdiObjectCount.h"
#include "shell/HostText.h"

#include <cstring>

using namespace docview;

namespace {

constexpr int kWidth = 10;
constexpr int kHeight = 6;

struct Headers {
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
};

/// A bitmap file whose headers a test may spoil.
std::string BitmapBytes(int bits, const std::function<void(Headers&)>& spoil = nullptr) {
    Headers headers;
    const int palette = bits <= 8 ? 4 << bits : 0;
    headers.file.bfType = 0x4D42;
    headers.file.bfOffBits =
        static_cast<DWORD>(sizeof headers.file + sizeof headers.info) + static_cast<DWORD>(palette);
    headers.file.bfSize =
        headers.file.bfOffBits + static_cast<DWORD>((kWidth * bits + 31) / 32 * 4 * kHeight);
    headers.info = {sizeof headers.info, kWidth, kHeight, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(headers.file.bfSize, '\x40');
    if (spoil) {
        spoil(headers);
    }
    std::memcpy(bytes.data(), &headers.file, sizeof headers.file);
    std::memcpy(bytes.data() + sizeof headers.file, &headers.info, sizeof headers.info);
    return bytes;
}

class MXOVPopupPreviewTest : public PopupFixture {
protected:
    bool Shows(const std::string& bytes) {
        m_preview = m_package.Write(L"preview.bmp", bytes);
        Fill(DocumentCategory::PartAssembly);
        const std::wstring status = Text(IDC_PREVIEW_STATUS);
        EXPECT_TRUE(status.empty() || status == HostText(hosttext::kNoPreview));
        return status.empty();
    }
};

} // namespace

TEST_F(MXOVPopupPreviewTest, EveryDepthIsShownAtTheSameSize) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        ASSERT_TRUE(Shows(BitmapBytes(bits))) << bits;
        BITMAP bitmap = {};
        GetObjectW(reinterpret_cast<HBITMAP>(SendMessageW(Item(IDC_PREVIEW), STM_GETIMAGE, IMAGE_BITMAP, 0)),
                   sizeof bitmap, &bitmap);
        EXPECT_EQ(bitmap.bmWidth, 125) << bits;
        EXPECT_EQ(bitmap.bmHeight, 125) << bits;
    }
}

TEST_F(MXOVPopupPreviewTest, DamagedAndAbsurdFilesAreNotShown) {
    const std::function<void(Headers&)> lies[] = {
        [](Headers& h) { h.file.bfType = 0x4D43; },
        [](Headers& h) { h.file.bfOffBits = 0x7FFFFFFF; },
        [](Headers& h) { h.file.bfOffBits = 20; },
        [](Headers& h) { h.info.biSize = 0xFFFFFFF0; },
        [](Headers& h) { h.info.biWidth = 0; },
        [](Headers& h) { h.info.biWidth = -10; },
        [](Headers& h) { h.info.biWidth = 30000; },
        [](Headers& h) { h.info.biHeight = 0; },
        [](Headers& h) { h.info.biHeight = 30000; },
        [](Headers& h) { h.info.biHeight = static_cast<LONG>(0x80000000); },
        [](Headers& h) { h.info.biPlanes = 3; },
        [](Headers& h) { h.info.biBitCount = 2; },
        [](Headers& h) { h.info.biCompression = BI_JPEG; },
    };
    for (const auto& lie : lies) {
        EXPECT_FALSE(Shows(BitmapBytes(24, lie))) << (&lie - lies);
    }
    EXPECT_FALSE(Shows(BitmapBytes(8, [](Headers& h) { h.info.biClrUsed = 0xFFFFFFFF; })));
    EXPECT_FALSE(Shows("not a bitmap"));
    EXPECT_FALSE(Shows(""));
    EXPECT_TRUE(Shows(BitmapBytes(24))) << "the next file is shown again";
}

TEST_F(MXOVPopupPreviewTest, CutFilesAreNotShown) {
    const std::string whole = BitmapBytes(24);
    for (std::size_t length = 0; length < whole.size(); length += 13) {
        EXPECT_FALSE(Shows(whole.substr(0, length))) << length;
    }
}

TEST_F(MXOVPopupPreviewTest, FillingAgainReleasesThePictureBefore) {
    const std::string with24 = BitmapBytes(24);
    const std::string with32 = BitmapBytes(32);
    ASSERT_TRUE(Shows(with24) && Shows(with32));
    const int before = GdiObjectCount();
    for (int i = 0; i < 50; ++i) {
        Shows(with24);
        Shows(with32);
        Shows("none");
    }
    EXPECT_NEAR(GdiObjectCount(), before, 3);
}
