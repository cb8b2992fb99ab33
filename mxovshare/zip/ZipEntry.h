// A file or folder in a package.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace mxovshare {

/// A last-write time as the container holds it.
struct ZipTime {
    std::uint64_t fileTime = 0; ///< 100 ns since 1601, UTC; 0 when the package holds only the local time
    std::uint32_t dosTime = 0;  ///< date and time in two seconds, local
};

/// DOS attributes that a package keeps.
inline constexpr std::uint8_t kAttributeReadOnly = 0x01;
inline constexpr std::uint8_t kAttributeHidden = 0x02;
inline constexpr std::uint8_t kAttributeSystem = 0x04;
inline constexpr std::uint8_t kAttributeFolder = 0x10;
inline constexpr std::uint8_t kAttributeArchive = 0x20;

/// The part of an entry that its producer chooses freely.
struct ZipItem {
    std::string name; ///< UTF-8, parts separated by "/", none at the end
    ZipTime modified;
    std::uint8_t attributes = 0;
    std::size_t rank = 0; ///< the directory lists entries by rank; among equals in the order of writing
};

struct ZipEntry : ZipItem {
    std::uint64_t size = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t headerOffset = 0;
    std::uint64_t dataOffset = 0;
    std::uint32_t crc32 = 0;
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
    bool isFolder = false;
};

} // namespace mxovshare
