// Which files of a folder an old package probably holds already.
#pragma once

#include "pack/FolderScan.h"
#include "zip/ZipEntry.h"

#include <vector>

namespace mxovshare {

/// Returns for each item the entry of the same name, size and exact last-write time, or null: a file that is
/// probably the same. An entry that must not be copied as it is packed is no candidate.
std::vector<const ZipEntry*> FindReuseCandidates(const std::vector<FolderItem>& items,
                                                 const std::vector<ZipEntry>& entries);

} // namespace mxovshare
