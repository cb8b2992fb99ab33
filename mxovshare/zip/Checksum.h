// The container's checksum: CRC-32 as zlib computes it, faster where the processor can multiply polynomials.
#pragma once

#include "files/ByteSource.h"

#include <cstdint>

namespace mxovshare {

/// The checksum of data with this checksum (0 for none) and `bytes` behind it.
std::uint32_t Checksum(std::uint32_t before, Bytes bytes);

/// The checksum of data in two parts with these checksums, the second one being `size` bytes long, less
/// than 2 GB.
std::uint32_t CombinedChecksum(std::uint32_t first, std::uint32_t second, std::uint32_t size);

} // namespace mxovshare
