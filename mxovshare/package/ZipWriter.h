// Writes a package file entry by entry.
#pragma once

#include "package/ByteSource.h"
#include "package/Deflate.h"
#include "package/ZipEntry.h"

#include <functional>
#include <vector>

namespace mxovshare {

/// Writes entries in the order of the calls; the file is a package only after Finish.
/// What it writes, ReadZipDirectory accepts: nothing expands out of proportion to the file.
class ZipWriter {
public:
    /// Sizes and places from `wideFrom` on are written as ZIP64, which not every reader knows.
    explicit ZipWriter(ByteSink& sink, std::uint64_t wideFrom = 0xFFF00000)
        : m_sink(sink), m_wideFrom(wideFrom) {}

    /// Adds the content, compressed where that makes it smaller. `advance` is told the bytes that were read.
    void AddFile(
        const ZipItem& item, const ByteSource& content,
        const std::function<void(std::uint64_t)>& advance = [](std::uint64_t) {});
    void AddFolder(const ZipItem& item);

    /// Writes the directory.
    void Finish();

private:
    enum class Packing { Deflate, EntropyOnly, Store };

    void WriteData(ZipEntry& entry, const ByteSource& content, Packing packing,
                   const std::function<void(std::uint64_t)>& advance);
    std::vector<std::uint8_t> LocalHeader(const ZipEntry& entry) const;
    void AppendCentralHeader(const ZipEntry& entry);
    void AppendEnd(std::uint64_t directoryOffset);

    bool IsWide(std::uint64_t value) const { return value >= m_wideFrom; }
    std::uint64_t Narrow(std::uint64_t value) const { return IsWide(value) ? 0xFFFFFFFF : value; }

    std::uint64_t Position() const { return m_flushed + m_pending.size(); }
    void Append(Bytes bytes);
    void Patch(std::uint64_t offset, Bytes bytes);
    void Rewind(std::uint64_t offset);
    void Flush();

    ByteSink& m_sink;
    std::uint64_t m_wideFrom;
    std::vector<ZipEntry> m_entries;
    std::vector<std::uint8_t> m_pending; ///< not yet handed to the sink
    std::uint64_t m_flushed = 0;         ///< where m_pending belongs
};

} // namespace mxovshare
