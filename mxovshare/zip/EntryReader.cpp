#include "EntryReader.h"

#include "Checksum.h"
#include "PackageError.h"
#include "ZipFormat.h"

#include <algorithm>
#include <new>

#include <zlib.h>

namespace mxovshare {

namespace {

constexpr std::uint64_t kBuffer = std::uint64_t{128} << 10;
constexpr int kRawInflate = -MAX_WBITS;

class Inflater {
public:
    Inflater() {
        if (inflateInit2(&m_stream, kRawInflate) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflater() { inflateEnd(&m_stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    z_stream* operator->() { return &m_stream; }
    z_stream* Get() { return &m_stream; }

private:
    z_stream m_stream = {};
};

// The packed bytes of an entry, a buffer at a time.
class PackedData {
public:
    PackedData(const ByteSource& source, const ZipEntry& entry)
        : m_source(source), m_offset(entry.dataOffset), m_left(entry.packedSize),
          m_buffer(static_cast<std::size_t>(std::min(kBuffer, entry.packedSize))) {}

    // Empty at the end.
    Bytes Next() {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(m_left, m_buffer.size()));
        const auto piece = std::span(m_buffer).first(size);
        if (size > 0) {
            m_source.Read(m_offset, piece);
        }
        m_offset += size;
        m_left -= size;
        return piece;
    }
    bool AtEnd() const { return m_left == 0; }

private:
    const ByteSource& m_source;
    std::uint64_t m_offset;
    std::uint64_t m_left;
    std::vector<std::uint8_t> m_buffer;
};

// Passes on unpacked bytes and checks their number and checksum.
class EntryOutput {
public:
    EntryOutput(const ZipEntry& entry, const std::function<void(Bytes)>& take)
        : m_entry(entry), m_take(take) {}

    void Put(Bytes piece) {
        if (piece.size() > m_entry.size - m_size) {
            throw EntryError(m_entry.name, "it unpacks to more than its stated size");
        }
        m_size += piece.size();
        m_crc = Checksum(m_crc, piece);
        if (!piece.empty()) {
            m_take(piece);
        }
    }

    void Finish() const {
        if (m_size != m_entry.size) {
            throw EntryError(m_entry.name, "it unpacks to less than its stated size");
        }
        if (m_crc != m_entry.crc32) {
            throw EntryError(m_entry.name, "its data does not meet its checksum");
        }
    }

private:
    const ZipEntry& m_entry;
    const std::function<void(Bytes)>& m_take;
    std::uint64_t m_size = 0;
    std::uint32_t m_crc = 0;
};

// Returns the checksum of the packed data.
std::uint32_t Inflate(const ByteSource& source, const ZipEntry& entry, EntryOutput& output) {
    PackedData data(source, entry);
    Inflater stream;
    std::uint32_t crc = 0;
    // One byte more than stated suffices to detect too much data.
    std::vector<std::uint8_t> buffer(static_cast<std::size_t>(std::min(kBuffer, entry.size + 1)));
    int state = Z_OK;
    while (state != Z_STREAM_END) {
        if (stream->avail_in == 0) {
            const Bytes packed = data.Next();
            crc = Checksum(crc, packed);
            stream->next_in = const_cast<Bytef*>(packed.data());
            stream->avail_in = static_cast<uInt>(packed.size());
        }
        stream->next_out = buffer.data();
        stream->avail_out = static_cast<uInt>(buffer.size());
        state = inflate(stream.Get(), Z_NO_FLUSH);
        if (state == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        if (state == Z_BUF_ERROR) {
            throw EntryError(entry.name, "its data is cut off");
        }
        if (state != Z_OK && state != Z_STREAM_END) {
            throw EntryError(entry.name, "its data is damaged");
        }
        output.Put(Bytes(buffer).first(buffer.size() - stream->avail_out));
    }
    if (stream->avail_in != 0 || !data.AtEnd()) {
        throw EntryError(entry.name, "its data goes on behind its end");
    }
    return crc;
}

} // namespace

std::uint32_t ReadEntry(const ByteSource& source, const ZipEntry& entry,
                        const std::function<void(Bytes)>& take) {
    EntryOutput output(entry, take);
    std::uint32_t packedChecksum = entry.crc32;
    if (entry.method == zip::kMethodDeflated) {
        packedChecksum = Inflate(source, entry, output);
    } else {
        ReadPieces(source, entry.dataOffset, entry.packedSize, [&output](Bytes piece) { output.Put(piece); });
    }
    output.Finish();
    return packedChecksum;
}

std::string ReadWholeEntry(const ByteSource& source, const ZipEntry& entry, std::uint64_t limit) {
    if (entry.size > limit) {
        throw EntryError(entry.name, "it is longer than " + std::to_string(limit / 1024) + " KB");
    }
    std::string content;
    content.reserve(static_cast<std::size_t>(entry.size));
    ReadEntry(source, entry, [&content](Bytes piece) { content.append(piece.begin(), piece.end()); });
    return content;
}

} // namespace mxovshare
