#include "pack/PackFolder.h"

#include "files/AtomicFile.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"
#include "files/LongPath.h"
#include "pack/BackgroundFlusher.h"
#include "pack/FileTimes.h"
#include "pack/FolderScan.h"
#include "pack/PackageContent.h"
#include "pack/Packer.h"
#include "pack/ReuseCandidates.h"
#include "zip/PackageError.h"

#include <algorithm>
#include <optional>

namespace mxovshare {

namespace {

std::uint64_t TotalSize(const std::vector<FolderItem>& items) {
    std::uint64_t total = 0;
    for (const FolderItem& item : items) {
        total += item.size;
    }
    return total;
}

void RefuseTooMuch(const std::wstring& folder, const std::vector<FolderItem>& items) {
    const ZipLimits limits;
    if (items.size() > limits.entries) {
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.entries) + L" files"};
    }
    if (TotalSize(items) > limits.total) {
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.total >> 30) + L" GB"};
    }
}

std::vector<FolderItem> ItemsOf(const std::wstring& folder, const std::wstring& file,
                                const Substitute* substitute) {
    if (substitute == nullptr) {
        return ScanFolder(folder, {file});
    }
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

// The package that is to be replaced, as far as it can be used. Reading it throws nothing but PackageError.
class OldPackage : public ByteSource {
public:
    explicit OldPackage(const std::wstring& file) {
        try {
            m_source.emplace(file);
            m_entries = ReadZipDirectory(*this);
        } catch (const FileFailure&) {
            // There is none, or whoever has it locked is noticed when it is replaced.
        } catch (const PackageError&) {
            // Nothing of it is used.
        }
    }

    const std::vector<ZipEntry>& Entries() const { return m_entries; }

    std::uint64_t Size() const override { return m_source->Size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override {
        try {
            m_source->Read(offset, to);
        } catch (const FileFailure&) {
            throw PackageError("the old package cannot be read");
        }
    }

private:
    std::optional<DiskSource> m_source;
    std::vector<ZipEntry> m_entries;
};

// Packs into a new file and checks what stands there. False when something is not what the old package holds:
// it is then taken out of `unchanged`, and the file is to be packed again.
bool PackItems(const ByteSource& file, ByteSink& sink, const std::vector<FolderItem>& items,
               const OldPackage& old, std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter) {
    try {
        const std::vector<Outcome> outcomes = Packer(sink, file, items, old, unchanged, meter).Run();
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (outcomes[i] == Outcome::Different) {
                unchanged[i] = nullptr;
            }
        }
        if (std::ranges::find(outcomes, Outcome::Different) != outcomes.end()) {
            return false;
        }
        // The directory is in the order of the items.
        const std::vector<ZipEntry> entries = ReadZipDirectory(file);
        std::vector<ZipEntry> unverified;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (outcomes[i] != Outcome::Verified) {
                unverified.push_back(entries.at(i));
            }
        }
        CheckEntries(file, unverified, meter, &VerifiedEntryCache::Instance());
        return true;
    } catch (const PackageError&) {
        if (std::ranges::all_of(unchanged, [](const ZipEntry* entry) { return entry == nullptr; })) {
            throw;
        }
        // The old package is damaged: the folder alone counts.
        std::ranges::fill(unchanged, nullptr);
        return false;
    }
}

// Closes the old package before it is replaced.
void PackBeside(const std::wstring& file, HANDLE target, const std::vector<FolderItem>& items,
                PackageProgress* progress) {
    OpenFile packed(target, file);
    BackgroundFlusher sink(packed, target, file);
    // Everything is read twice: to pack or compare it, and to check what was packed.
    ProgressMeter meter(progress, 2 * TotalSize(items));
    const OldPackage old(file);
    std::vector<const ZipEntry*> unchanged = FindReuseCandidates(items, old.Entries());
    while (!PackItems(packed, sink, items, old, unchanged, meter)) {
    }
    sink.Finish();
}

} // namespace

void PackFolder(const std::wstring& folder, const std::wstring& file, PackageProgress* progress,
                const Substitute* substitute) {
    const std::vector<FolderItem> items = ItemsOf(folder, file, substitute);
    RefuseTooMuch(folder, items);
    AtomicFile target(file);
    if (target.Error() != ERROR_SUCCESS) {
        ThrowFileFailure(L"cannot write", file, target.Error());
    }
    PackBeside(file, target.Handle(), items, progress);
    if (!target.Commit()) {
        ThrowFileFailure(L"cannot replace", file, target.Error());
    }
}

} // namespace mxovshare
