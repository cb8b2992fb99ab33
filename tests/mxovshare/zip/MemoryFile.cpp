#include "MemoryFile.h"

#include <algorithm>
#include <stdexcept>

void MemoryFile::Read(std::uint64_t offset, std::span<std::uint8_t> to) const {
    if (offset > m_bytes.size() || to.size() > m_bytes.size() - offset) {
        throw std::logic_error("read past the end");
    }
    std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), to.size(), to.begin());
}

void MemoryFile::Write(std::uint64_t offset, mxovshare::Bytes data) {
    m_bytes.resize(std::max<std::size_t>(m_bytes.size(), offset + data.size()));
    std::copy(data.begin(), data.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}
