#include "ByteSource.h"

#include <algorithm>
#include <memory>

namespace mxovshare {

void ReadPieces(const ByteSource& source, std::uint64_t offset, std::uint64_t size,
                const std::function<void(Bytes)>& take) {
    constexpr std::uint64_t kPiece = std::uint64_t{256} << 10;
    const auto length = static_cast<std::size_t>(std::min(kPiece, size));
    const auto buffer = std::make_unique_for_overwrite<std::uint8_t[]>(length);
    while (size > 0) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size, length));
        const std::span<std::uint8_t> piece = {buffer.get(), count};
        source.Read(offset, piece);
        take(piece);
        offset += count;
        size -= count;
    }
}

} // namespace mxovshare
