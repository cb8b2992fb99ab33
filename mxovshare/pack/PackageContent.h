// Looking into packages.
#pragma once

#include "files/ByteSource.h"
#include "pack/ProgressMeter.h"
#include "pack/VerifiedEntryCache.h"
#include "zip/ZipDirectory.h"

#include <string>
#include <string_view>
#include <vector>

namespace mxovshare {

std::wstring FromUtf8(std::string_view text);

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries);

/// The entry's name as a path relative to the package folder, separated by "\".
std::wstring RelativePath(const ZipEntry& entry);

/// Reads every entry and checks it; what is sound is noted in `verified`, if given. Throws PackageError for
/// the first fault.
void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter,
                  VerifiedEntryCache* verified = nullptr);

} // namespace mxovshare
