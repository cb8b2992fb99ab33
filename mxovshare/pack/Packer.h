// Packing the files of a folder, with what an old package holds of them already.
#pragma once

#include "pack/FilePieces.h"
#include "pack/FolderScan.h"
#include "pack/JobQueue.h"
#include "pack/ProgressMeter.h"
#include "zip/ZipWriter.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace mxovshare {

/// What became of an item.
enum class Outcome {
    Anew,      ///< packed from the file
    Copied,    ///< as the old package has it, which is still to be checked
    Verified,  ///< the same, read back and known to be sound
    Different, ///< the file is not what its entry holds, so the new file is no package
};

/// Packs items on all processors. Those that have an entry of the old package are compared with its checksum
/// and copied as they are packed there; they stand in front. The directory lists all items in order.
class Packer {
public:
    /// `unchanged` tells for each item the entry of `old` that probably holds it, or nullptr. The new file is
    /// written through `sink`, by several threads, and read back through `written`. What is done of an item
    /// advances the meter by its size, and once more when it is verified.
    Packer(ByteSink& sink, const ByteSource& written, const std::vector<FolderItem>& items,
           const ByteSource& old, const std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter);

    /// Gives the outcome for each item.
    std::vector<Outcome> Run();

private:
    class FolderJob;
    class PieceJob;
    class StretchJob;

    // What is done with an unchanged item, independently of each other: comparing waits for files to be
    // opened, copying for the disk.
    enum class Pass { Compare, Copy };

    // A stretch of an unchanged item's file, which is compared, or of its packed data, which is copied.
    struct Stretch {
        std::size_t item = 0;
        std::uint64_t offset = 0;
        std::uint32_t size = 0;
        std::uint32_t crc32 = 0; // of the file, or of what was read back
        bool hasSize = false;    // the file has the size that it had
    };

    // How far a pass is, and what it found in the stretches so far of the item that is being taken.
    struct Progress {
        std::size_t next = 0;    // of m_order
        std::uint64_t given = 0; // how much of that item is in jobs already
        std::uint32_t crc32 = 0;
        bool hasSize = false;
    };

    std::unique_ptr<Job> Next();
    std::unique_ptr<Job> NextStretches();
    Progress& PassOf(Pass pass) { return m_passes[static_cast<std::size_t>(pass)]; }
    std::uint64_t SizeOf(Pass pass, std::size_t item) const;
    void Compare(Stretch& stretch, std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop) const;
    void Copy(Stretch& stretch, std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop) const;
    void TakeFolder(std::size_t item);
    void TakePiece(std::size_t item, const FilePiece& piece, const PackedPiece& packed);
    void TakeCompared(const Stretch& stretch);
    void TakeCopied(const Stretch& stretch);
    // Whether the stretch is the last one of its item in this pass.
    bool Join(Pass pass, const Stretch& stretch);

    ByteSink& m_sink;
    const ByteSource& m_written;
    ZipWriter m_writer;
    const std::vector<FolderItem>& m_items;
    const ByteSource& m_old;
    const std::vector<const ZipEntry*>& m_unchanged;
    ProgressMeter& m_meter;
    std::vector<std::size_t> m_order; // items in the order of the work: the unchanged ones last
    std::size_t m_next = 0;           // of m_order, up to the first unchanged one
    FilePieces m_pieces;
    std::array<Progress, 2> m_passes;
    std::atomic<int> m_comparing = 0;    // jobs that are given and not made
    std::vector<std::uint64_t> m_places; // of the unchanged items
    std::vector<std::size_t> m_added;    // items in the order of the writer's entries
    std::vector<Outcome> m_outcomes;
};

} // namespace mxovshare
