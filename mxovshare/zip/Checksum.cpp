#include "Checksum.h"

#include <zlib.h>

namespace mxovshare {

std::uint32_t Checksum(std::uint32_t before, Bytes bytes) {
    return static_cast<std::uint32_t>(crc32_z(before, bytes.data(), bytes.size()));
}

std::uint32_t CombinedChecksum(std::uint32_t first, std::uint32_t second, std::uint32_t size) {
    return static_cast<std::uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(size)));
}

} // namespace mxovshare
