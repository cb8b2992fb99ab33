#include "BitmapFile.h"

#include "common/Handles.h"

#include <cstdint>
#include <cstdlib>

namespace docview {

namespace {

constexpr std::int64_t kLargestSide = 16384;
constexpr std::int64_t kMostPixels = std::int64_t{64} * 1024 * 1024;
constexpr WORD kBitmapMark = 0x4D42; // "BM"
constexpr DWORD kMostColours = 256;
constexpr int kPaletteDepth = 8; // up to this many bits a pixel is a place in a palette

static_assert(sizeof(BITMAPFILEHEADER) == 14);

bool IsRunLength(const BITMAPINFOHEADER& info) {
    return info.biCompression == BI_RLE4 || info.biCompression == BI_RLE8;
}

bool IsKnownDepth(const BITMAPINFOHEADER& info) {
    switch (info.biBitCount) {
    case 1:
    case 24:
        return info.biCompression == BI_RGB;
    case 4:
        return info.biCompression == BI_RGB || info.biCompression == BI_RLE4;
    case 8:
        return info.biCompression == BI_RGB || info.biCompression == BI_RLE8;
    case 16:
    case 32:
        return info.biCompression == BI_RGB || info.biCompression == BI_BITFIELDS;
    default:
        return false;
    }
}

/// Bytes from the start of the information header to the end of what follows it before the pixels.
std::int64_t HeaderBytes(const BITMAPINFOHEADER& info) {
    std::int64_t bytes = info.biSize;
    if (info.biBitCount <= kPaletteDepth) {
        const DWORD colours = info.biClrUsed != 0 ? info.biClrUsed : 1U << info.biBitCount;
        bytes += std::int64_t{sizeof(RGBQUAD)} * colours;
    }
    if (info.biCompression == BI_BITFIELDS && info.biSize == sizeof(BITMAPINFOHEADER)) {
        bytes += std::int64_t{3} * sizeof(DWORD);
    }
    return bytes;
}

std::int64_t PixelBytes(const BITMAPINFOHEADER& info) {
    if (IsRunLength(info)) {
        return info.biSizeImage;
    }
    const std::int64_t rowBytes = (std::int64_t{info.biWidth} * info.biBitCount + 31) / 32 * 4;
    return rowBytes * std::abs(std::int64_t{info.biHeight});
}

bool IsSoundSize(const BITMAPINFOHEADER& info) {
    const std::int64_t width = info.biWidth;
    const std::int64_t height = std::abs(std::int64_t{info.biHeight}); // negative: rows from the top
    return width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide &&
           width * height <= kMostPixels;
}

bool IsSoundFormat(const BITMAPINFOHEADER& info) {
    if (info.biSize < sizeof(BITMAPINFOHEADER) || info.biSize > sizeof(BITMAPV5HEADER) ||
        info.biPlanes != 1 || !IsKnownDepth(info)) {
        return false;
    }
    if (info.biBitCount <= kPaletteDepth && info.biClrUsed > kMostColours) {
        return false;
    }
    return !IsRunLength(info) || (info.biSizeImage != 0 && info.biHeight > 0);
}

template <class Header>
bool ReadHeader(HANDLE file, Header& header) {
    DWORD read = 0;
    return ReadFile(file, &header, sizeof header, &read, nullptr) && read == sizeof header;
}

} // namespace

bool IsSoundBitmap(const std::wstring& path) {
    const common::UniqueHandle file = common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER length = {};
    BITMAPFILEHEADER start = {};
    BITMAPINFOHEADER info = {};
    if (!file || !GetFileSizeEx(file.get(), &length) || !ReadHeader(file.get(), start) ||
        !ReadHeader(file.get(), info)) {
        return false;
    }
    const std::int64_t pixels = start.bfOffBits;
    return start.bfType == kBitmapMark && IsSoundFormat(info) && IsSoundSize(info) &&
           pixels >= std::int64_t{sizeof start} + HeaderBytes(info) &&
           pixels + PixelBytes(info) <= length.QuadPart;
}

} // namespace docview
