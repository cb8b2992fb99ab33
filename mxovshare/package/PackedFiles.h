// Finding and reading single files of a package.
#pragma once

#include "files/ByteSource.h"
#include "zip/ZipEntry.h"

#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

/// The name of an entry for a path relative to the package folder.
std::string EntryName(std::wstring path);

/// The file whose folded name (see FoldCase) is `folded`, which is plain text of the same case rules; null
/// without one.
const ZipEntry* FindPackedFile(const std::vector<ZipEntry>& entries, std::string_view folded);

/// The information file: "mxinfo.ini", else "Private/mxinfo.ini"; null without one.
const ZipEntry* FindInformation(const std::vector<ZipEntry>& entries);

/// The content of an information file. Throws PackageError.
std::string ReadInformationFile(const ByteSource& source, const ZipEntry& entry);

} // namespace mxovshare
