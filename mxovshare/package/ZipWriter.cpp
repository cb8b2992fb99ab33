#include "package/ZipWriter.h"

#include "package/ZipDirectory.h"
#include "package/ZipExtra.h"
#include "package/ZipFormat.h"

#include <algorithm>

#include <zlib.h>

namespace mxovshare {

using namespace zip;

namespace {

constexpr std::size_t kPendingLimit = std::size_t{256} << 10;
// An entry below this size cannot bring a package out of proportion.
constexpr std::uint64_t kExpansionFree = std::uint64_t{16} << 10;
// Made on a DOS-like file system, so that the attributes are read as such.
constexpr std::uint16_t kMadeBy = kVersionZip64;

std::uint16_t VersionNeeded(bool wide) {
    return wide ? kVersionZip64 : kVersionPlain;
}

std::string StoredName(const ZipEntry& entry) {
    return entry.isFolder ? entry.name + "/" : entry.name;
}

bool ExpandsTooMuch(const ZipEntry& entry) {
    return entry.size > kExpansionFree && entry.size / ZipLimits{}.expansion > entry.packedSize;
}

} // namespace

void ZipWriter::AddFile(const ZipItem& item, const ByteSource& content,
                        const std::function<void(std::uint64_t)>& advance) {
    ZipEntry entry;
    static_cast<ZipItem&>(entry) = item;
    entry.size = content.Size();
    entry.headerOffset = Position();
    entry.method = entry.size > 0 ? kMethodDeflated : kMethodStored;
    // The final header is as long as this one, which keeps its place.
    Append(LocalHeader(entry));
    entry.dataOffset = Position();
    WriteData(entry, content, entry.size > 0 ? Packing::Deflate : Packing::Store, advance);
    if (entry.packedSize >= entry.size && entry.size > 0)
        WriteData(entry, content, Packing::Store, [](std::uint64_t) {});
    else if (ExpandsTooMuch(entry))
        WriteData(entry, content, Packing::EntropyOnly, [](std::uint64_t) {});
    Patch(entry.headerOffset, LocalHeader(entry));
    m_entries.push_back(std::move(entry));
}

void ZipWriter::WriteData(ZipEntry& entry, const ByteSource& content, Packing packing,
                          const std::function<void(std::uint64_t)>& advance) {
    Rewind(entry.dataOffset);
    entry.method = packing == Packing::Store ? kMethodStored : kMethodDeflated;
    std::vector<std::uint8_t> buffer;
    std::size_t dictionary = 0; // bytes of the previous piece at the front of the buffer
    uLong crc = crc32_z(0, nullptr, 0);
    for (std::uint64_t done = 0; done < entry.size;) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(kDeflatePiece, entry.size - done));
        buffer.resize(dictionary + size);
        const std::span<std::uint8_t> piece = std::span(buffer).subspan(dictionary);
        content.Read(done, piece);
        done += size;
        crc = crc32_z(crc, piece.data(), piece.size());
        if (packing == Packing::Store)
            Append(piece);
        else
            Append(DeflatePiece(piece, Bytes(buffer).first(dictionary), done == entry.size,
                                packing == Packing::Deflate ? DeflateEffort::Normal
                                                            : DeflateEffort::EntropyOnly));
        dictionary = std::min(kDeflateDictionary, buffer.size());
        std::copy(buffer.end() - static_cast<std::ptrdiff_t>(dictionary), buffer.end(), buffer.begin());
        advance(size);
    }
    entry.crc32 = static_cast<std::uint32_t>(crc);
    entry.packedSize = Position() - entry.dataOffset;
}

void ZipWriter::AddFolder(const ZipItem& item) {
    ZipEntry entry;
    static_cast<ZipItem&>(entry) = item;
    entry.attributes |= kAttributeFolder;
    entry.isFolder = true;
    entry.headerOffset = Position();
    Append(LocalHeader(entry));
    m_entries.push_back(std::move(entry));
}

std::vector<std::uint8_t> ZipWriter::LocalHeader(const ZipEntry& entry) const {
    const bool wide = IsWide(entry.size);
    std::vector<std::uint8_t> extra;
    if (wide)
        FieldWriter(extra).U16(kExtraZip64).U16(16).U64(entry.size).U64(entry.packedSize);
    AppendTimes(entry.modified, extra);

    std::vector<std::uint8_t> header;
    const std::string name = StoredName(entry);
    FieldWriter fields(header);
    fields.U32(kLocalSignature).U16(VersionNeeded(wide)).U16(kFlagUtf8).U16(entry.method);
    fields.U32(entry.modified.dosTime).U32(entry.crc32);
    fields.U32(wide ? kFull32 : entry.packedSize).U32(wide ? kFull32 : entry.size);
    fields.U16(name.size()).U16(extra.size()).Text(name);
    header.insert(header.end(), extra.begin(), extra.end());
    return header;
}

void ZipWriter::AppendCentralHeader(const ZipEntry& entry) {
    std::vector<std::uint8_t> wideValues;
    FieldWriter wide(wideValues);
    for (const std::uint64_t value : {entry.size, entry.packedSize, entry.headerOffset}) {
        if (IsWide(value))
            wide.U64(value);
    }
    std::vector<std::uint8_t> extra;
    if (!wideValues.empty()) {
        FieldWriter(extra).U16(kExtraZip64).U16(wideValues.size());
        extra.insert(extra.end(), wideValues.begin(), wideValues.end());
    }
    AppendTimes(entry.modified, extra);

    std::vector<std::uint8_t> header;
    const std::string name = StoredName(entry);
    FieldWriter fields(header);
    fields.U32(kCentralSignature).U16(kMadeBy).U16(VersionNeeded(IsWide(entry.size) || !wideValues.empty()));
    fields.U16(kFlagUtf8).U16(entry.method).U32(entry.modified.dosTime).U32(entry.crc32);
    fields.U32(Narrow(entry.packedSize)).U32(Narrow(entry.size));
    fields.U16(name.size()).U16(extra.size()).U16(0).U16(0).U16(0);
    fields.U32(entry.attributes).U32(Narrow(entry.headerOffset)).Text(name);
    Append(header);
    Append(extra);
}

void ZipWriter::AppendEnd(std::uint64_t directoryOffset) {
    const std::uint64_t directorySize = Position() - directoryOffset;
    const std::uint64_t count = m_entries.size();
    std::vector<std::uint8_t> end;
    FieldWriter fields(end);
    if (count >= kFull16 || IsWide(directoryOffset) || IsWide(directorySize)) {
        const std::uint64_t position = Position();
        fields.U32(kZip64EndSignature).U64(kZip64EndSize - 12).U16(kMadeBy).U16(kVersionZip64);
        fields.U32(0).U32(0).U64(count).U64(count).U64(directorySize).U64(directoryOffset);
        fields.U32(kZip64LocatorSignature).U32(0).U64(position).U32(1);
    }
    const std::uint64_t narrowCount = std::min<std::uint64_t>(count, kFull16);
    fields.U32(kEndSignature).U16(0).U16(0).U16(narrowCount).U16(narrowCount);
    fields.U32(Narrow(directorySize)).U32(Narrow(directoryOffset)).U16(0);
    Append(end);
}

void ZipWriter::Finish() {
    const std::uint64_t directoryOffset = Position();
    for (const ZipEntry& entry : m_entries)
        AppendCentralHeader(entry);
    AppendEnd(directoryOffset);
    Flush();
    m_sink.SetSize(Position());
}

void ZipWriter::Append(Bytes bytes) {
    m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
    if (m_pending.size() >= kPendingLimit)
        Flush();
}

void ZipWriter::Patch(std::uint64_t offset, Bytes bytes) {
    if (offset >= m_flushed) {
        std::ranges::copy(bytes, m_pending.begin() + static_cast<std::ptrdiff_t>(offset - m_flushed));
    } else {
        Flush();
        m_sink.Write(offset, bytes);
    }
}

void ZipWriter::Rewind(std::uint64_t offset) {
    if (offset < m_flushed) {
        m_pending.clear();
        m_flushed = offset;
    } else {
        m_pending.resize(offset - m_flushed);
    }
}

void ZipWriter::Flush() {
    if (!m_pending.empty())
        m_sink.Write(m_flushed, m_pending);
    m_flushed += m_pending.size();
    m_pending.clear();
}

} // namespace mxovshare
