// Writes a package file entry by entry.
#pragma once

#include "Deflate.h"
#include "files/ByteSource.h"
#include "ZipEntry.h"

#include <deque>
#include <functional>
#include <vector>

namespace mxovshare {

/// Writes entries in the order of the calls. The file is a package only after Finish, and one that
/// ReadZipDirectory accepts: nothing expands out of proportion to the file.
class ZipWriter {
public:
    /// Sizes and offsets from `wideFrom` on are written as ZIP64, which not every reader knows.
    explicit ZipWriter(ByteSink& sink, std::uint64_t wideFrom = 0xFFF00000)
        : m_sink(sink), m_wideFrom(wideFrom) {}

    /// Begins a file. AddPiece follows for every kDeflatePiece bytes of it in order, once for an empty file.
    void BeginFile(const ZipItem& item, std::uint64_t size);
    /// Adds a result of PackPiece for the next bytes of `content`, the whole file. The last piece ends the
    /// file, which is read again when another method packs it better.
    void AddPiece(const PackedPiece& piece, const ByteSource& content);

    /// Reserves room for a file whose packed data CopyReserved copies from `packed`, an entry of another
    /// package. The returned entry states where the room is and stays valid as long as the writer.
    const ZipEntry& Reserve(const ZipItem& item, const ZipEntry& packed);
    /// Fills reserved room with header and data; `packed` is the entry of `source` that was reserved for.
    /// Safe on any thread while other calls are made, if the sink is. `onPiece` is called for each piece and
    /// may throw.
    void CopyReserved(const ZipEntry& reserved, const ByteSource& source, const ZipEntry& packed,
                      const std::function<void(Bytes)>& onPiece) const;

    /// Whether packed data may be copied: it is no longer than the file and does not expand out of
    /// proportion.
    static bool CanCopyPacked(const ZipEntry& entry);

    void AddFolder(const ZipItem& item);

    /// Writes the directory.
    void Finish();

private:
    enum class Packing { WithinProportion, Store, StoredBlocks };

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
    std::deque<ZipEntry> m_entries;      ///< the last one is open while m_left is not 0
    std::uint64_t m_left = 0;            ///< bytes of the open file that are still to come
    std::vector<std::uint8_t> m_pending; ///< not yet handed to the sink
    std::uint64_t m_flushed = 0;         ///< where m_pending belongs
};

} // namespace mxovshare
