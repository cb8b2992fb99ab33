#include "pack/PackageContent.h"

#include "common/Utf8.h"
#include "pack/JobQueue.h"
#include "zip/EntryReader.h"

#include <algorithm>

namespace mxovshare {

namespace {

class EntryRuns {
public:
    EntryRuns(const std::vector<ZipEntry>& entries, ProgressMeter& meter, const EntryWork& work)
        : m_entries(entries), m_meter(meter), m_work(work) {}

    void Run() {
        Begin(0);
        // Starting threads takes as long as unpacking this much.
        constexpr std::uint64_t kAlone = std::uint64_t{1} << 20;
        RunJobs(
            TotalSize(m_entries) < kAlone ? 0 : ProcessorCount(), [this] { return Next(); },
            [this] { ReportDone(); });
    }

private:
    // A run of entries.
    class RunJob : public Job {
    public:
        RunJob(EntryRuns& owner, std::size_t first, std::size_t end)
            : m_owner(owner), m_first(first), m_end(end) {}
        void Make(const std::atomic<bool>& stop) override {
            const auto onPiece = [this, &stop](Bytes piece) {
                if (stop) {
                    throw Cancelled();
                }
                m_owner.m_done += piece.size();
            };
            for (std::size_t i = m_first; i < m_end; ++i) {
                m_owner.m_work(i, onPiece);
            }
        }
        void Take() override {
            m_owner.ReportDone();
            m_owner.Begin(m_end);
        }

    private:
        EntryRuns& m_owner;
        std::size_t m_first;
        std::size_t m_end;
    };

    // Small entries share a job, since passing one between threads takes as long as unpacking several
    // entries.
    std::unique_ptr<Job> Next() {
        constexpr std::uint64_t kJobSize = std::uint64_t{1} << 20;
        const std::size_t first = m_next;
        for (std::uint64_t size = 0; m_next < m_entries.size() && size < kJobSize; ++m_next) {
            size += m_entries[m_next].size + kEntryCost;
        }
        return first < m_next ? std::make_unique<RunJob>(*this, first, m_next) : nullptr;
    }

    void Begin(std::size_t index) {
        if (index < m_entries.size()) {
            m_meter.Begin(RelativePath(m_entries[index]));
        }
    }

    void ReportDone() { m_meter.Advance(m_done.exchange(0)); }

    // Checking an empty entry takes as long as this many bytes.
    static constexpr std::uint64_t kEntryCost = std::uint64_t{8} << 10;

    const std::vector<ZipEntry>& m_entries;
    ProgressMeter& m_meter;
    const EntryWork& m_work;
    std::size_t m_next = 0;
    std::atomic<std::uint64_t> m_done = 0; // bytes that the meter does not know yet
};

} // namespace

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries) {
    std::uint64_t total = 0;
    for (const ZipEntry& entry : entries) {
        total += entry.size;
    }
    return total;
}

std::wstring RelativePath(const ZipEntry& entry) {
    std::wstring path = common::FromUtf8(entry.name);
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

void ForEachEntry(const std::vector<ZipEntry>& entries, ProgressMeter& meter, const EntryWork& work) {
    EntryRuns(entries, meter, work).Run();
}

void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter,
                  VerifiedEntryCache* verified) {
    ForEachEntry(entries, meter, [&](std::size_t index, const OnPiece& onPiece) {
        const std::uint32_t packed = ReadEntry(source, entries[index], onPiece);
        if (verified != nullptr) {
            verified->Add(entries[index], packed);
        }
    });
}

} // namespace mxovshare
