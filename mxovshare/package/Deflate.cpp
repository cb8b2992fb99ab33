#include "package/Deflate.h"

#include <new>

#include <zlib.h>

namespace mxovshare {

namespace {

constexpr int kRawWindow = -MAX_WBITS;
constexpr int kMemoryLevel = 8;

class Deflater {
public:
    explicit Deflater(DeflateEffort effort) {
        const int strategy = effort == DeflateEffort::Normal ? Z_DEFAULT_STRATEGY : Z_HUFFMAN_ONLY;
        if (deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kRawWindow, kMemoryLevel, strategy) !=
            Z_OK)
            throw std::bad_alloc();
    }
    ~Deflater() { deflateEnd(&m_stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    z_stream* operator->() { return &m_stream; }
    z_stream* Get() { return &m_stream; }

private:
    z_stream m_stream = {};
};

} // namespace

std::vector<std::uint8_t> DeflatePiece(Bytes piece, Bytes dictionary, bool last, DeflateEffort effort) {
    Deflater stream(effort);
    if (!dictionary.empty())
        deflateSetDictionary(stream.Get(), dictionary.data(), static_cast<uInt>(dictionary.size()));
    // The end of a flushed block takes a few bytes beyond the bound.
    constexpr std::size_t kFlushRoom = 16;
    std::vector<std::uint8_t> packed(deflateBound(stream.Get(), static_cast<uLong>(piece.size())) +
                                     kFlushRoom);
    stream->next_in = const_cast<Bytef*>(piece.data());
    stream->avail_in = static_cast<uInt>(piece.size());
    stream->next_out = packed.data();
    stream->avail_out = static_cast<uInt>(packed.size());
    deflate(stream.Get(), last ? Z_FINISH : Z_SYNC_FLUSH);
    packed.resize(packed.size() - stream->avail_out);
    return packed;
}

} // namespace mxovshare
