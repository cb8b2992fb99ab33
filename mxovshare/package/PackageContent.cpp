#include "package/PackageContent.h"

#include "package/EntryReader.h"

#include <algorithm>

namespace mxovshare {

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries) {
    std::uint64_t total = 0;
    for (const ZipEntry& entry : entries)
        total += entry.size;
    return total;
}

std::wstring RelativePath(const ZipEntry& entry) {
    std::wstring path = FromUtf8(entry.name);
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter) {
    for (const ZipEntry& entry : entries) {
        meter.Begin(RelativePath(entry));
        ReadEntry(source, entry, [&meter](Bytes piece) { meter.Advance(piece.size()); });
    }
}

} // namespace mxovshare
