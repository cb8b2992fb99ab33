// Packing the items of a folder into a package file, reusing packed data of an old package.
#pragma once

#include "files/DiskFile.h"
#include "pack/FolderScan.h"
#include "pack/ProgressMeter.h"

#include <vector>

namespace mxovshare {

/// What became of an item.
enum class Outcome {
    Packed,    ///< packed from the file; what was written is still to be verified
    Copied,    ///< copied from the old package; what was written is still to be verified
    Verified,  ///< copied from the old package, read back and verified
    Different, ///< the file differs from its entry in the old package
    Damaged,   ///< its entry in the old package is damaged
};

/// Packs all items into `file` on all processors; the result states the outcome for each. The file is a
/// package only when every item is Packed, Copied or Verified. `reuse` holds for each item the entry of `old`
/// to copy, or null. Each item advances the meter by its size, a verified one twice.
std::vector<Outcome> PackItems(OpenFile& file, const std::vector<FolderItem>& items, const ByteSource& old,
                               const std::vector<const ZipEntry*>& reuse, ProgressMeter& meter);

} // namespace mxovshare
