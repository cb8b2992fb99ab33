#include "package/Unchanged.h"

#include "package/FilePieces.h"
#include "package/JobQueue.h"
#include "package/ZipWriter.h"

#include <string_view>
#include <unordered_map>

#include <zlib.h>

namespace mxovshare {

namespace {

class Comparison {
public:
    Comparison(const std::vector<FolderItem>& items, const std::vector<const ZipEntry*>& candidates,
               ProgressMeter& meter)
        : m_items(items), m_candidates(candidates), m_meter(meter) {}

    /// Gives the items that turned out to be different.
    std::vector<std::size_t> Run() {
        RunJobs(
            ProcessorCount(), [this] { return Next(); }, [this] { m_meter.Tell(); });
        return std::move(m_different);
    }

private:
    class PieceJob : public Job {
    public:
        PieceJob(Comparison& owner, std::size_t item, FilePiece piece)
            : m_owner(owner), m_item(item), m_piece(std::move(piece)) {}
        void Make(const std::atomic<bool>&) override { m_crc = m_piece.Checksum(); }
        void Take() override { m_owner.Take(m_item, m_piece, m_crc); }

    private:
        Comparison& m_owner;
        std::size_t m_item;
        FilePiece m_piece;
        uLong m_crc = 0;
    };

    std::unique_ptr<Job> Next() {
        if (!m_pieces.IsOpen()) {
            while (m_next < m_items.size() && m_candidates[m_next] == nullptr)
                ++m_next;
            if (m_next == m_items.size())
                return nullptr;
            m_pieces.Open(m_items[m_next++].path);
        }
        return std::make_unique<PieceJob>(*this, m_next - 1, m_pieces.Next());
    }

    void Take(std::size_t item, const FilePiece& piece, uLong crc) {
        if (piece.offset == 0) {
            m_crc = 0;
            m_meter.Begin(m_items[item].path);
        }
        m_crc = crc32_combine(m_crc, crc, static_cast<z_off_t>(piece.size));
        const ZipEntry& entry = *m_candidates[item];
        if (piece.IsLast() && (m_crc != entry.crc32 || piece.file->Size() != entry.size))
            m_different.push_back(item);
        m_meter.Advance(piece.size);
    }

    const std::vector<FolderItem>& m_items;
    const std::vector<const ZipEntry*>& m_candidates;
    ProgressMeter& m_meter;
    FilePieces m_pieces;
    std::size_t m_next = 0;
    uLong m_crc = 0; // of the file whose pieces are being taken
    std::vector<std::size_t> m_different;
};

} // namespace

std::vector<const ZipEntry*> FindCandidates(const std::vector<FolderItem>& items,
                                            const std::vector<ZipEntry>& entries) {
    std::unordered_map<std::string_view, const ZipEntry*> byName;
    for (const ZipEntry& entry : entries) {
        if (ZipWriter::CanAddPacked(entry))
            byName.emplace(entry.name, &entry);
    }
    std::vector<const ZipEntry*> candidates;
    candidates.reserve(items.size());
    for (const FolderItem& item : items) {
        const auto found = byName.find(item.item.name);
        const bool same = found != byName.end() && !item.isFolder && found->second->size == item.size &&
                          found->second->modified.fileTime == item.item.modified.fileTime;
        candidates.push_back(same ? found->second : nullptr);
    }
    return candidates;
}

void KeepUnchanged(const std::vector<FolderItem>& items, std::vector<const ZipEntry*>& candidates,
                   ProgressMeter& meter) {
    for (const std::size_t item : Comparison(items, candidates, meter).Run())
        candidates[item] = nullptr;
}

} // namespace mxovshare
