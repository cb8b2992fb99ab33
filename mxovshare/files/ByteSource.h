// Random access to the bytes of a file or of memory, so that the container's code depends on neither.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace mxovshare {

using Bytes = std::span<const std::uint8_t>;

class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t Size() const = 0;
    /// Fills `to` from `offset` on. Throws when that reaches past the end or fails.
    virtual void Read(std::uint64_t offset, std::span<std::uint8_t> to) const = 0;
};

/// Reads `size` bytes from `offset` on and passes them to `take` in pieces that fit the processor's cache.
void ReadPieces(const ByteSource& source, std::uint64_t offset, std::uint64_t size,
                const std::function<void(Bytes)>& take);

class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// Writes at `offset`, over existing bytes or past the end. Throws when it fails. Thread-safe only where
    /// a sink reports it.
    virtual void Write(std::uint64_t offset, Bytes data) = 0;
    /// Truncates to `size` bytes.
    virtual void SetSize(std::uint64_t size) = 0;
};

} // namespace mxovshare
