#include "ByteWindow.h"

#include "PackageError.h"

#include <algorithm>

namespace mxovshare {

Bytes ByteWindow::View(std::uint64_t offset, std::size_t size) {
    const std::uint64_t end = m_source.Size();
    if (offset > end || size > end - offset) {
        throw PackageError("the file is cut off");
    }
    if (offset < m_offset || offset + size > m_offset + m_buffer.size()) {
        m_buffer.resize(std::min(std::max<std::uint64_t>(size, m_ahead), end - offset));
        m_offset = offset;
        m_source.Read(offset, m_buffer);
    }
    return Bytes(m_buffer).subspan(offset - m_offset, size);
}

} // namespace mxovshare
