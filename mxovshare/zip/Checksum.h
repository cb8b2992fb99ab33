// The container's checksum, CRC-32.
#pragma once

#include "files/ByteSource.h"

#include <cstdint>

namespace mxovshare {

/// The checksum of data whose first part has the checksum `before` (0 for none) and is followed by `bytes`.
std::uint32_t Checksum(std::uint32_t before, Bytes bytes);

/// The checksum of data in two parts with these checksums, the second one being `size` bytes long, less
/// than 2 GB.
std::uint32_t CombinedChecksum(std::uint32_t first, std::uint32_t second, std::uint32_t size);

} // namespace mxovshare
