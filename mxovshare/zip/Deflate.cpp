#include "Deflate.h"

#include "Checksum.h"

#include <algorithm>
#include <new>

#include <zlib.h>

namespace mxovshare {

namespace {

constexpr int kRawDeflateWindow = -MAX_WBITS;
constexpr int kMemoryLevel = 8;
// Twice as fast as the next one, for one or two bytes in a hundred.
constexpr int kUsualLevel = 5;

class Deflater {
public:
    explicit Deflater(DeflateEffort effort, int level = kUsualLevel) {
        const int strategy = effort == DeflateEffort::Normal ? Z_DEFAULT_STRATEGY : Z_HUFFMAN_ONLY;
        if (deflateInit2(&m_stream, level, Z_DEFLATED, kRawDeflateWindow, kMemoryLevel, strategy) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { deflateEnd(&m_stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    z_stream* operator->() { return &m_stream; }
    z_stream* Get() { return &m_stream; }

private:
    z_stream m_stream = {};
};

std::vector<std::uint8_t> Run(Deflater& stream, Bytes piece, int flush) {
    // The end of a flushed block takes a few bytes beyond the bound.
    constexpr std::size_t kFlushRoom = 16;
    std::vector<std::uint8_t> packed(deflateBound(stream.Get(), static_cast<uLong>(piece.size())) +
                                     kFlushRoom);
    stream->next_in = const_cast<Bytef*>(piece.data());
    stream->avail_in = static_cast<uInt>(piece.size());
    stream->next_out = packed.data();
    stream->avail_out = static_cast<uInt>(packed.size());
    deflate(stream.Get(), flush);
    packed.resize(packed.size() - stream->avail_out);
    return packed;
}

// Whether a quick look at two places finds nothing to gain: pictures, archives, encrypted data.
bool IsIncompressible(Bytes piece) {
    constexpr std::size_t kSample = std::size_t{16} << 10;
    if (piece.size() < 8 * kSample) {
        return false;
    }
    constexpr std::size_t kGain = kSample / 64;
    const auto gains = [piece](std::size_t place) {
        Deflater stream(DeflateEffort::Normal, Z_BEST_SPEED);
        return Run(stream, piece.subspan(place, kSample), Z_FINISH).size() + kGain < kSample;
    };
    return !gains(0) && !gains(piece.size() / 2) && !gains(piece.size() - kSample);
}

} // namespace

std::vector<std::uint8_t> DeflatePiece(Bytes piece, Bytes dictionary, bool last, DeflateEffort effort) {
    Deflater stream(effort);
    if (!dictionary.empty()) {
        deflateSetDictionary(stream.Get(), dictionary.data(), static_cast<uInt>(dictionary.size()));
    }
    return Run(stream, piece, last ? Z_FINISH : Z_SYNC_FLUSH);
}

std::vector<std::uint8_t> StoredPiece(Bytes piece, bool last) {
    constexpr std::size_t kLongestBlock = 0xFFFF;
    std::vector<std::uint8_t> stored;
    stored.reserve(piece.size() + 5 * (piece.size() / kLongestBlock + 1));
    do {
        const Bytes block = piece.first(std::min(piece.size(), kLongestBlock));
        piece = piece.subspan(block.size());
        const auto length = static_cast<unsigned>(block.size());
        stored.push_back(last && piece.empty() ? 1 : 0);
        for (const unsigned value : {length, ~length}) {
            stored.push_back(static_cast<std::uint8_t>(value));
            stored.push_back(static_cast<std::uint8_t>(value >> 8));
        }
        stored.insert(stored.end(), block.begin(), block.end());
    } while (!piece.empty());
    return stored;
}

PackedPiece PackPiece(Bytes piece, Bytes dictionary, bool last) {
    PackedPiece packed;
    packed.size = piece.size();
    packed.crc32 = Checksum(0, piece);
    if (!IsIncompressible(piece)) {
        packed.bytes = DeflatePiece(piece, dictionary, last, DeflateEffort::Normal);
    }
    packed.isRaw = packed.bytes.empty() || packed.bytes.size() >= piece.size();
    if (packed.isRaw) {
        packed.bytes.assign(piece.begin(), piece.end());
    }
    return packed;
}

} // namespace mxovshare
