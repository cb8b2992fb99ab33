// Which files of a folder are in a package already.
#pragma once

#include "package/FolderScan.h"
#include "package/PackageWork.h"
#include "package/ZipEntry.h"

#include <vector>

namespace mxovshare {

/// For each item its entry of the same name, size and exact last-write time, nullptr without one: a file that
/// is probably the same.
std::vector<const ZipEntry*> FindCandidates(const std::vector<FolderItem>& items,
                                            const std::vector<ZipEntry>& entries);

/// Reads the candidates' files on all processors and sets to nullptr those whose content does not meet the
/// entry's checksum. Advances the meter by the bytes read. A file that cannot be read throws FileFailure.
void KeepUnchanged(const std::vector<FolderItem>& items, std::vector<const ZipEntry*>& candidates,
                   ProgressMeter& meter);

} // namespace mxovshare
