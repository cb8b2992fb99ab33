// Bytes at any place of a file or of memory, so that the container's code knows neither.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace mxovshare {

using Bytes = std::span<const std::uint8_t>;

class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t Size() const = 0;
    /// Fills `to` from `offset` on. Throws when that reaches past the end or fails.
    virtual void Read(std::uint64_t offset, std::span<std::uint8_t> to) const = 0;
};

class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// Writes at `offset`, over what is there or past the end. Throws when it fails. Some sinks say that
    /// several threads may do so.
    virtual void Write(std::uint64_t offset, Bytes data) = 0;
    /// Cuts what lies behind `size`.
    virtual void SetSize(std::uint64_t size) = 0;
};

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
