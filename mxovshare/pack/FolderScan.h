// The files of a folder that is to be packed.
#pragma once

#include "zip/ZipEntry.h"

#include <string>
#include <vector>

namespace mxovshare {

struct FolderItem {
    ZipItem item;
    std::wstring path; ///< on the disk; empty for an item that only an old package holds
    std::uint64_t size = 0;
    bool isFolder = false;    ///< a folder without anything in it
    bool isExclusive = false; ///< no other program can write the file
};

/// Lists all files below `folder` and the folders without any. Left out are the locks of office programs
/// ("~$..." and ".~lock....#"), temporary files that a crash left behind, and the files in `except`. The
/// information file comes first, then the rest by name. Throws FileFailure for what cannot be listed and for
/// what no package may hold: links, and names that could not be unpacked.
std::vector<FolderItem> ScanFolder(const std::wstring& folder, const std::vector<std::wstring>& except);

/// The items in the order of a package's directory, ranked: the information file first, then by name.
std::vector<FolderItem> SortedItems(std::vector<FolderItem> items);

} // namespace mxovshare
