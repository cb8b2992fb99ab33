#include "package/PackedFiles.h"

#include "common/InformationFile.h"
#include "common/Utf8.h"
#include "ini/IniInformation.h"
#include "pack/FileTimes.h"
#include "pack/PackageContent.h"
#include "text/CaseFold.h"
#include "zip/EntryReader.h"

#include <algorithm>

namespace mxovshare {

namespace {

// No character takes more than four bytes, so most names need not be folded.
bool IsSameFolded(std::string_view name, std::string_view folded) {
    return name.size() <= 4 * folded.size() && FoldCase(name) == folded;
}

} // namespace

PackageEntry Describe(const ZipEntry& entry) {
    PackageEntry description;
    description.name = RelativePath(entry);
    description.size = entry.size;
    description.packedSize = entry.packedSize;
    description.crc32 = entry.crc32;
    description.modified = ToFileTime(entry.modified);
    description.isFolder = entry.isFolder;
    return description;
}

std::string EntryName(std::wstring path) {
    std::ranges::replace(path, L'\\', L'/');
    return common::ToUtf8Strict(path);
}

const ZipEntry* FindPackedFile(const std::vector<ZipEntry>& entries, std::string_view folded) {
    const auto found = std::ranges::find_if(entries, [folded](const ZipEntry& entry) {
        return !entry.isFolder && IsSameFolded(entry.name, folded);
    });
    return found != entries.end() ? &*found : nullptr;
}

const ZipEntry* FindInformation(const std::vector<ZipEntry>& entries) {
    for (const std::string_view name : common::kInformationEntries) {
        if (const ZipEntry* entry = FindPackedFile(entries, name)) {
            return entry;
        }
    }
    return nullptr;
}

std::string ReadInformationFile(const ByteSource& source, const ZipEntry& entry) {
    return ReadWholeEntry(source, entry, kLargestInformation);
}

Information ParseInformation(std::string bytes) {
    Information information;
    if (!information.Parse(std::move(bytes))) {
        throw InformationTooLong();
    }
    return information;
}

PackageError InformationTooLong() {
    return PackageError("the information file holds more than " + std::to_string(kMostInformation.sections) +
                        " sections or " + std::to_string(kMostInformation.lines) +
                        " lines, or a line longer than " + std::to_string(kMostInformation.length >> 10) +
                        " KB");
}

} // namespace mxovshare
