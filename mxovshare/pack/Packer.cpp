#include "pack/Packer.h"

#include "pack/VerifiedEntryCache.h"
#include "zip/Checksum.h"

#include <algorithm>
#include <numeric>

namespace mxovshare {

namespace {

// Small enough for the processor's cache.
constexpr std::size_t kBuffer = std::size_t{256} << 10;

// Threads that open files at the same time: more get in each other's way, but for want of other work.
constexpr int kMostComparing = 2;

// Hands out the bytes of a stretch, a buffer at a time.
template <typename Take>
void ReadStretch(const ByteSource& source, std::uint64_t begin, std::uint64_t end,
                 std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop, Take take) {
    while (begin < end) {
        if (stop) {
            throw Cancelled();
        }
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), end - begin));
        const std::span<std::uint8_t> bytes = std::span(buffer).first(size);
        source.Read(begin, bytes);
        take(Bytes(bytes));
        begin += size;
    }
}

} // namespace

class Packer::FolderJob : public Job {
public:
    FolderJob(Packer& owner, std::size_t item) : m_owner(owner), m_item(item) {}
    void Make(const std::atomic<bool>&) override {}
    void Take() override { m_owner.TakeFolder(m_item); }

private:
    Packer& m_owner;
    std::size_t m_item;
};

class Packer::PieceJob : public Job {
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

// Works on many small files at a time: handing a job from thread to thread takes as long as some of them.
class Packer::StretchJob : public Job {
public:
    StretchJob(Packer& owner, Pass pass) : m_owner(owner), m_pass(pass) {
        if (m_pass == Pass::Compare) {
            ++m_owner.m_comparing;
        }
    }
    void Add(const Stretch& stretch) {
        m_stretches.push_back(stretch);
        m_size += stretch.size + kFileCost;
    }
    std::uint64_t Room() const { return kSize - std::min(kSize, m_size); }
    void Make(const std::atomic<bool>& stop) override {
        std::vector<std::uint8_t> buffer(kBuffer);
        for (Stretch& stretch : m_stretches) {
            if (m_pass == Pass::Compare) {
                m_owner.Compare(stretch, buffer, stop);
            } else {
                m_owner.Copy(stretch, buffer, stop);
            }
        }
        if (m_pass == Pass::Compare) {
            --m_owner.m_comparing;
        }
    }
    void Take() override {
        for (const Stretch& stretch : m_stretches) {
            if (m_pass == Pass::Compare) {
                m_owner.TakeCompared(stretch);
            } else {
                m_owner.TakeCopied(stretch);
            }
        }
    }

private:
    static constexpr std::uint64_t kSize = std::uint64_t{8} << 20;
    // What each file costs besides, in bytes.
    static constexpr std::uint64_t kFileCost = std::uint64_t{128} << 10;

    Packer& m_owner;
    Pass m_pass;
    std::vector<Stretch> m_stretches;
    std::uint64_t m_size = 0;
};

Packer::Packer(ByteSink& sink, const ByteSource& written, const std::vector<FolderItem>& items,
               const ByteSource& old, const std::vector<const ZipEntry*>& unchanged, ProgressMeter& meter)
    : m_sink(sink), m_written(written), m_writer(sink), m_items(items), m_old(old), m_unchanged(unchanged),
      m_meter(meter), m_order(items.size()), m_places(items.size()), m_outcomes(items.size()) {
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    const auto copied = std::stable_partition(
        m_order.begin(), m_order.end(), [this](std::size_t item) { return m_unchanged[item] == nullptr; });
    m_added.assign(copied, m_order.end());
    for (Progress& pass : m_passes) {
        pass.next = static_cast<std::size_t>(copied - m_order.begin());
    }
    for (const std::size_t item : m_added) {
        m_places[item] = m_writer.Reserve(m_items[item].item, *m_unchanged[item]);
    }
}

std::vector<Outcome> Packer::Run() {
    RunJobs(
        ProcessorCount(), [this] { return Next(); }, [this] { m_meter.Report(); });
    m_writer.Finish(m_added);
    return std::move(m_outcomes);
}

std::unique_ptr<Job> Packer::Next() {
    if (!m_pieces.IsOpen()) {
        if (m_next == m_order.size() || m_unchanged[m_order[m_next]] != nullptr) {
            return NextStretches();
        }
        const std::size_t item = m_order[m_next++];
        if (m_items[item].isFolder) {
            return std::make_unique<FolderJob>(*this, item);
        }
        m_pieces.Open(m_items[item].path);
    }
    return std::make_unique<PieceJob>(*this, m_order[m_next - 1], m_pieces.Next());
}

// Of both passes at once, as long as there are both, so that the disk is never left waiting for the system to
// open files.
std::unique_ptr<Job> Packer::NextStretches() {
    const auto isDone = [this](Pass pass) { return PassOf(pass).next == m_order.size(); };
    const bool compares = isDone(Pass::Copy) || (m_comparing < kMostComparing && !isDone(Pass::Compare));
    const Pass chosen = compares ? Pass::Compare : Pass::Copy;
    if (isDone(chosen)) {
        return nullptr;
    }
    Progress& pass = PassOf(chosen);
    auto job = std::make_unique<StretchJob>(*this, chosen);
    while (job->Room() > 0 && pass.next < m_order.size()) {
        const std::size_t item = m_order[pass.next];
        const std::uint64_t left = SizeOf(chosen, item) - pass.given;
        const std::uint64_t size = std::min(left, job->Room());
        job->Add({.item = item, .offset = pass.given, .size = static_cast<std::uint32_t>(size)});
        pass.given += size;
        if (size == left) {
            pass.given = 0;
            ++pass.next;
        }
    }
    return job;
}

std::uint64_t Packer::SizeOf(Pass pass, std::size_t item) const {
    const ZipEntry& entry = *m_unchanged[item];
    return pass == Pass::Compare ? entry.size : entry.packedSize;
}

void Packer::Compare(Stretch& stretch, std::vector<std::uint8_t>& buffer,
                     const std::atomic<bool>& stop) const {
    const DiskSource file(m_items[stretch.item].path);
    stretch.hasSize = file.Size() == m_unchanged[stretch.item]->size;
    if (stretch.hasSize) {
        ReadStretch(file, stretch.offset, stretch.offset + stretch.size, buffer, stop,
                    [&stretch](Bytes bytes) { stretch.crc32 = Checksum(stretch.crc32, bytes); });
    }
}

void Packer::Copy(Stretch& stretch, std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop) const {
    const ZipEntry& entry = *m_unchanged[stretch.item];
    const std::vector<std::uint8_t> header = m_writer.PackedHeader(m_items[stretch.item].item, entry);
    if (stretch.offset == 0) {
        m_sink.Write(m_places[stretch.item], header);
    }
    const std::uint64_t place = m_places[stretch.item] + header.size() + stretch.offset;
    const std::uint64_t begin = entry.dataOffset + stretch.offset;
    std::uint64_t next = place;
    ReadStretch(m_old, begin, begin + stretch.size, buffer, stop, [&](Bytes bytes) {
        m_sink.Write(next, bytes);
        next += bytes.size();
    });
    ReadStretch(m_written, place, next, buffer, stop,
                [&stretch](Bytes bytes) { stretch.crc32 = Checksum(stretch.crc32, bytes); });
}

void Packer::TakeFolder(std::size_t item) {
    m_meter.Begin(m_items[item].path);
    m_writer.AddFolder(m_items[item].item);
    m_added.push_back(item);
}

void Packer::TakePiece(std::size_t item, const FilePiece& piece, const PackedPiece& packed) {
    if (piece.offset == 0) {
        m_meter.Begin(m_items[item].path);
        m_writer.BeginFile(m_items[item].item, piece.file->Size());
        m_added.push_back(item);
    }
    m_writer.AddPiece(packed, *piece.file);
    m_meter.Advance(piece.size);
}

bool Packer::Join(Pass pass, const Stretch& stretch) {
    Progress& so = PassOf(pass);
    if (stretch.offset == 0) {
        so.crc32 = 0;
        so.hasSize = true;
    }
    so.hasSize = so.hasSize && stretch.hasSize;
    so.crc32 = CombinedChecksum(so.crc32, stretch.crc32, stretch.size);
    return stretch.offset + stretch.size == SizeOf(pass, stretch.item);
}

void Packer::TakeCompared(const Stretch& stretch) {
    if (stretch.offset == 0) {
        m_meter.Begin(m_items[stretch.item].path);
    }
    const bool isLast = Join(Pass::Compare, stretch);
    m_meter.Advance(stretch.size);
    const Progress& found = PassOf(Pass::Compare);
    if (isLast && !(found.hasSize && found.crc32 == m_unchanged[stretch.item]->crc32)) {
        m_outcomes[stretch.item] = Outcome::Different;
    }
}

void Packer::TakeCopied(const Stretch& stretch) {
    if (!Join(Pass::Copy, stretch) || m_outcomes[stretch.item] == Outcome::Different) {
        return;
    }
    const ZipEntry& entry = *m_unchanged[stretch.item];
    const bool isVerified = VerifiedEntryCache::Instance().Contains(entry, PassOf(Pass::Copy).crc32);
    m_outcomes[stretch.item] = isVerified ? Outcome::Verified : Outcome::Copied;
    if (isVerified) {
        m_meter.Advance(entry.size);
    }
}

} // namespace mxovshare
