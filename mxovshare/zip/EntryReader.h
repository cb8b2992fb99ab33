// The content of one entry of a package.
#pragma once

#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <functional>
#include <string>

namespace mxovshare {

/// Passes the content of an entry to `take` piece by piece and returns the checksum of its packed data.
/// Throws PackageError when the data is damaged, is more or less than stated, or does not meet its checksum;
/// never hands out more bytes than the entry's stated size.
std::uint32_t ReadEntry(const ByteSource& source, const ZipEntry& entry,
                        const std::function<void(Bytes)>& take);

/// The whole content of an entry that is at most `limit` bytes long; PackageError when it is longer.
std::string ReadWholeEntry(const ByteSource& source, const ZipEntry& entry, std::uint64_t limit);

} // namespace mxovshare
