// The records at the end of a package file, which locate its directory.
#pragma once

#include "files/ByteSource.h"

namespace mxovshare {

struct DirectoryPlace {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::uint64_t count = 0; ///< entries
};

/// Throws PackageError when the file does not end as a package does or its end records contradict each other.
DirectoryPlace FindDirectory(const ByteSource& source);

} // namespace mxovshare
