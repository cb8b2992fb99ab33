#include "ZipLocal.h"

#include "ByteWindow.h"
#include "PackageError.h"
#include "ZipExtra.h"
#include "ZipFormat.h"

#include <algorithm>
#include <string_view>

namespace mxovshare {

using namespace zip;

namespace {

// A header with its name and times; the next one is behind the data.
constexpr std::size_t kHeaderWindow = 512;
constexpr std::uint16_t kComparedFlags = kFlagEncrypted | kFlagDescriptor | kFlagStrongEncryption;

struct LocalHeader {
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t crc32 = 0;
    WideFields sizes;
    std::string_view name; // valid until the next use of the window
    bool complete = false;
    std::size_t length = 0;
};

// Reads the header of an entry, which must end within `room` bytes.
LocalHeader ReadLocalHeader(ByteWindow& window, const ZipEntry& entry, std::uint64_t room) {
    FieldReader fields(window.View(entry.headerOffset, kLocalSize));
    if (fields.U32() != kLocalSignature) {
        throw EntryError(entry.name, "its header is missing");
    }
    LocalHeader header;
    fields.Skip(2);
    header.flags = fields.U16();
    header.method = fields.U16();
    fields.Skip(4);
    header.crc32 = fields.U32();
    header.sizes.packedSize = fields.U32();
    header.sizes.size = fields.U32();
    const std::size_t nameSize = fields.U16();
    const std::size_t extraSize = fields.U16();
    header.length = kLocalSize + nameSize + extraSize;
    if (header.length > room) {
        throw EntryError(entry.name, "its header overlaps other data");
    }
    FieldReader rest(window.View(entry.headerOffset + kLocalSize, nameSize + extraSize));
    const Bytes name = rest.Next(nameSize);
    header.name = {reinterpret_cast<const char*>(name.data()), name.size()};
    header.complete = ResolveZip64(rest.Next(extraSize), header.sizes);
    return header;
}

bool SaysTheSame(const LocalHeader& header, const ZipEntry& entry) {
    const bool sameName = header.name == (entry.isFolder ? entry.name + "/" : entry.name);
    if (!sameName || header.method != entry.method || (header.flags ^ entry.flags) & kComparedFlags) {
        return false;
    }
    // With a descriptor behind the data the header may leave these three open.
    const bool open = (entry.flags & kFlagDescriptor) != 0;
    const auto agrees = [open](std::uint64_t value, std::uint64_t directory) {
        return value == directory || (open && value == 0);
    };
    return header.complete && agrees(header.crc32, entry.crc32) &&
           agrees(header.sizes.packedSize, entry.packedSize) && agrees(header.sizes.size, entry.size);
}

// Length of the descriptor that repeats checksum and sizes behind the data, in any of its four forms; 0 if
// none fits.
std::size_t DescriptorLength(Bytes bytes, const ZipEntry& entry) {
    for (const bool wide : {false, true}) {
        for (const bool marked : {true, false}) {
            const std::size_t length = (marked ? 4u : 0u) + 4u + (wide ? 16u : 8u);
            if (bytes.size() < length) {
                continue;
            }
            FieldReader fields(bytes);
            if (marked && fields.U32() != kDescriptorSignature) {
                continue;
            }
            const std::uint32_t crc32 = fields.U32();
            const std::uint64_t packedSize = wide ? fields.U64() : fields.U32();
            const std::uint64_t size = wide ? fields.U64() : fields.U32();
            if (crc32 == entry.crc32 && packedSize == entry.packedSize && size == entry.size) {
                return length;
            }
        }
    }
    return 0;
}

// Locates the data of one entry, which must end at `limit` or before.
void LocateEntryData(ByteWindow& window, std::uint64_t limit, ZipEntry& entry) {
    constexpr std::uint64_t kLongestDescriptor = 24;
    if (entry.headerOffset > limit || limit - entry.headerOffset < kLocalSize) {
        throw EntryError(entry.name, "its header overlaps other data");
    }
    const std::uint64_t room = limit - entry.headerOffset;
    const LocalHeader header = ReadLocalHeader(window, entry, room);
    if (!SaysTheSame(header, entry)) {
        throw EntryError(entry.name, "its header contradicts the directory");
    }
    if (entry.packedSize > room - header.length) {
        throw EntryError(entry.name, "its data overlaps other data");
    }
    entry.dataOffset = entry.headerOffset + header.length;
    if ((entry.flags & kFlagDescriptor) != 0) {
        const std::uint64_t left = room - header.length - entry.packedSize;
        const auto length = static_cast<std::size_t>(std::min(left, kLongestDescriptor));
        if (DescriptorLength(window.View(entry.dataOffset + entry.packedSize, length), entry) == 0) {
            throw EntryError(entry.name, "its data descriptor contradicts the directory");
        }
    }
}

} // namespace

void LocateData(const ByteSource& source, std::uint64_t directoryOffset, std::vector<ZipEntry>& entries) {
    std::vector<ZipEntry*> order;
    order.reserve(entries.size());
    for (ZipEntry& entry : entries) {
        order.push_back(&entry);
    }
    std::ranges::sort(order, {}, &ZipEntry::headerOffset);
    ByteWindow window(source, kHeaderWindow);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::uint64_t limit = i + 1 < order.size() ? order[i + 1]->headerOffset : directoryOffset;
        LocateEntryData(window, std::min(limit, directoryOffset), *order[i]);
    }
}

} // namespace mxovshare
