#include "ZipWriter.h"

#include "Checksum.h"
#include "ZipDirectory.h"
#include "ZipExtra.h"
#include "ZipFormat.h"

#include <algorithm>

namespace mxovshare {

using namespace zip;

namespace {

// Small enough that a short file has several; its first ones carry the others' expansion.
constexpr std::size_t kProportionPiece = std::size_t{32} << 10;
constexpr std::size_t kPendingLimit = std::size_t{2} << 20;
// Entries up to this size cannot bring a package out of proportion.
constexpr std::uint64_t kExpansionFree = std::uint64_t{16} << 10;
// The upper byte 0 declares the attributes as those of DOS.
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

void ZipWriter::BeginFile(const ZipItem& item, std::uint64_t size) {
    ZipEntry& entry = m_entries.emplace_back();
    static_cast<ZipItem&>(entry) = item;
    entry.size = m_left = size;
    entry.headerOffset = Position();
    entry.method = kMethodStored;
    // The final header is as long as this one and overwrites it.
    Append(LocalHeader(entry));
    entry.dataOffset = Position();
}

void ZipWriter::AddPiece(const PackedPiece& piece, const ByteSource& content) {
    ZipEntry& entry = m_entries.back();
    const std::uint64_t done = entry.size - m_left;
    m_left -= piece.size;
    if (entry.method == kMethodStored && !piece.isRaw) {
        if (done > 0) {
            Repack(content, done, Packing::StoredBlocks);
        }
        entry.method = kMethodDeflated;
    }
    if (piece.isRaw && entry.method == kMethodDeflated) {
        Append(StoredPiece(piece.bytes, m_left == 0));
    } else {
        Append(piece.bytes);
    }
    entry.crc32 = CombinedChecksum(entry.crc32, piece.crc32, static_cast<std::uint32_t>(piece.size));
    if (m_left == 0) {
        EndFile(content);
    }
}

void ZipWriter::EndFile(const ByteSource& content) {
    ZipEntry& entry = m_entries.back();
    entry.packedSize = Position() - entry.dataOffset;
    if (entry.method == kMethodDeflated && entry.packedSize >= entry.size) {
        Repack(content, entry.size, Packing::Store);
        entry.method = kMethodStored;
    } else if (ExpandsTooMuch(entry)) {
        Repack(content, entry.size, Packing::WithinProportion);
    }
    entry.packedSize = Position() - entry.dataOffset;
    Patch(entry.headerOffset, LocalHeader(entry));
}

// Writes the first `size` bytes of the open file again.
void ZipWriter::Repack(const ByteSource& content, std::uint64_t size, Packing packing) {
    const ZipEntry& entry = m_entries.back();
    Rewind(entry.dataOffset);
    const std::size_t most = packing == Packing::WithinProportion ? kProportionPiece : kDeflatePiece;
    std::vector<std::uint8_t> piece;
    for (std::uint64_t done = 0; done < size;) {
        piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(most, size - done)));
        content.Read(done, piece);
        done += piece.size();
        const bool last = done == entry.size;
        if (packing == Packing::Store) {
            Append(piece);
        } else if (packing == Packing::StoredBlocks) {
            Append(StoredPiece(piece, last));
        } else {
            const bool exceeds = (Position() - entry.dataOffset) * ZipLimits{}.expansion < done;
            Append(
                DeflatePiece(piece, {}, last, exceeds ? DeflateEffort::EntropyOnly : DeflateEffort::Normal));
        }
    }
}

const ZipEntry& ZipWriter::Reserve(const ZipItem& item, const ZipEntry& packed) {
    Flush();
    ZipEntry& entry = m_entries.emplace_back(packed);
    static_cast<ZipItem&>(entry) = item;
    entry.headerOffset = m_flushed;
    entry.dataOffset = entry.headerOffset + LocalHeader(entry).size();
    m_flushed = entry.dataOffset + entry.packedSize;
    return entry;
}

void ZipWriter::CopyReserved(const ZipEntry& reserved, const ByteSource& source, const ZipEntry& packed,
                             const std::function<void(Bytes)>& onPiece) const {
    m_sink.Write(reserved.headerOffset, LocalHeader(reserved));
    std::uint64_t place = reserved.dataOffset;
    ReadPieces(source, packed.dataOffset, packed.packedSize, [&](Bytes piece) {
        m_sink.Write(place, piece);
        place += piece.size();
        onPiece(piece);
    });
}

bool ZipWriter::CanCopyPacked(const ZipEntry& entry) {
    return !entry.isFolder && entry.packedSize <= entry.size && !ExpandsTooMuch(entry);
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
    if (wide) {
        FieldWriter(extra).U16(kExtraZip64).U16(16).U64(entry.size).U64(entry.packedSize);
    }
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
        if (IsWide(value)) {
            wide.U64(value);
        }
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
    std::ranges::stable_sort(m_entries, {}, &ZipEntry::rank);
    for (const ZipEntry& entry : m_entries) {
        AppendCentralHeader(entry);
    }
    AppendEnd(directoryOffset);
    Flush();
    m_sink.SetSize(Position());
}

void ZipWriter::Append(Bytes bytes) {
    m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
    FlushWhenFull();
}

void ZipWriter::FlushWhenFull() {
    if (m_pending.size() >= kPendingLimit) {
        Flush();
    }
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
    if (!m_pending.empty()) {
        m_sink.Write(m_flushed, m_pending);
    }
    m_flushed += m_pending.size();
    m_pending.clear();
}

} // namespace mxovshare
