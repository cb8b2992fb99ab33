// Reading the entries of a package.
#pragma once

#include "files/ByteSource.h"
#include "pack/ProgressMeter.h"
#include "pack/VerifiedEntryCache.h"
#include "zip/ZipDirectory.h"

#include <string>
#include <vector>

namespace mxovshare {

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries);

/// The entry's name as a path relative to the package folder, separated by "\".
std::wstring RelativePath(const ZipEntry& entry);

/// Unpacks every entry in memory to verify it and adds it to `verified`, if given. Throws PackageError for
/// the first fault.
void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter,
                  VerifiedEntryCache* verified = nullptr);

} // namespace mxovshare
