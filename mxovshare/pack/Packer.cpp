#include "pack/Packer.h"

#include "pack/FilePieces.h"
#include "pack/JobQueue.h"
#include "pack/PackageContent.h"
#include "pack/VerifiedEntryCache.h"
#include "zip/Checksum.h"
#include "zip/PackageError.h"
#include "zip/ZipWriter.h"

#include <algorithm>
#include <numeric>

namespace mxovshare {

namespace {

// The new package file and what its jobs report to.
struct Target {
    ZipWriter& writer;
    const ByteSource& written;
    ProgressMeter& meter;
    std::atomic<std::uint64_t> copied = 0; // bytes of reused items that the meter does not know yet
};

class FolderJob : public Job {
public:
    FolderJob(Target& target, const FolderItem& item) : m_target(target), m_item(item) {}
    void Make(const std::atomic<bool>&) override {}
    void Take() override { m_target.writer.AddFolder(m_item.item); }

private:
    Target& m_target;
    const FolderItem& m_item;
};

class PieceJob : public Job {
public:
    PieceJob(Target& target, const FolderItem& item, FilePiece piece)
        : m_target(target), m_item(item), m_piece(std::move(piece)) {}
    void Make(const std::atomic<bool>&) override {
        const std::vector<std::uint8_t> bytes = m_piece.Read(kDeflateDictionary);
        const std::size_t front = bytes.size() - m_piece.size;
        m_packed = PackPiece(Bytes(bytes).subspan(front), Bytes(bytes).first(front), m_piece.IsLast());
    }
    void Take() override {
        if (m_piece.offset == 0) {
            m_target.meter.Begin(m_item.path);
            m_target.writer.BeginFile(m_item.item, m_piece.file->Size());
        }
        m_target.writer.AddPiece(m_packed, *m_piece.file);
        if (m_piece.IsLast() && !m_item.isExclusive) {
            m_piece.file->RequireUnchanged(); // the writer may have read all of it again
        }
        m_target.meter.Advance(m_piece.size);
    }

private:
    Target& m_target;
    const FolderItem& m_item;
    FilePiece m_piece;
    PackedPiece m_packed;
};

// Compares a file with its entry of the old package, copies the packed data and reads the copy back.
class ReuseJob : public Job {
public:
    ReuseJob(Target& target, const FolderItem& item, const ByteSource& old, const ZipEntry& entry,
             const ZipEntry& place, Outcome& outcome)
        : m_target(target), m_item(item), m_old(old), m_entry(entry), m_place(place), m_outcome(outcome) {}
    void Make(const std::atomic<bool>& stop) override {
        const auto checkpoint = [&stop](Bytes) {
            if (stop) {
                throw Cancelled();
            }
        };
        try {
            m_outcome = IsUnchanged(checkpoint) ? Outcome::Copied : Outcome::Different;
            if (m_outcome == Outcome::Copied) {
                m_target.writer.CopyReserved(m_place, m_old, m_entry, checkpoint);
                VerifiedEntryCache::Instance().Verify(m_target.written, m_place, checkpoint);
                m_target.copied += m_entry.size;
            }
        } catch (const PackageError&) {
            m_outcome = Outcome::Damaged;
        }
    }
    void Take() override { m_target.meter.Begin(RelativePath(m_entry)); }

private:
    bool IsUnchanged(const std::function<void(Bytes)>& checkpoint) const {
        if (m_item.path.empty()) {
            m_target.copied += m_entry.size;
            return true;
        }
        const DiskSource file(m_item.path);
        if (file.Size() != m_entry.size) {
            return false;
        }
        std::uint32_t checksum = 0;
        ReadPieces(file, 0, file.Size(), [&](Bytes piece) {
            checkpoint(piece);
            checksum = Checksum(checksum, piece);
            m_target.copied += piece.size();
        });
        return checksum == m_entry.crc32;
    }

    Target& m_target;
    const FolderItem& m_item;
    const ByteSource& m_old;
    const ZipEntry& m_entry;
    const ZipEntry& m_place;
    Outcome& m_outcome;
};

// The jobs for all items, those with something to reuse last: their room in the file comes first.
class PackJobs {
public:
    PackJobs(Target& target, const std::vector<FolderItem>& items, const ByteSource& old,
             const std::vector<const ZipEntry*>& reuse)
        : m_target(target), m_items(items), m_old(old), m_reuse(reuse), m_order(items.size()),
          m_places(items.size()), m_outcomes(items.size()) {
        std::iota(m_order.begin(), m_order.end(), std::size_t{0});
        const auto reused = std::stable_partition(m_order.begin(), m_order.end(),
                                                  [this](std::size_t i) { return m_reuse[i] == nullptr; });
        std::for_each(reused, m_order.end(), [this](std::size_t i) {
            m_places[i] = &m_target.writer.Reserve(m_items[i].item, *m_reuse[i]);
        });
    }

    std::unique_ptr<Job> Next() {
        if (m_pieces.IsOpen()) {
            return std::make_unique<PieceJob>(m_target, m_items[m_order[m_next - 1]], m_pieces.Next());
        }
        if (m_next == m_order.size()) {
            return nullptr;
        }
        const std::size_t i = m_order[m_next++];
        const FolderItem& item = m_items[i];
        if (item.isFolder) {
            return std::make_unique<FolderJob>(m_target, item);
        }
        if (m_reuse[i] != nullptr) {
            return std::make_unique<ReuseJob>(m_target, item, m_old, *m_reuse[i], *m_places[i],
                                              m_outcomes[i]);
        }
        item.isExclusive ? m_pieces.Open(item.path) : m_pieces.OpenSettled(item.path);
        return std::make_unique<PieceJob>(m_target, item, m_pieces.Next());
    }

    std::vector<Outcome> TakeOutcomes() { return std::move(m_outcomes); }

private:
    Target& m_target;
    const std::vector<FolderItem>& m_items;
    const ByteSource& m_old;
    const std::vector<const ZipEntry*>& m_reuse;
    std::vector<std::size_t> m_order;
    std::size_t m_next = 0; // of m_order
    FilePieces m_pieces;    // of the item before it
    std::vector<const ZipEntry*> m_places;
    std::vector<Outcome> m_outcomes;
};

} // namespace

std::vector<Outcome> PackItems(ByteSink& sink, const ByteSource& written,
                               const std::vector<FolderItem>& items, const ByteSource& old,
                               const std::vector<const ZipEntry*>& reuse, ProgressMeter& meter) {
    ZipWriter writer(sink);
    Target target = {writer, written, meter};
    PackJobs jobs(target, items, old, reuse);
    RunJobs(
        ProcessorCount(), [&jobs] { return jobs.Next(); },
        [&target] { target.meter.Advance(target.copied.exchange(0)); });
    meter.Advance(target.copied);
    writer.Finish();
    return jobs.TakeOutcomes();
}

} // namespace mxovshare
