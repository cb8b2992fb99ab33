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
    const ByteSource& file;
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

// A file that the old package holds, and where its packed data is copied to.
struct ReusedFile {
    const FolderItem* item;
    const ZipEntry* entry; // of the old package
    const ZipEntry* place; // in the new one
    Outcome* outcome;
};

// Compares files with their entries of the old package, copies the packed data and reads the copies back.
// Small files share a job, since passing one between threads takes as long as several of them.
class ReuseJob : public Job {
public:
    ReuseJob(Target& target, const ByteSource& old) : m_target(target), m_old(old) {}

    bool IsFull() const { return m_cost >= kMostCost; }
    void Add(const ReusedFile& file) {
        m_files.push_back(file);
        m_cost += file.entry->size + kFileCost;
    }
    void Make(const std::atomic<bool>& stop) override {
        const auto checkpoint = [&stop](Bytes) {
            if (stop) {
                throw Cancelled();
            }
        };
        for (const ReusedFile& file : m_files) {
            *file.outcome = Reuse(file, checkpoint);
        }
    }
    void Take() override {
        for (const ReusedFile& file : m_files) {
            m_target.meter.Begin(RelativePath(*file.entry));
        }
    }

private:
    using Checkpoint = std::function<void(Bytes)>;

    Outcome Reuse(const ReusedFile& file, const Checkpoint& checkpoint) const {
        try {
            if (!IsUnchanged(file, checkpoint)) {
                return Outcome::Different;
            }
            m_target.writer.CopyReserved(*file.place, m_old, *file.entry, checkpoint);
            if (!VerifiedEntryCache::Instance().IsVerified(m_target.file, *file.place, checkpoint)) {
                return Outcome::Copied;
            }
            m_target.copied += file.entry->size;
            return Outcome::Verified;
        } catch (const PackageError&) {
            return Outcome::Damaged;
        }
    }

    bool IsUnchanged(const ReusedFile& file, const Checkpoint& checkpoint) const {
        if (file.item->path.empty()) {
            m_target.copied += file.entry->size;
            return true;
        }
        const DiskSource source(file.item->path);
        if (source.Size() != file.entry->size) {
            return false;
        }
        std::uint32_t checksum = 0;
        ReadPieces(source, 0, source.Size(), [&](Bytes piece) {
            checkpoint(piece);
            checksum = Checksum(checksum, piece);
            m_target.copied += piece.size();
        });
        return checksum == file.entry->crc32;
    }

    static constexpr std::uint64_t kMostCost = std::uint64_t{4} << 20;
    // Opening a file takes as long as reading this many bytes.
    static constexpr std::uint64_t kFileCost = std::uint64_t{128} << 10;

    Target& m_target;
    const ByteSource& m_old;
    std::vector<ReusedFile> m_files;
    std::uint64_t m_cost = 0;
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
        if (m_reuse[m_order[m_next]] != nullptr) {
            return NextReused();
        }
        const FolderItem& item = m_items[m_order[m_next++]];
        if (item.isFolder) {
            return std::make_unique<FolderJob>(m_target, item);
        }
        item.isExclusive ? m_pieces.Open(item.path) : m_pieces.OpenSettled(item.path);
        return std::make_unique<PieceJob>(m_target, item, m_pieces.Next());
    }

    std::vector<Outcome> TakeOutcomes() { return std::move(m_outcomes); }

private:
    std::unique_ptr<Job> NextReused() {
        auto job = std::make_unique<ReuseJob>(m_target, m_old);
        for (; m_next < m_order.size() && !job->IsFull(); ++m_next) {
            const std::size_t i = m_order[m_next];
            job->Add({&m_items[i], m_reuse[i], m_places[i], &m_outcomes[i]});
        }
        return job;
    }

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

std::vector<Outcome> PackItems(OpenFile& file, const std::vector<FolderItem>& items, const ByteSource& old,
                               const std::vector<const ZipEntry*>& reuse, ProgressMeter& meter) {
    ZipWriter writer(file);
    Target target = {writer, file, meter};
    PackJobs jobs(target, items, old, reuse);
    RunJobs(
        ProcessorCount(), [&jobs] { return jobs.Next(); },
        [&target] { target.meter.Advance(target.copied.exchange(0)); });
    meter.Advance(target.copied);
    writer.Finish();
    return jobs.TakeOutcomes();
}

} // namespace mxovshare
