// Bytes at any place of a file or of memory, so that the container's code knows neither.
#pragma once

#include <cstddef>
#include <cstdint>
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

class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// Writes at `offset`, over what is there or past the end. Throws when it fails. Some sinks say that
    /// several threads may do so.
    virtual void Write(std::uint64_t offset, Bytes data) = 0;
    /// Cuts what lies behind `size`.
    virtual void SetSize(std::uint64_t size) = 0;
};

} // namespace mxovshare
