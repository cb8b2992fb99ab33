#include "package/FilePieces.h"

#include "package/Deflate.h"

#include <algorithm>

#include <zlib.h>

namespace mxovshare {

std::vector<std::uint8_t> FilePiece::Read(std::size_t before) const {
    const auto front = static_cast<std::size_t>(std::min<std::uint64_t>(before, offset));
    std::vector<std::uint8_t> bytes(front + size);
    file->Read(offset - front, bytes);
    return bytes;
}

std::uint32_t FilePiece::Checksum() const {
    // Small enough for the processor's cache, and for memory that need not come from the system.
    constexpr std::size_t kBuffer = std::size_t{128} << 10;
    std::vector<std::uint8_t> buffer(std::min(kBuffer, size));
    uLong crc = crc32_z(0, nullptr, 0);
    for (std::size_t done = 0; done < size;) {
        const std::span<std::uint8_t> part = std::span(buffer).first(std::min(buffer.size(), size - done));
        file->Read(offset + done, part);
        crc = crc32_z(crc, part.data(), part.size());
        done += part.size();
    }
    return static_cast<std::uint32_t>(crc);
}

void FilePieces::Open(const std::wstring& path) {
    m_file = std::make_shared<DiskSource>(path);
    m_offset = 0;
}

FilePiece FilePieces::Next() {
    FilePiece piece;
    piece.file = m_file;
    piece.offset = m_offset;
    piece.size = static_cast<std::size_t>(std::min<std::uint64_t>(kDeflatePiece, m_file->Size() - m_offset));
    m_offset += piece.size;
    if (piece.IsLast())
        m_file.reset();
    return piece;
}

} // namespace mxovshare
