#include "PreviewImage.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::int64_t kLargestSide = 16384;
constexpr std::int64_t kMostPixels = 64LL << 20;

static_assert(sizeof(BITMAPFILEHEADER) == 14);

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

// Bytes between the start of the information header and the end of what follows it before the pixels.
std::int64_t HeaderBytes(const BITMAPINFOHEADER& info) {
    std::int64_t bytes = info.biSize;
    if (info.biBitCount <= 8)
        bytes += 4LL * (info.biClrUsed != 0 ? info.biClrUsed : 1U << info.biBitCount);
    if (info.biCompression == BI_BITFIELDS && info.biSize == sizeof(BITMAPINFOHEADER))
        bytes += 3LL * sizeof(DWORD);
    return bytes;
}

std::int64_t PixelBytes(const BITMAPINFOHEADER& info) {
    if (info.biCompression == BI_RLE4 || info.biCompression == BI_RLE8)
        return info.biSizeImage;
    const std::int64_t rowBytes = (std::int64_t{info.biWidth} * info.biBitCount + 31) / 32 * 4;
    return rowBytes * std::abs(std::int64_t{info.biHeight});
}

bool AreHeadersSound(const BITMAPFILEHEADER& file, const BITMAPINFOHEADER& info, std::int64_t fileBytes) {
    const std::int64_t width = info.biWidth;
    const std::int64_t height = std::abs(std::int64_t{info.biHeight});
    if (file.bfType != 0x4D42 || info.biSize < sizeof(BITMAPINFOHEADER) ||
        info.biSize > sizeof(BITMAPV5HEADER))
        return false;
    if (info.biPlanes != 1 || !IsKnownDepth(info) || (info.biBitCount <= 8 && info.biClrUsed > 256))
        return false;
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide ||
        width * height > kMostPixels)
        return false;
    const bool compressed = info.biCompression == BI_RLE4 || info.biCompression == BI_RLE8;
    if (compressed && (info.biSizeImage == 0 || info.biHeight < 0))
        return false;
    const std::int64_t pixels = file.bfOffBits;
    return pixels >= std::int64_t{sizeof file} + HeaderBytes(info) && pixels + PixelBytes(info) <= fileBytes;
}

template <class Header>
bool ReadHeader(HANDLE file, Header& header) {
    DWORD read = 0;
    return ReadFile(file, &header, sizeof header, &read, nullptr) && read == sizeof header;
}

} // namespace

bool IsSoundBitmap(const std::wstring& path) {
    const UniqueHandle file = OwnFile(CreateFileW(path.c_str(), GENERIC_READ,
                                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER size = {};
    BITMAPFILEHEADER fileHeader = {};
    BITMAPINFOHEADER infoHeader = {};
    return file && GetFileSizeEx(file.get(), &size) && ReadHeader(file.get(), fileHeader) &&
           ReadHeader(file.get(), infoHeader) && AreHeadersSound(fileHeader, infoHeader, size.QuadPart);
}

UniqueBitmap LoadPreview(const std::wstring& path) {
    if (path.empty() || !IsSoundBitmap(path))
        return {};
    return UniqueBitmap(static_cast<HBITMAP>(
        LoadImageW(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
}
