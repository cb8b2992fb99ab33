#include "pack/NewPackage.h"

#include "common/LongPath.h"
#include "common/Paths.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FileProperties.h"
#include "files/FolderPath.h"
#include "pack/FileTimes.h"
#include "pack/FolderScan.h"
#include "pack/PackageContent.h"
#include "pack/Packer.h"
#include "pack/ReuseCandidates.h"
#include "pack/VerifiedEntryCache.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

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
        throw FileFailure(L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.entries) + L" files");
    }
    if (TotalSize(items) > limits.total) {
        throw FileFailure(L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.total >> 30) + L" GB");
    }
}

std::vector<FolderItem> ItemsOf(const std::wstring& folder, const std::wstring& file,
                                const Substitute* substitute) {
    std::vector<std::wstring> except = {file, AtomicFile::TemporaryPath(file)};
    if (substitute != nullptr) {
        except.push_back(substitute->content);
    }
    std::vector<FolderItem> items = ScanFolder(folder, except);
    if (substitute == nullptr) {
        return items;
    }
    for (FolderItem& item : items) {
        if (common::IsSamePath(common::LongPath(item.path), common::LongPath(substitute->path))) {
            item.path = substitute->content;
            item.isExclusive = true;
            item.size = substitute->size;
            item.item.modified = ToZipTime(substitute->modified);
        }
    }
    return items;
}

// The package to be replaced, empty when it cannot be used. Reading it throws only PackageError.
class OldPackage : public ByteSource {
public:
    explicit OldPackage(const std::wstring& file) {
        try {
            m_source.emplace(file);
            m_entries = ReadZipDirectory(*this);
        } catch (const FileFailure&) {
            // There is none, or it is locked, which replacing it will report.
        } catch (const PackageError&) {
            // It is damaged.
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

// Removes from `reuse` what the old package cannot supply; false when there is nothing to remove.
bool DropUnusable(const std::vector<Outcome>& outcomes, std::vector<const ZipEntry*>& reuse) {
    if (std::ranges::find(outcomes, Outcome::Damaged) != outcomes.end()) {
        std::ranges::fill(reuse, nullptr);
        return true;
    }
    bool dropped = false;
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        if (outcomes[i] == Outcome::Different) {
            reuse[i] = nullptr;
            dropped = true;
        }
    }
    return dropped;
}

// The entries whose items have this outcome. The directory is in the order of the items.
std::vector<ZipEntry> EntriesWith(Outcome outcome, const std::vector<Outcome>& outcomes,
                                  const ByteSource& file) {
    std::vector<ZipEntry> entries = ReadZipDirectory(file);
    std::size_t i = 0;
    std::erase_if(entries, [&](const ZipEntry&) { return outcomes[i++] != outcome; });
    return entries;
}

void Verify(const ByteSource& file, const std::vector<ZipEntry>& entries, ProgressMeter& meter) {
    CheckEntries(file, entries, meter, &VerifiedEntryCache::Instance());
}

bool IsSound(const ByteSource& file, const std::vector<ZipEntry>& entries, ProgressMeter& meter) {
    try {
        Verify(file, entries, meter);
        return true;
    } catch (const PackageError&) {
        return false;
    }
}

// Closes the old package on return, so that it can be replaced.
void PackInto(AtomicFile& target, const std::wstring& file, const std::vector<FolderItem>& items,
              ProgressMeter& meter) {
    OpenFile packed(target.Handle(), file);
    const OldPackage old(file);
    std::vector<const ZipEntry*> reuse = FindReuseCandidates(items, old.Entries());
    for (;;) {
        const std::vector<Outcome> outcomes = PackItems(packed, items, old, reuse, meter);
        if (DropUnusable(outcomes, reuse)) {
            continue;
        }
        target.FlushMeanwhile(); // the disk works while the processors verify
        if (IsSound(packed, EntriesWith(Outcome::Copied, outcomes, packed), meter)) {
            return Verify(packed, EntriesWith(Outcome::Packed, outcomes, packed), meter);
        }
        std::ranges::fill(reuse, nullptr);
    }
}

} // namespace

NewPackage::NewPackage(const std::wstring& file) : m_file(FinalFile(file)), m_target(m_file) {
    if (m_target.Error() != ERROR_SUCCESS) {
        ThrowFileFailure(L"cannot write", m_file, m_target.Error());
    }
}

void NewPackage::Pack(const std::wstring& folder, PackageProgress* progress, const Substitute* substitute) {
    constexpr int kAttempts = 6;
    std::vector<FolderItem> items = ItemsOf(folder, m_file, substitute);
    // Everything is read twice: to pack or compare it, and to verify what was written.
    ProgressMeter meter(progress, 2 * TotalSize(items));
    std::chrono::milliseconds pause(32); // doubled for each attempt
    for (int attempt = 1;; ++attempt, pause *= 2) {
        try {
            RefuseTooMuch(folder, items);
            PackInto(m_target, m_file, items, meter);
            return;
        } catch (const FileChanged&) {
            if (attempt == kAttempts) {
                throw;
            }
        }
        std::this_thread::sleep_for(pause);
        items = ItemsOf(folder, m_file, substitute);
    }
}

void NewPackage::Pack(const std::vector<FolderItem>& items, const ByteSource& old,
                      const std::vector<const ZipEntry*>& reuse, PackageProgress* progress) {
    RefuseTooMuch(m_file, items);
    ProgressMeter meter(progress, 2 * TotalSize(items));
    OpenFile packed(m_target.Handle(), m_file);
    const std::vector<Outcome> outcomes = PackItems(packed, items, old, reuse, meter);
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (outcomes[i] == Outcome::Damaged) {
            throw EntryError(items[i].item.name, "its data is damaged");
        }
    }
    m_target.FlushMeanwhile();
    Verify(packed, EntriesWith(Outcome::Copied, outcomes, packed), meter);
    Verify(packed, EntriesWith(Outcome::Packed, outcomes, packed), meter);
}

std::wstring NewPackage::KeepProperties() {
    return CopyFileProperties(m_file, AtomicFile::TemporaryPath(m_file));
}

void NewPackage::KeepProperties(PackageProgress* progress) {
    const std::wstring lost = KeepProperties();
    if (!lost.empty() && progress != nullptr && !progress->OnLoss(lost)) {
        throw Cancelled();
    }
}

void NewPackage::Commit(const std::function<void()>& beforeReplace) {
    if (!m_target.Commit(beforeReplace)) {
        ThrowFileFailure(L"cannot replace", m_file, m_target.Error());
    }
}

} // namespace mxovshare
