// Which files of a folder are in a package already.
#pragma once

#include "pack/FolderScan.h"
#include "zip/ZipEntry.h"

#include <vector>

namespace mxovshare {

/// For each item its entry of the same name, size and exact last-write time, nullptr without one: a file that
/// is probably the same. An entry that packing anew would make smaller is none.
std::vector<const ZipEntry*> FindReuseCandidates(const std::vector<FolderItem>& items,
                                                 const std::vector<ZipEntry>& entries);

} // namespace mxovshare
