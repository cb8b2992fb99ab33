// Writes a package file entry by entry.
#pragma once

#include "Deflate.h"
#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <vector>

namespace mxovshare {

/// Writes entries in the order of the calls; the file is a package only after Finish.
/// What it writes, ReadZipDirectory accepts: nothing expands out of proportion to the file.
class ZipWriter {
public:
    /// Sizes and places from `wideFrom` on are written as ZIP64, which not every reader knows.
    explicit ZipWriter(ByteSink& sink, std::uint64_t wideFrom = 0xFFF00000)
        : m_sink(sink), m_wideFrom(wideFrom) {}

    /// Begins a file. AddPiece follows for every kDeflatePiece bytes of it, in order, once for an empty file.
    void BeginFile(const ZipItem& item, std::uint64_t size);
    /// Adds what PackPiece made of the next bytes of `content`, the whole file. The last one ends the file;
    /// it is read again when another form suits the whole better.
    void AddPiece(const PackedPiece& piece, const ByteSource& content);

    /// Adds a file whose data is that of `packed`, an entry of another package, as it is packed there. Gives
    /// the place where the caller has to write PackedHeader and that data behind it, at any time.
    std::uint64_t Reserve(const ZipItem& item, const ZipEntry& packed);
    std::vector<std::uint8_t> PackedHeader(const ZipItem& item, const ZipEntry& packed) const;

    /// Whether an entry may be added as it is packed: its data is no longer than the file and does not expand
    /// out of proportion.
    static bool CanAddPacked(const ZipEntry& entry);

    void AddFolder(const ZipItem& item);

    /// Writes the directory: in the order of the calls, or by the rank of each.
    void Finish(const std::vector<std::size_t>& ranks = {});

private:
    enum class Packing { EntropyOnly, Store, StoredBlocks };

    void Repack(const ByteSource& content, std::uint64_t size, Packing packing);
    void EndFile(const ByteSource& content);
    std::vector<std::uint8_t> LocalHeader(const ZipEntry& entry) const;
    void AppendCentralHeader(const ZipEntry& entry);
    void AppendEnd(std::uint64_t directoryOffset);

    bool IsWide(std::uint64_t value) const { return value >= m_wideFrom; }
    std::uint64_t Narrow(std::uint64_t value) const { return IsWide(value) ? 0xFFFFFFFF : value; }

    std::uint64_t Position() const { return m_flushed + m_pending.size(); }
    void Append(Bytes bytes);
    void Patch(std::uint64_t offset, Bytes bytes);
    void Rewind(std::uint64_t offset);
    void FlushWhenFull();
    void Flush();

    ByteSink& m_sink;
    std::uint64_t m_wideFrom;
    std::vector<ZipEntry> m_entries;     ///< the last one is open while m_left is not 0
    std::uint64_t m_left = 0;            ///< bytes of the open file that are still to come
    std::vector<std::uint8_t> m_pending; ///< not yet handed to the sink
    std::uint64_t m_flushed = 0;         ///< where m_pending belongs
};

} // namespace mxovshare
