// Finding and reading single files of a package.
#pragma once

#include "files/ByteSource.h"
#include "mxovpackage.h"
#include "zip/PackageError.h"
#include "zip/ZipEntry.h"

#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

/// What the interface reports of an entry.
PackageEntry Describe(const ZipEntry& entry);

/// The name of an entry for a path relative to the package folder.
std::string EntryName(std::wstring path);

/// The file whose folded name (see FoldCase) is `folded`, which is plain text of the same case rules; null
/// without one.
const ZipEntry* FindPackedFile(const std::vector<ZipEntry>& entries, std::string_view folded);

/// The information file: "mxinfo.ini", else "Private/mxinfo.ini"; null without one.
const ZipEntry* FindInformation(const std::vector<ZipEntry>& entries);

/// Larger than any information file, and small enough to be read at once.
inline constexpr std::uint64_t kLargestInformation = std::uint64_t{12} << 20;

/// The content of an information file. Throws PackageError.
std::string ReadInformationFile(const ByteSource& source, const ZipEntry& entry);

/// An information file of these bytes. Throws PackageError for too many sections or lines.
Information ParseInformation(std::string bytes);
PackageError InformationTooLong();

} // namespace mxovshare
