#include "pack/FilePieces.h"

#include "files/FileFailure.h"
#include "zip/Deflate.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace mxovshare {

std::vector<std::uint8_t> FilePiece::Read(std::size_t before) const {
    const auto front = static_cast<std::size_t>(std::min<std::uint64_t>(before, offset));
    std::vector<std::uint8_t> bytes(front + size);
    file->Read(offset - front, bytes);
    return bytes;
}

void FilePieces::Open(const std::wstring& path) {
    m_file = std::make_shared<DiskSource>(path);
    m_offset = 0;
}

void FilePieces::OpenSettled(const std::wstring& path) {
    constexpr std::chrono::milliseconds kPause(25);
    Open(path);
    if (!m_file->IsSettled()) {
        std::this_thread::sleep_for(kPause);
        Open(path);
    }
    if (!m_file->IsSettled()) {
        throw FileChanged(path);
    }
}

FilePiece FilePieces::Next() {
    FilePiece piece;
    piece.file = m_file;
    piece.offset = m_offset;
    piece.size = static_cast<std::size_t>(std::min<std::uint64_t>(kDeflatePiece, m_file->Size() - m_offset));
    m_offset += piece.size;
    if (piece.IsLast()) {
        m_file.reset();
    }
    return piece;
}

} // namespace mxovshare
