// Many small pieces of a source, read together.
#pragma once

#include "files/ByteSource.h"

#include <vector>

namespace mxovshare {

/// A view of a source for code that reads many small neighbouring pieces.
class ByteWindow {
public:
    /// `ahead` bytes are read at once: many for neighbours, few for pieces that lie apart.
    explicit ByteWindow(const ByteSource& source, std::size_t ahead) : m_source(source), m_ahead(ahead) {}

    /// `size` bytes at `offset`, valid until the next call. Throws PackageError when they reach past the end.
    Bytes View(std::uint64_t offset, std::size_t size);

private:
    const ByteSource& m_source;
    std::size_t m_ahead;
    std::vector<std::uint8_t> m_buffer;
    std::uint64_t m_offset = 0;
};

} // namespace mxovshare
