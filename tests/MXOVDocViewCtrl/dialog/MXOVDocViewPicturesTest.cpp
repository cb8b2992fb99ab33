// The pictures of the lists and buttons, pixel by pixel.
#include "DialogFixture.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>

using namespace docview;

namespace {

class MXOVDocViewPicturesTest : public DialogFixture {
protected:
    void SetUp() override { Create(); }
};

/// The pixels of a bitmap of the module, from the top, as 0x00RRGGBB.
std::vector<DWORD> Pixels(HBITMAP bitmap, int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<DWORD> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const HDC dc = GetDC(nullptr);
    EXPECT_EQ(GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS),
              height);
    ReleaseDC(nullptr, dc);
    for (DWORD& pixel : pixels) {
        pixel &= 0xffffff;
    }
    return pixels;
}

std::vector<DWORD> PixelsOfPicture(UINT id, int width, int height) {
    const auto picture = static_cast<HBITMAP>(
        LoadImageW(AfxGetResourceHandle(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    std::vector<DWORD> pixels = Pixels(picture, width, height);
    DeleteObject(picture);
    return pixels;
}

constexpr DWORD kGround = 0xff00ff; // which no picture has
constexpr DWORD kWhite = 0xffffff;

/// An image of a list, drawn on the ground.
std::vector<DWORD> PixelsOfImage(HIMAGELIST images, int index, int size) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    const auto count = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
    std::fill_n(static_cast<DWORD*>(bits), count, kGround);
    ImageList_Draw(images, index, dc, 0, 0, ILD_TRANSPARENT);
    GdiFlush();
    std::vector<DWORD> pixels(static_cast<DWORD*>(bits), static_cast<DWORD*>(bits) + count);
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    for (DWORD& pixel : pixels) {
        pixel &= 0xffffff;
    }
    return pixels;
}

/// One picture of a strip of them.
std::vector<DWORD> Part(const std::vector<DWORD>& strip, int index, int size, int count) {
    std::vector<DWORD> part;
    for (int y = 0; y < size; ++y) {
        const auto line = strip.begin() + std::ptrdiff_t{size} * (std::ptrdiff_t{y} * count + index);
        part.insert(part.end(), line, line + size);
    }
    return part;
}

int Distance(const std::vector<DWORD>& left, const std::vector<DWORD>& right) {
    int distance = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        for (const int shift : {0, 8, 16}) {
            distance += std::abs(static_cast<int>(left[i] >> shift & 0xff) -
                                 static_cast<int>(right[i] >> shift & 0xff));
        }
    }
    return distance;
}

} // namespace

TEST_F(MXOVDocViewPicturesTest, EachButtonShowsItsOwnBitmap) {
    const std::pair<int, UINT> buttons[] = {{IDC_ADD, 1022}, {IDC_DELETE, 1023}};
    for (const auto& [id, picture] : buttons) {
        const auto shown = reinterpret_cast<HBITMAP>(SendMessageW(Item(id), BM_GETIMAGE, IMAGE_BITMAP, 0));
        BITMAP size = {};
        ASSERT_NE(GetObjectW(shown, sizeof size, &size), 0);
        EXPECT_EQ(Pixels(shown, size.bmWidth, size.bmHeight),
                  PixelsOfPicture(picture, size.bmWidth, size.bmHeight));
        EXPECT_TRUE(GetWindowLongPtrW(Item(id), GWL_STYLE) & BS_BITMAP);
    }
}

TEST_F(MXOVDocViewPicturesTest, ImagesAreThePicturesOfTheStripsInTheirOrder) {
    constexpr int kCount = 3;
    const struct {
        WPARAM kind;
        int size;
        UINT strip;
    } lists[] = {{LVSIL_NORMAL, 32, 221}, {LVSIL_SMALL, 16, 222}};
    for (const auto& list : lists) {
        const auto images =
            reinterpret_cast<HIMAGELIST>(SendMessageW(Item(IDC_PART_LIST), LVM_GETIMAGELIST, list.kind, 0));
        const std::vector<DWORD> strip = PixelsOfPicture(list.strip, kCount * list.size, list.size);
        for (int index = 0; index < kCount; ++index) {
            std::vector<DWORD> image = PixelsOfImage(images, index, list.size);
            EXPECT_EQ(std::ranges::count(image, kWhite), 0) << list.strip << ": white is transparent";
            EXPECT_GT(std::ranges::count(image, kGround), list.size) << list.strip;
            std::ranges::replace(image, kGround, kWhite);
            const int distance = Distance(image, Part(strip, index, list.size, kCount));
            for (int other = 0; other < kCount; ++other) {
                if (other != index) {
                    EXPECT_LT(distance * 4, Distance(image, Part(strip, other, list.size, kCount)))
                        << list.strip << ": " << index << " is not " << other;
                }
            }
        }
    }
}
