// Packing the files of a folder, with what an old package holds of them already.
#pragma once

#include "package/FilePieces.h"
#include "package/FolderScan.h"
#include "package/JobQueue.h"
#include "package/PackageWork.h"
#include "package/ZipWriter.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace mxovshare {

/// What became of an item.
enum class Outcome {
    Anew,      ///< packed from the file
    Copied,    ///< as the old package has it, which is still to be checked
    Proven,    ///< the same, read back and known to be sound
    Different, ///< the file is not what its entry holds, so the new file is no package
};

/// Packs items on all processors. Those that have an entry of the old package are compared with its checksum
/// and copied as they are packed there; they stand in front. The directory lists all items in order.
class Packer {
public:
    /// `unchanged` tells for each item the entry of `old` that probably holds it, or nullptr. The new file is
    /// written through `sink`, by several threads, and read back through `written`. What is done of an item
    /// advances the meter by its size, and once more when it is proven.
    Packer(ByteSink& sink, const ByteSource& written, const std::vector<FolderItem>& items,
           const ByteSource& old, const std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter);

    /// Gives the outcome for each item.
    std::vector<Outcome> Run();

private:
    class FolderJob;
    class PieceJob;
    class CopyJob;

    // A stretch of a file, which is compared, and the same stretch of the packed data, which is copied.
    struct CopyPart {
        std::size_t item = 0;
        std::uint64_t offset = 0;
        std::uint32_t size = 0;
        bool hasSize = false; // the file has the size that it had
        std::uint32_t crc32 = 0;
        std::uint32_t packedSize = 0;
        std::uint32_t packedCrc32 = 0; // of what was read back
    };

    std::unique_ptr<Job> Next();
    std::unique_ptr<Job> NextCopy();
    void Copy(CopyPart& part, std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop) const;
    void TakeFolder(std::size_t item);
    void TakePiece(std::size_t item, const FilePiece& piece, const PackedPiece& packed);
    void TakeCopied(const CopyPart& part);

    ByteSink& m_sink;
    const ByteSource& m_written;
    ZipWriter m_writer;
    const std::vector<FolderItem>& m_items;
    const ByteSource& m_old;
    const std::vector<const ZipEntry*>& m_unchanged;
    ProgressMeter& m_meter;
    std::vector<std::size_t> m_order; // items in the order of the work: the unchanged ones last
    std::size_t m_next = 0;           // of m_order
    FilePieces m_pieces;
    std::uint64_t m_given = 0;           // how much of the next unchanged item is in jobs already
    std::vector<std::uint64_t> m_places; // of the unchanged items
    std::vector<std::size_t> m_added;    // items in the order of the writer's entries
    std::vector<Outcome> m_outcomes;
    bool m_hasSize = false; // this and the next two: in all parts so far of the file that is being taken
    std::uint32_t m_crc = 0;
    std::uint32_t m_packedCrc = 0;
};

} // namespace mxovshare
