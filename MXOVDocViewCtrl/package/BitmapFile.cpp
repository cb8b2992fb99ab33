#include "BitmapFile.h"

#include "common/Handles.h"
#include "RunLength.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace docview {

namespace {

constexpr std::int64_t kLargestSide = 16384;
constexpr std::int64_t kMostPixels = std::int64_t{64} * 1024 * 1024;
constexpr WORD kBitmapMark = 0x4D42; // "BM"
constexpr DWORD kMostColours = 256;
constexpr int kPaletteDepth = 8; // up to this many bits a pixel is an index into a palette

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
        return info.biCompression == BI_RGB ||
               (info.biCompression == BI_BITFIELDS && info.biSize != sizeof(BITMAPCOREHEADER));
    default:
        return false;
    }
}

/// Bytes from the start of the information header to the end of what follows it before the pixels.
std::int64_t HeaderBytes(const BITMAPINFOHEADER& info) {
    std::int64_t bytes = info.biSize;
    if (info.biBitCount <= kPaletteDepth) {
        const bool isCore = info.biSize == sizeof(BITMAPCOREHEADER);
        const DWORD colours = info.biClrUsed != 0 ? info.biClrUsed : 1U << info.biBitCount;
        bytes += static_cast<std::int64_t>(isCore ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD)) * colours;
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
    if (info.biPlanes != 1 || !IsKnownDepth(info)) {
        return false;
    }
    if (info.biBitCount <= kPaletteDepth && info.biClrUsed > kMostColours) {
        return false;
    }
    return !IsRunLength(info) || info.biHeight > 0;
}

class BitmapReader {
public:
    explicit BitmapReader(const std::wstring& path)
        : m_file(common::OwnFile(CreateFileW(path.c_str(), GENERIC_READ,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                             OPEN_EXISTING, 0, nullptr))) {
        LARGE_INTEGER length = {};
        if (m_file && GetFileSizeEx(m_file.get(), &length)) {
            m_length = length.QuadPart;
        }
    }

    /// Bytes of the whole file; 0 when it cannot be read.
    [[nodiscard]] std::int64_t Length() const { return m_length; }

    template <class Header>
    bool Read(Header& header) {
        return ReadBytes(&header, sizeof header);
    }

    /// The information header, an older one of 12 bytes in the newer form; none for another size.
    std::optional<BITMAPINFOHEADER> ReadInformation() {
        BITMAPINFOHEADER info = {};
        if (!Read(info.biSize)) {
            return std::nullopt;
        }
        if (info.biSize == sizeof(BITMAPCOREHEADER)) {
            WORD values[4] = {};
            const bool read = Read(values);
            info = {info.biSize, values[0], values[1], values[2], values[3], BI_RGB, 0, 0, 0, 0, 0};
            return read ? std::optional(info) : std::nullopt;
        }
        if (info.biSize < sizeof info || info.biSize > sizeof(BITMAPV5HEADER) ||
            !ReadBytes(&info.biWidth, sizeof info - sizeof info.biSize)) {
            return std::nullopt;
        }
        return info;
    }

    /// Up to `most` bytes from a place in the file.
    std::string ReadFrom(std::int64_t place, std::int64_t most) {
        std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(m_length - place, 0, most)),
                          '\0');
        LARGE_INTEGER position = {};
        position.QuadPart = place;
        return SetFilePointerEx(m_file.get(), position, nullptr, FILE_BEGIN) &&
                       ReadBytes(bytes.data(), bytes.size())
                   ? bytes
                   : std::string();
    }

private:
    bool ReadBytes(void* bytes, std::size_t size) {
        DWORD read = 0;
        return ReadFile(m_file.get(), bytes, static_cast<DWORD>(size), &read, nullptr) && read == size;
    }

    common::UniqueHandle m_file;
    std::int64_t m_length = 0;
};

/// Whether compressed pixels end by themselves inside the file: the loader goes on until they do when their
/// size is not stated.
bool EndsByItself(BitmapReader& file, const BITMAPINFOHEADER& info, std::int64_t pixels) {
    const std::int64_t most =
        4 * std::int64_t{info.biWidth} * info.biHeight + 4 * std::int64_t{info.biHeight} + 4;
    return IsCompleteRunLength(file.ReadFrom(pixels, most),
                               {.width = info.biWidth, .height = info.biHeight, .bits = info.biBitCount});
}

} // namespace

bool IsSoundBitmap(const std::wstring& path) {
    BitmapReader file(path);
    BITMAPFILEHEADER start = {};
    if (!file.Read(start) || start.bfType != kBitmapMark) {
        return false;
    }
    const std::optional<BITMAPINFOHEADER> info = file.ReadInformation();
    const std::int64_t pixels = start.bfOffBits;
    return info && IsSoundFormat(*info) && IsSoundSize(*info) &&
           pixels >= std::int64_t{sizeof start} + HeaderBytes(*info) &&
           pixels + PixelBytes(*info) <= file.Length() &&
           (!IsRunLength(*info) || info->biSizeImage != 0 || EndsByItself(file, *info, pixels));
}

} // namespace docview
