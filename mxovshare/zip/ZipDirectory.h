// The directory of a package file: which entries it holds, checked so that unpacking them is safe.
#pragma once

#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <vector>

namespace mxovshare {

/// How much a package may claim before it is refused.
struct ZipLimits {
    std::uint64_t entries = 262'144;
    std::uint64_t total = std::uint64_t{1} << 40;          ///< bytes of all entries, unpacked
    std::uint64_t freeExpansion = std::uint64_t{64} << 20; ///< bytes that any package may unpack to
    std::uint64_t expansion = 200; ///< beyond that: times the size of the package file
};

/// All entries in the directory's order. Throws PackageError for a file that is no whole package or that
/// holds an entry which must not be unpacked: a forbidden name, a link, encryption, an unknown method,
/// overlapping data, sizes or headers that contradict each other, more data than the limits allow.
std::vector<ZipEntry> ReadZipDirectory(const ByteSource& source, const ZipLimits& limits = {});

} // namespace mxovshare
