// A file in memory.
#pragma once

#include "files/ByteSource.h"

#include <string>
#include <string_view>
#include <vector>

class MemoryFile : public mxovshare::ByteSource, public mxovshare::ByteSink {
public:
    MemoryFile() = default;
    explicit MemoryFile(std::string_view bytes) : m_bytes(bytes) {}

    const std::string& AllBytes() const { return m_bytes; }

    std::uint64_t Size() const override { return m_bytes.size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override;
    void Write(std::uint64_t offset, mxovshare::Bytes data) override;
    void SetSize(std::uint64_t size) override { m_bytes.resize(size); }

private:
    std::string m_bytes;
};
