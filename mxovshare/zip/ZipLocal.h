// The headers in front of the entries' data, held against the directory.
#pragma once

#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <vector>

namespace mxovshare {

/// Finds the data of each entry and sets `dataOffset`. Throws PackageError when a header differs from
/// the directory or when entries overlap each other or the directory, which begins at `directoryOffset`.
void LocateData(const ByteSource& source, std::uint64_t directoryOffset, std::vector<ZipEntry>& entries);

} // namespace mxovshare
