// The files of a folder cut into pieces that can be worked on independently of each other.
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
    /// The piece's bytes behind those of the `before` bytes in front of it, as far as there are so many.
    std::vector<std::uint8_t> Read(std::size_t before) const;
};

/// Opens one file after the other and cuts it.
class FilePieces {
public:
    /// True while the file last opened is not cut to its end.
    bool IsOpen() const { return m_file != nullptr; }
    /// Opens a file; throws FileFailure when it cannot be.
    void Open(const std::wstring& path);
    /// The next piece of the open file, of kDeflatePiece bytes unless it is the last; an empty file is one
    /// piece.
    FilePiece Next();

private:
    std::shared_ptr<const DiskSource> m_file;
    std::uint64_t m_offset = 0;
};

} // namespace mxovshare
