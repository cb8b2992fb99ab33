// Files cut into pieces that can be packed independently of each other.
#pragma once

#include "files/DiskFile.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace mxovshare {

struct FilePiece {
    std::shared_ptr<const DiskSource> file; ///< open as long as one of its pieces is
    std::uint64_t offset = 0;
    std::size_t size = 0;

    bool IsLast() const { return offset + size == file->Size(); }
    /// Up to `before` bytes in front of the piece, followed by those of the piece.
    std::vector<std::uint8_t> Read(std::size_t before) const;
};

/// Opens files one after another and cuts them.
class FilePieces {
public:
    /// Whether the file last opened has more pieces.
    bool IsOpen() const { return m_file != nullptr; }
    /// Opens a file; throws FileFailure when that fails.
    void Open(const std::wstring& path);
    /// Opens a file that other programs may write, a moment later if one has just done so. Throws FileChanged
    /// when another program is writing it.
    void OpenSettled(const std::wstring& path);
    /// The next piece of the open file: kDeflatePiece bytes, fewer at its end; an empty file is one piece.
    FilePiece Next();

private:
    std::shared_ptr<const DiskSource> m_file;
    std::uint64_t m_offset = 0;
};

} // namespace mxovshare
