// Bitmap files for tests, whole and with headers that lie.
#pragma once

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <windows.h>

inline constexpr int kBitmapWidth = 10; // pixels
inline constexpr int kBitmapHeight = 6;

struct BitmapHeaders {
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
};

using SpoilHeaders = std::function<void(BitmapHeaders&)>;

/// A bitmap file whose headers a test may spoil.
inline std::string BitmapBytes(int bits, const SpoilHeaders& spoil = nullptr) {
    BitmapHeaders headers;
    const int palette = bits <= 8 ? 4 << bits : 0;
    headers.file.bfType = 0x4D42;
    headers.file.bfOffBits =
        static_cast<DWORD>(sizeof headers.file + sizeof headers.info) + static_cast<DWORD>(palette);
    headers.file.bfSize =
        headers.file.bfOffBits + static_cast<DWORD>((kBitmapWidth * bits + 31) / 32 * 4 * kBitmapHeight);
    headers.info = {
        sizeof headers.info, kBitmapWidth, kBitmapHeight, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(headers.file.bfSize, '\x40');
    if (spoil) {
        spoil(headers);
    }
    std::memcpy(bytes.data(), &headers.file, sizeof headers.file);
    std::memcpy(bytes.data() + sizeof headers.file, &headers.info, sizeof headers.info);
    return bytes;
}

/// What no bitmap of 24 bits a pixel may state; nothing that shows pictures shows one of these.
inline std::vector<SpoilHeaders> AbsurdHeaders() {
    return {
        [](BitmapHeaders& h) { h.file.bfType = 0x4D43; },
        [](BitmapHeaders& h) { h.file.bfOffBits = 0x7FFFFFFF; },
        [](BitmapHeaders& h) { h.file.bfOffBits = 20; },
        [](BitmapHeaders& h) { h.info.biSize = 0xFFFFFFF0; },
        [](BitmapHeaders& h) { h.info.biWidth = 0; },
        [](BitmapHeaders& h) { h.info.biWidth = -10; },
        [](BitmapHeaders& h) { h.info.biWidth = 30000; },
        [](BitmapHeaders& h) { h.info.biHeight = 0; },
        [](BitmapHeaders& h) { h.info.biHeight = 30000; },
        [](BitmapHeaders& h) { h.info.biHeight = static_cast<LONG>(0x80000000); },
        [](BitmapHeaders& h) { h.info.biPlanes = 3; },
        [](BitmapHeaders& h) { h.info.biBitCount = 2; },
        [](BitmapHeaders& h) { h.info.biCompression = BI_JPEG; },
    };
}
