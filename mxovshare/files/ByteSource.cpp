#include "ByteSource.h"

#include <algorithm>
#include <vector>

namespace mxovshare {

void ReadPieces(const ByteSource& source, std::uint64_t offset, std::uint64_t size,
                const std::function<void(Bytes)>& take) {
    constexpr std::uint64_t kPiece = std::uint64_t{256} << 10;
    // Fresh memory for each call takes longer than reading a small file.
    thread_local std::vector<std::uint8_t> buffer;
    buffer.resize(std::max(buffer.size(), static_cast<std::size_t>(std::min(kPiece, size))));
    while (size > 0) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size, buffer.size()));
        const std::span<std::uint8_t> piece = std::span(buffer).first(count);
        source.Read(offset, piece);
        take(piece);
        offset += count;
        size -= count;
    }
}

} // namespace mxovshare
