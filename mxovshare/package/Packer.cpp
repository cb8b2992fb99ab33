#include "package/Packer.h"

#include "package/Checksum.h"
#include "package/ProvenData.h"

#include <algorithm>
#include <numeric>

namespace mxovshare {

namespace {

// Small enough for the processor's cache.
constexpr std::size_t kBuffer = std::size_t{512} << 10;

// Hands out the bytes of a stretch, a buffer at a time.
template <typename Take>
void ReadStretch(const ByteSource& source, std::uint64_t begin, std::uint64_t end,
                 std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop, Take take) {
    while (begin < end) {
        if (stop)
            throw Cancelled();
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

// Copies many small files at a time: handing a job from thread to thread takes as long as copying some.
class Packer::CopyJob : public Job {
public:
    static constexpr std::uint64_t kSize = std::uint64_t{8} << 20;

    explicit CopyJob(Packer& owner) : m_owner(owner) {}
    void Add(const CopyPart& part) {
        m_parts.push_back(part);
        m_size += part.size + kFileCost;
    }
    std::uint64_t Room() const { return kSize - std::min(kSize, m_size); }
    void Make(const std::atomic<bool>& stop) override {
        std::vector<std::uint8_t> buffer(kBuffer);
        for (CopyPart& part : m_parts)
            m_owner.Copy(part, buffer, stop);
    }
    void Take() override {
        for (const CopyPart& part : m_parts)
            m_owner.TakeCopied(part);
    }

private:
    // Opening a file, in bytes that are copied meanwhile.
    static constexpr std::uint64_t kFileCost = std::uint64_t{128} << 10;

    Packer& m_owner;
    std::vector<CopyPart> m_parts;
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
    for (const std::size_t item : m_added)
        m_places[item] = m_writer.Reserve(m_items[item].item, *m_unchanged[item]);
}

std::vector<Outcome> Packer::Run() {
    // Opening the files that are compared is waiting for the system more than work.
    const unsigned more = m_added.empty() ? 0 : 2;
    RunJobs(
        ProcessorCount() + more, [this] { return Next(); }, [this] { m_meter.Tell(); });
    m_writer.Finish(m_added);
    return std::move(m_outcomes);
}

std::unique_ptr<Job> Packer::Next() {
    if (!m_pieces.IsOpen()) {
        if (m_next == m_order.size())
            return nullptr;
        const std::size_t item = m_order[m_next];
        if (m_unchanged[item] != nullptr)
            return NextCopy();
        ++m_next;
        if (m_items[item].isFolder)
            return std::make_unique<FolderJob>(*this, item);
        m_pieces.Open(m_items[item].path);
    }
    return std::make_unique<PieceJob>(*this, m_order[m_next - 1], m_pieces.Next());
}

std::unique_ptr<Job> Packer::NextCopy() {
    auto job = std::make_unique<CopyJob>(*this);
    while (job->Room() > 0 && m_next < m_order.size()) {
        const std::size_t item = m_order[m_next];
        const std::uint64_t left = m_unchanged[item]->size - m_given;
        const std::uint64_t size = std::min(left, job->Room());
        job->Add({.item = item, .offset = m_given, .size = static_cast<std::uint32_t>(size)});
        m_given += size;
        if (size == left) {
            m_given = 0;
            ++m_next;
        }
    }
    return job;
}

void Packer::Copy(CopyPart& part, std::vector<std::uint8_t>& buffer, const std::atomic<bool>& stop) const {
    const FolderItem& item = m_items[part.item];
    const ZipEntry& entry = *m_unchanged[part.item];
    {
        const DiskSource file(item.path);
        part.hasSize = file.Size() == entry.size;
        if (!part.hasSize)
            return;
        ReadStretch(file, part.offset, part.offset + part.size, buffer, stop,
                    [&part](Bytes bytes) { part.crc32 = Checksum(part.crc32, bytes); });
    }
    const std::vector<std::uint8_t> header = m_writer.PackedHeader(item.item, entry);
    if (part.offset == 0)
        m_sink.Write(m_places[part.item], header);
    // Packed data is no longer than the file.
    const std::uint64_t begin = std::min(part.offset, entry.packedSize);
    const std::uint64_t end = std::min(part.offset + part.size, entry.packedSize);
    const std::uint64_t place = m_places[part.item] + header.size() + begin;
    std::uint64_t next = place;
    ReadStretch(m_old, entry.dataOffset + begin, entry.dataOffset + end, buffer, stop, [&](Bytes bytes) {
        m_sink.Write(next, bytes);
        next += bytes.size();
    });
    part.packedSize = static_cast<std::uint32_t>(end - begin);
    ReadStretch(m_written, place, next, buffer, stop,
                [&part](Bytes bytes) { part.packedCrc32 = Checksum(part.packedCrc32, bytes); });
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

void Packer::TakeCopied(const CopyPart& part) {
    const ZipEntry& entry = *m_unchanged[part.item];
    if (part.offset == 0) {
        m_meter.Begin(m_items[part.item].path);
        m_hasSize = true;
        m_crc = m_packedCrc = 0;
    }
    m_hasSize = m_hasSize && part.hasSize;
    m_crc = CombinedChecksum(m_crc, part.crc32, part.size);
    m_packedCrc = CombinedChecksum(m_packedCrc, part.packedCrc32, part.packedSize);
    m_meter.Advance(part.size);
    if (part.offset + part.size < entry.size)
        return;
    Outcome& outcome = m_outcomes[part.item];
    outcome = m_hasSize && m_crc == entry.crc32 ? Outcome::Copied : Outcome::Different;
    if (outcome == Outcome::Copied && ProvenData::Instance().Has(entry, m_packedCrc)) {
        outcome = Outcome::Proven;
        m_meter.Advance(entry.size);
    }
}

} // namespace mxovshare
