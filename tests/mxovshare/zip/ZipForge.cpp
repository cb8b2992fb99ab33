#include "ZipForge.h"

#include "zip/Deflate.h"

#include <zlib.h>

namespace {

std::string Fields(const ForgedHeader& header) {
    return Number(header.flags, 2) + Number(header.method, 2) + Number(0x58216000, 4) +
           Number(header.crc32, 4) + Number(header.packedSize, 4) + Number(header.size, 4) +
           Number(header.name.size(), 2) + Number(header.extra.size(), 2);
}

std::string LocalHeader(const ForgedHeader& header) {
    return "PK\3\4" + Number(20, 2) + Fields(header) + header.name + header.extra;
}

std::string CentralHeader(const ForgedEntry& entry, std::size_t offset) {
    const ForgedHeader& header = entry.central;
    return "PK\1\2" + Number(20, 2) + Number(20, 2) + Fields(header) + Number(0, 2) + Number(entry.disk, 2) +
           Number(0, 2) + Number(entry.attributes, 4) + Number(entry.offset.value_or(offset), 4) +
           header.name + header.extra;
}

std::string Deflated(const std::string& content) {
    const mxovshare::Bytes bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    const auto packed = mxovshare::DeflatePiece(bytes, {}, true, mxovshare::DeflateEffort::Normal);
    return {packed.begin(), packed.end()};
}

} // namespace

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8) {
        text += static_cast<char>(value & 0xFF);
    }
    return text;
}

ForgedEntry MakeEntry(const std::string& name, const std::string& content, bool deflated) {
    ForgedEntry entry;
    if (!name.ends_with('/')) {
        entry.data = deflated ? Deflated(content) : content;
    }
    const std::string& whole = name.ends_with('/') ? entry.data : content;
    entry.local.name = name;
    entry.local.flags = 0x0800;
    entry.local.method = deflated ? 8 : 0;
    entry.local.crc32 =
        static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(whole.data()), whole.size()));
    entry.local.packedSize = static_cast<std::uint32_t>(entry.data.size());
    entry.local.size = static_cast<std::uint32_t>(whole.size());
    entry.central = entry.local;
    return entry;
}

std::string ForgeZip(const std::vector<ForgedEntry>& entries, const ForgedEnd& end) {
    std::string zip;
    std::string directory;
    for (const ForgedEntry& entry : entries) {
        directory += CentralHeader(entry, zip.size());
        zip += LocalHeader(entry.local) + entry.data;
    }
    const std::size_t offset = zip.size();
    const std::string count = Number(entries.size() + static_cast<std::size_t>(end.countError), 2);
    return zip + directory + "PK\5\6" + Number(end.disk, 2) + Number(end.disk, 2) + count + count +
           Number(directory.size() + static_cast<std::size_t>(end.sizeError), 4) +
           Number(offset + static_cast<std::size_t>(end.offsetError), 4) + Number(end.comment.size(), 2) +
           end.comment;
}
