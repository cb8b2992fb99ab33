#include "ZipDirectory.h"

#include "ByteWindow.h"
#include "EntryName.h"
#include "PackageError.h"
#include "text/CaseFold.h"
#include "ZipEnd.h"
#include "ZipExtra.h"
#include "ZipFormat.h"
#include "ZipLocal.h"

#include <algorithm>
#include <numeric>

namespace mxovshare {

using namespace zip;

namespace {

constexpr std::uint32_t kUnixTypeMask = 0170000;
constexpr std::uint32_t kUnixFile = 0100000;
constexpr std::uint32_t kUnixFolder = 0040000;
constexpr std::uint32_t kReparsePoint = 0x400;
constexpr std::size_t kDirectoryWindow = std::size_t{64} << 10;
// No deflated byte stands for more than this many bytes.
constexpr std::uint64_t kDeflateExpansion = 1032;

// Takes one header off the front of the directory. `offset` moves behind it.
class CentralReader {
public:
    CentralReader(const ByteSource& source, const DirectoryPlace& place)
        : m_window(source, kDirectoryWindow), m_offset(place.offset), m_end(place.offset + place.size) {}

    ZipEntry Next();
    bool AtEnd() const { return m_offset == m_end; }

private:
    Bytes Take(std::size_t size);

    ByteWindow m_window;
    std::uint64_t m_offset;
    std::uint64_t m_end;
};

Bytes CentralReader::Take(std::size_t size) {
    if (size > m_end - m_offset) {
        throw PackageError("the directory is cut off");
    }
    const Bytes bytes = m_window.View(m_offset, size);
    m_offset += size;
    return bytes;
}

// Folders are marked by a "/" at the end of their names, which is no part of the name.
void ReadKind(ZipEntry& entry, std::uint32_t externalAttributes) {
    entry.attributes = static_cast<std::uint8_t>(externalAttributes);
    entry.isFolder = entry.name.ends_with('/');
    if (entry.isFolder) {
        entry.name.pop_back();
    }
    const std::uint32_t unixType = externalAttributes >> 16 & kUnixTypeMask;
    if ((externalAttributes & kReparsePoint) != 0 ||
        (unixType != 0 && unixType != (entry.isFolder ? kUnixFolder : kUnixFile))) {
        throw EntryError(entry.name, "it is a link or a special file");
    }
}

ZipEntry CentralReader::Next() {
    FieldReader fields(Take(kCentralSize));
    if (fields.U32() != kCentralSignature) {
        throw PackageError("the directory is damaged");
    }
    fields.Skip(4);
    ZipEntry entry;
    entry.flags = fields.U16();
    entry.method = fields.U16();
    entry.modified.dosTime = fields.U32();
    entry.crc32 = fields.U32();
    WideFields wide;
    wide.packedSize = fields.U32();
    wide.size = fields.U32();
    const std::size_t nameSize = fields.U16();
    const std::size_t extraSize = fields.U16();
    const std::size_t commentSize = fields.U16();
    const std::uint16_t disk = fields.U16();
    fields.Skip(2);
    const std::uint32_t attributes = fields.U32();
    wide.headerOffset = fields.U32();

    FieldReader rest(Take(nameSize + extraSize + commentSize));
    const Bytes name = rest.Next(nameSize);
    entry.name.assign(name.begin(), name.end());
    const Bytes extra = rest.Next(extraSize);
    if (disk != 0 && disk != kFull16) {
        throw EntryError(entry.name, "it lies on another disk");
    }
    if (!ResolveZip64(extra, wide)) {
        throw EntryError(entry.name, "its ZIP64 sizes are missing");
    }
    entry.size = wide.size;
    entry.packedSize = wide.packedSize;
    entry.headerOffset = wide.headerOffset;
    ReadTimes(extra, entry.modified);
    ReadKind(entry, attributes);
    return entry;
}

void CheckEntry(const ZipEntry& entry) {
    if (const std::string_view fault = EntryNameFault(entry.name); !fault.empty()) {
        throw EntryError(entry.name, fault);
    }
    if ((entry.flags & (kFlagEncrypted | kFlagStrongEncryption | kFlagMasked)) != 0) {
        throw EntryError(entry.name, "it is encrypted");
    }
    if (entry.method != kMethodStored && entry.method != kMethodDeflated) {
        throw EntryError(entry.name,
                         "it is compressed by the unknown method " + std::to_string(entry.method));
    }
    if ((entry.flags & kFlagPatch) != 0) {
        throw EntryError(entry.name, "it holds patch data");
    }
    if (entry.method == kMethodStored && entry.size != entry.packedSize) {
        throw EntryError(entry.name, "its two sizes contradict each other");
    }
    if (entry.isFolder && entry.size != 0) {
        throw EntryError(entry.name, "it is a folder that holds data");
    }
    if (entry.size / kDeflateExpansion > entry.packedSize) {
        throw EntryError(entry.name, "its stated size is more than its data can hold");
    }
}

// With the lowest of all characters as separator, what lies in a folder sorts right behind the folder's own
// name.
std::string SortKey(const ZipEntry& entry) {
    std::string key = FoldCase(entry.name);
    std::ranges::replace(key, '/', '\1');
    return key;
}

void CheckClashes(const std::vector<ZipEntry>& entries) {
    std::vector<std::string> keys;
    keys.reserve(entries.size());
    std::ranges::transform(entries, std::back_inserter(keys), SortKey);
    std::vector<std::uint32_t> order(entries.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, {}, [&keys](std::uint32_t i) -> const std::string& { return keys[i]; });
    for (std::size_t i = 1; i < order.size(); ++i) {
        const ZipEntry& first = entries[order[i - 1]];
        const std::string& above = keys[order[i - 1]];
        const std::string& key = keys[order[i]];
        if (key == above) {
            throw EntryError(entries[order[i]].name,
                             first.name == entries[order[i]].name
                                 ? "the name occurs twice"
                                 : "the name differs only in case from " + QuoteName(first.name));
        }
        if (!first.isFolder && key.size() > above.size() && key.starts_with(above) &&
            key[above.size()] == '\1') {
            throw EntryError(entries[order[i]].name,
                             "it lies in " + QuoteName(first.name) + ", which is a file");
        }
    }
}

void CheckTotal(const std::vector<ZipEntry>& entries, std::uint64_t fileSize, const ZipLimits& limits) {
    const std::uint64_t proportionate = std::min(fileSize, limits.total) * limits.expansion;
    const std::uint64_t allowed = std::min(limits.total, std::max(limits.freeExpansion, proportionate));
    std::uint64_t total = 0;
    for (const ZipEntry& entry : entries) {
        if (entry.size > allowed - total) {
            throw EntryError(entry.name, "the package would unpack to more than " +
                                             std::to_string(allowed >> 20) +
                                             " MB, which is out of proportion to its size");
        }
        total += entry.size;
    }
}

} // namespace

std::vector<ZipEntry> ReadZipDirectory(const ByteSource& source, const ZipLimits& limits) {
    const DirectoryPlace place = FindDirectory(source);
    if (place.count > limits.entries) {
        throw PackageError("the package holds more than " + std::to_string(limits.entries) + " entries");
    }
    CentralReader reader(source, place);
    std::vector<ZipEntry> entries;
    entries.reserve(place.count);
    for (std::uint64_t i = 0; i < place.count; ++i) {
        entries.push_back(reader.Next());
        CheckEntry(entries.back());
    }
    if (!reader.AtEnd()) {
        throw PackageError("the directory holds more than the end record counts");
    }
    CheckTotal(entries, source.Size(), limits);
    CheckClashes(entries);
    LocateData(source, place.offset, entries);
    return entries;
}

} // namespace mxovshare
