// The files of a folder that is to be packed.
#pragma once

#include "zip/ZipEntry.h"

#include <string>
#include <vector>

namespace mxovshare {

struct FolderItem {
    ZipItem item;
    std::wstring path; ///< on the disk
    std::uint64_t size = 0;
    bool isFolder = false; ///< a folder without anything in it
};

/// Everything below `folder`: all files but the locks of office programs ("~$..." and ".~lock....#"), and the
/// folders without any. `except` names files that are left out. The information file comes first, then the
/// rest by name. Throws FileFailure for what cannot be listed and for what no package may hold: links, and
/// names that could not be unpacked.
std::vector<FolderItem> ScanFolder(const std::wstring& folder, const std::vector<std::wstring>& except);

} // namespace mxovshare
