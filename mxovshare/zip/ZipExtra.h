// The extra fields of an entry: sizes beyond 32 bits and exact times.
#pragma once

#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <cstdint>
#include <vector>

namespace mxovshare {

/// The fields of a header that move into the ZIP64 extra field when their own place is full.
struct WideFields {
    std::uint64_t size = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t headerOffset = 0;
};

/// Replaces each full field by its value from the ZIP64 field in `extra`; false when one is missing there.
bool ResolveZip64(Bytes extra, WideFields& fields);

/// Takes the exact time from `extra`, if it holds one: the NTFS field, else the extended timestamp.
void ReadTimes(Bytes extra, ZipTime& time);

/// Appends the extended timestamp and the NTFS field. The same form serves both headers.
void AppendTimes(const ZipTime& time, std::vector<std::uint8_t>& extra);

} // namespace mxovshare
