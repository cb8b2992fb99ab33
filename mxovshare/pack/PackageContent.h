// Reading the entries of a package.
#pragma once

#include "files/ByteSource.h"
#include "pack/ProgressMeter.h"
#include "pack/VerifiedEntryCache.h"
#include "zip/ZipDirectory.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace mxovshare {

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries);

/// The entry's name as a path relative to the package folder, separated by "\".
std::wstring RelativePath(const ZipEntry& entry);

/// Counts an unpacked piece as progress. Throws Cancelled once the work is to stop.
using OnPiece = std::function<void(Bytes)>;

/// Unpacks the entry of an index, on any thread, and passes each piece to `onPiece`. May throw.
using EntryWork = std::function<void(std::size_t index, const OnPiece& onPiece)>;

/// Does the work for all entries on all processors, some entries ahead of the one that `meter` names.
/// Rethrows the first exception in the order of the entries after all threads have ended.
void ForEachEntry(const std::vector<ZipEntry>& entries, ProgressMeter& meter, const EntryWork& work);

/// Unpacks every entry in memory to verify it and adds it to `verified`, if given. Throws PackageError for
/// the first fault.
void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter,
                  VerifiedEntryCache* verified = nullptr);

} // namespace mxovshare
