#include "package/PackFolder.h"

#include "host/LongPath.h"
#include "ini/AtomicFile.h"
#include "package/DiskFile.h"
#include "package/FilePieces.h"
#include "package/FileTimes.h"
#include "package/FolderPath.h"
#include "package/FolderScan.h"
#include "package/JobQueue.h"
#include "package/PackageContent.h"
#include "package/PackageError.h"
#include "package/PackageWork.h"
#include "package/Unchanged.h"
#include "package/ZipWriter.h"

#include <algorithm>
#include <optional>

namespace mxovshare {

namespace {

std::uint64_t TotalSize(const std::vector<FolderItem>& items) {
    std::uint64_t total = 0;
    for (const FolderItem& item : items)
        total += item.size;
    return total;
}

void RefuseTooMuch(const std::wstring& folder, const std::vector<FolderItem>& items) {
    const ZipLimits limits;
    if (items.size() > limits.entries)
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.entries) + L" files"};
    if (TotalSize(items) > limits.total)
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.total >> 30) + L" GB"};
}

std::vector<FolderItem> ItemsOf(const std::wstring& folder, const std::wstring& file,
                                const Substitute* substitute) {
    if (substitute == nullptr)
        return ScanFolder(folder, {file});
    std::vector<FolderItem> items = ScanFolder(folder, {file, substitute->content});
    for (FolderItem& item : items) {
        if (IsSamePath(LongPath(item.path), LongPath(substitute->path))) {
            item.path = substitute->content;
            item.size = substitute->size;
            item.item.modified = ToZipTime(substitute->modified);
        }
    }
    return items;
}

// The package that is to be replaced, as far as it can be used.
class OldPackage {
public:
    explicit OldPackage(const std::wstring& file) {
        try {
            m_source.emplace(file);
            m_entries = ReadZipDirectory(*m_source);
        } catch (const FileFailure&) {
            // There is none, or whoever has it locked is noticed when it is replaced.
        } catch (const PackageError&) {
            // Nothing of it is used.
        }
    }

    const ByteSource& Source() const { return *m_source; }
    const std::vector<ZipEntry>& Entries() const { return m_entries; }

private:
    std::optional<DiskSource> m_source;
    std::vector<ZipEntry> m_entries;
};

// Packs the items into a sink: those with an entry of the old package as it is packed there, the others anew.
class Packer {
public:
    Packer(ByteSink& sink, const std::vector<FolderItem>& items, const OldPackage& old,
           const std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter)
        : m_writer(sink), m_items(items), m_old(old), m_unchanged(unchanged), m_meter(meter) {}

    void Run() {
        RunJobs(
            ProcessorCount(), [this] { return Next(); }, [this] { m_meter.Tell(); });
        m_writer.Finish();
    }

private:
    // A folder, or a file that is packed already.
    class ReadyJob : public Job {
    public:
        ReadyJob(Packer& owner, std::size_t item) : m_owner(owner), m_item(item) {}
        void Make(const std::atomic<bool>&) override {}
        void Take() override { m_owner.TakeReady(m_item); }

    private:
        Packer& m_owner;
        std::size_t m_item;
    };

    class PieceJob : public Job {
    public:
        PieceJob(Packer& owner, std::size_t item, FilePiece piece)
            : m_owner(owner), m_item(item), m_piece(std::move(piece)) {}
        void Make(const std::atomic<bool>&) override {
            const std::vector<std::uint8_t> bytes = m_piece.Read(kDeflateDictionary);
            const std::size_t front = bytes.size() - m_piece.size;
            m_packed = PackPiece(Bytes(bytes).subspan(front), Bytes(bytes).first(front), m_piece.IsLast());
        }
        void Take() override { m_owner.TakePiece(m_item, m_piece, m_packed); }

    private:
        Packer& m_owner;
        std::size_t m_item;
        FilePiece m_piece;
        PackedPiece m_packed;
    };

    std::unique_ptr<Job> Next() {
        if (!m_pieces.IsOpen()) {
            if (m_next == m_items.size())
                return nullptr;
            const std::size_t item = m_next++;
            if (m_items[item].isFolder || m_unchanged[item] != nullptr)
                return std::make_unique<ReadyJob>(*this, item);
            m_pieces.Open(m_items[item].path);
        }
        return std::make_unique<PieceJob>(*this, m_next - 1, m_pieces.Next());
    }

    void TakeReady(std::size_t index) {
        const FolderItem& item = m_items[index];
        m_meter.Begin(item.path);
        if (item.isFolder)
            m_writer.AddFolder(item.item);
        else
            m_writer.AddPacked(item.item, m_old.Source(), *m_unchanged[index]);
        m_meter.Advance(item.size);
    }

    void TakePiece(std::size_t index, const FilePiece& piece, const PackedPiece& packed) {
        if (piece.offset == 0) {
            m_meter.Begin(m_items[index].path);
            m_writer.BeginFile(m_items[index].item, piece.file->Size());
        }
        m_writer.AddPiece(packed, *piece.file);
        m_meter.Advance(piece.size);
    }

    ZipWriter m_writer;
    const std::vector<FolderItem>& m_items;
    const OldPackage& m_old;
    const std::vector<const ZipEntry*>& m_unchanged;
    ProgressMeter& m_meter;
    FilePieces m_pieces;
    std::size_t m_next = 0;
};

void PackItems(OpenFile& packed, const std::vector<FolderItem>& items, const OldPackage& old,
               const std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter) {
    Packer(packed, items, old, unchanged, meter).Run();
    CheckEntries(packed, ReadZipDirectory(packed), meter);
}

// Closes the old package before it is replaced.
void PackBeside(const std::wstring& file, OpenFile& packed, const std::vector<FolderItem>& items,
                PackageProgress* progress) {
    const OldPackage old(file);
    std::vector<const ZipEntry*> unchanged = FindCandidates(items, old.Entries());
    std::uint64_t compared = 0;
    for (const ZipEntry* entry : unchanged)
        compared += entry != nullptr ? entry->size : 0;
    // Everything is read twice: to pack it, and to check what was packed.
    ProgressMeter meter(progress, compared + 2 * TotalSize(items));
    KeepUnchanged(items, unchanged, meter);
    const bool isReusing = std::ranges::any_of(unchanged, [](const ZipEntry* entry) { return entry; });
    try {
        PackItems(packed, items, old, unchanged, meter);
    } catch (const PackageError&) {
        if (!isReusing)
            throw;
        // The old package is damaged or changed meanwhile: the folder alone counts.
        PackItems(packed, items, old, std::vector<const ZipEntry*>(items.size()), meter);
    }
}

} // namespace

void PackFolder(const std::wstring& folder, const std::wstring& file, PackageProgress* progress,
                const Substitute* substitute) {
    const std::vector<FolderItem> items = ItemsOf(folder, file, substitute);
    RefuseTooMuch(folder, items);
    AtomicFile target(file);
    if (target.Error() != ERROR_SUCCESS)
        ThrowFileFailure(L"cannot write", file, target.Error());
    OpenFile packed(target.Handle(), file);
    PackBeside(file, packed, items, progress);
    if (!target.Commit())
        ThrowFileFailure(L"cannot replace", file, target.Error());
}

} // namespace mxovshare
