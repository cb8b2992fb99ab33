#include "package/PackageContent.h"

#include "package/EntryReader.h"
#include "package/JobQueue.h"

#include <algorithm>

namespace mxovshare {

namespace {

class Check {
public:
    Check(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter)
        : m_source(source), m_entries(entries), m_meter(meter) {}

    void Run() {
        Begin(0);
        RunJobs(
            ProcessorCount(), [this] { return Next(); }, [this] { Tell(); });
    }

private:
    class EntryJob : public Job {
    public:
        EntryJob(Check& owner, std::size_t index) : m_owner(owner), m_index(index) {}
        void Make(const std::atomic<bool>& stop) override {
            ReadEntry(m_owner.m_source, m_owner.m_entries[m_index], [this, &stop](Bytes piece) {
                if (stop)
                    throw Cancelled();
                m_owner.m_checked += piece.size();
            });
        }
        void Take() override {
            m_owner.Tell();
            m_owner.Begin(m_index + 1);
        }

    private:
        Check& m_owner;
        std::size_t m_index;
    };

    std::unique_ptr<Job> Next() {
        return m_next < m_entries.size() ? std::make_unique<EntryJob>(*this, m_next++) : nullptr;
    }

    void Begin(std::size_t index) {
        if (index < m_entries.size())
            m_meter.Begin(RelativePath(m_entries[index]));
    }

    void Tell() { m_meter.Advance(m_checked.exchange(0)); }

    const ByteSource& m_source;
    const std::vector<ZipEntry>& m_entries;
    ProgressMeter& m_meter;
    std::size_t m_next = 0;
    std::atomic<std::uint64_t> m_checked = 0; // bytes since the last time they were told
};

} // namespace

std::uint64_t TotalSize(const std::vector<ZipEntry>& entries) {
    std::uint64_t total = 0;
    for (const ZipEntry& entry : entries)
        total += entry.size;
    return total;
}

std::wstring RelativePath(const ZipEntry& entry) {
    std::wstring path = FromUtf8(entry.name);
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

void CheckEntries(const ByteSource& source, const std::vector<ZipEntry>& entries, ProgressMeter& meter) {
    Check(source, entries, meter).Run();
}

} // namespace mxovshare
