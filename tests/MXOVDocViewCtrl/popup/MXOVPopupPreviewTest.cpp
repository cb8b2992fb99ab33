// The preview of whole, odd and damaged bitmap files.
#include "PopupFixture.h"

#include "BitmapFiles.h"
#include "GdiObjectCount.h"
#include "shell/HostText.h"

using namespace docview;

namespace {

/// A bitmap file with the older information header of 12 bytes.
std::string CoreBitmapBytes(int bits, WORD width = kBitmapWidth) {
    const std::size_t palette = bits <= 8 ? std::size_t{3} << bits : 0;
    BITMAPFILEHEADER file = {};
    file.bfType = 0x4D42;
    file.bfOffBits = static_cast<DWORD>(sizeof file + sizeof(BITMAPCOREHEADER) + palette);
    file.bfSize = file.bfOffBits + static_cast<DWORD>((kBitmapWidth * bits + 31) / 32 * 4 * kBitmapHeight);
    const BITMAPCOREHEADER core = {sizeof core, width, kBitmapHeight, 1, static_cast<WORD>(bits)};
    std::string bytes(file.bfSize, '\x40');
    std::memcpy(bytes.data(), &file, sizeof file);
    std::memcpy(bytes.data() + sizeof file, &core, sizeof core);
    return bytes;
}

/// A compressed bitmap of 8 or 4 bits a pixel with these codes and this stated size of them.
std::string CompressedBytes(int bits, const std::string& codes, DWORD stated) {
    const std::string plain = BitmapBytes(bits, [&](BitmapHeaders& h) {
        h.info.biCompression = bits == 8 ? BI_RLE8 : BI_RLE4;
        h.info.biSizeImage = stated;
    });
    const std::size_t headers = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    return plain.substr(0, headers + (std::size_t{4} << bits)) + codes;
}

/// The codes of an image of one colour.
std::string EvenCodes() {
    std::string codes;
    for (int row = 0; row < kBitmapHeight; ++row) {
        codes += std::string{static_cast<char>(kBitmapWidth), '\x11', '\0', '\0'};
    }
    return codes + std::string{'\0', '\1'};
}

/// A bitmap of 16 bits a pixel with this much room for the three colour masks before the pixels.
std::string MaskedBytes(DWORD room) {
    const DWORD masks[] = {0xF800, 0x07E0, 0x001F};
    std::string bytes = BitmapBytes(16, [&](BitmapHeaders& h) {
        h.info.biCompression = BI_BITFIELDS;
        h.file.bfOffBits += room;
    });
    bytes.insert(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER), reinterpret_cast<const char*>(masks),
                 room);
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

TEST_F(MXOVPopupPreviewTest, OlderHeadersAreShown) {
    for (const int bits : {1, 4, 8, 24}) {
        EXPECT_TRUE(Shows(CoreBitmapBytes(bits))) << bits;
    }
}

TEST_F(MXOVPopupPreviewTest, DamagedOlderHeadersAreNotShown) {
    EXPECT_FALSE(Shows(CoreBitmapBytes(24, 0)));
    EXPECT_FALSE(Shows(CoreBitmapBytes(24, kBitmapWidth + 4))) << "the rows are longer than the file";
    EXPECT_FALSE(Shows(CoreBitmapBytes(2)));
    const std::string whole = CoreBitmapBytes(8);
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        EXPECT_FALSE(Shows(whole.substr(0, length))) << length;
    }
}

TEST_F(MXOVPopupPreviewTest, ColourMasksAreShownWhenTheyAreWhole) {
    EXPECT_TRUE(Shows(MaskedBytes(12)));
    EXPECT_FALSE(Shows(MaskedBytes(11))) << "the pixels begin inside the masks";
}

TEST_F(MXOVPopupPreviewTest, CompressedPixelsAreShownWithAndWithoutAStatedSize) {
    const std::string codes = EvenCodes();
    for (const int bits : {4, 8}) {
        EXPECT_TRUE(Shows(CompressedBytes(bits, codes, static_cast<DWORD>(codes.size())))) << bits;
        EXPECT_TRUE(Shows(CompressedBytes(bits, codes, 0))) << bits;
    }
}

TEST_F(MXOVPopupPreviewTest, DamagedCompressedPixelsAreNotShown) {
    const std::string codes = EvenCodes();
    EXPECT_FALSE(Shows(CompressedBytes(8, codes, static_cast<DWORD>(codes.size() + 1))))
        << "longer than the file";
    for (std::size_t length = 0; length < codes.size(); ++length) {
        EXPECT_FALSE(Shows(CompressedBytes(8, codes.substr(0, length), 0))) << length;
    }
    using namespace std::string_literals;
    const std::string endless[] = {
        "\x0b\x11\0\1"s,   // a run longer than a row
        "\0\2\x0b\0\0\1"s, // a move out of a row
        "\0\2\0\x06\0\1"s, // a move below the last row
        "\0\x0b"
        "0123456789ab\0\1"s, // pixels beyond a row
        "\0\x09"
        "012"s,    // pixels beyond the file
        "\0\2\1"s, // half a move
    };
    for (const std::string& wrong : endless) {
        EXPECT_FALSE(Shows(CompressedBytes(8, wrong, 0))) << (&wrong - endless);
    }
}

TEST_F(MXOVPopupPreviewTest, DamagedAndAbsurdFilesAreNotShown) {
    const std::vector<SpoilHeaders> lies = AbsurdHeaders();
    for (const auto& lie : lies) {
        EXPECT_FALSE(Shows(BitmapBytes(24, lie))) << (&lie - lies.data());
    }
    EXPECT_FALSE(Shows(BitmapBytes(8, [](BitmapHeaders& h) { h.info.biClrUsed = 0xFFFFFFFF; })));
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
