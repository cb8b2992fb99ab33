#include "ByteSource.h"

#include <algorithm>
#include <array>

namespace mxovshare {

void ReadPieces(const ByteSource& source, std::uint64_t offset, std::uint64_t size,
                const std::function<void(Bytes)>& take) {
    // On the stack: fresh memory from the heap for each call takes longer than reading a small file.
    std::array<std::uint8_t, std::size_t{64} << 10> buffer;
    while (size > 0) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size, buffer.size()));
        const auto piece = std::span(buffer).first(count);
        source.Read(offset, piece);
        take(piece);
        offset += count;
        size -= count;
    }
}

} // namespace mxovshare
