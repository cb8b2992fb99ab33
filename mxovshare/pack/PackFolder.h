// Making a package file out of a folder.
#pragma once

#include "mxovpackage.h"

#include <string>

namespace mxovshare {

/// A file of the folder that is packed with the content of another one.
struct Substitute {
    std::wstring path;    ///< the file that it stands for
    std::wstring content; ///< the file that is read; not packed itself if it lies in the folder
    std::uint64_t size = 0;
    FILETIME modified = {};
};

/// Packs everything below `folder` into `file`: into a new file beside it, which is read back and checked
/// entry by entry before it takes the old one's place in one step. What the old package already holds (same
/// name, size, last-write time and checksum) is copied as it is packed there. Works on all processors. Throws
/// FileFailure, PackageError or Cancelled; the old file is then as it was and nothing else is left behind.
void PackFolder(const std::wstring& folder, const std::wstring& file, PackageProgress* progress,
                const Substitute* substitute = nullptr);

} // namespace mxovshare
