// Numbers of the ZIP format and the reading and writing of its little-endian fields.
#pragma once

#include "files/ByteSource.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace mxovshare::zip {

inline constexpr std::uint32_t kLocalSignature = 0x04034B50;
inline constexpr std::uint32_t kCentralSignature = 0x02014B50;
inline constexpr std::uint32_t kEndSignature = 0x06054B50;
inline constexpr std::uint32_t kZip64EndSignature = 0x06064B50;
inline constexpr std::uint32_t kZip64LocatorSignature = 0x07064B50;
inline constexpr std::uint32_t kDescriptorSignature = 0x08074B50;

inline constexpr std::size_t kLocalSize = 30;
inline constexpr std::size_t kCentralSize = 46;
inline constexpr std::size_t kEndSize = 22;
inline constexpr std::size_t kZip64EndSize = 56;
inline constexpr std::size_t kZip64LocatorSize = 20;

inline constexpr std::uint16_t kFlagEncrypted = 0x0001;
inline constexpr std::uint16_t kFlagDescriptor = 0x0008;
inline constexpr std::uint16_t kFlagPatch = 0x0020;
inline constexpr std::uint16_t kFlagStrongEncryption = 0x0040;
inline constexpr std::uint16_t kFlagUtf8 = 0x0800;
inline constexpr std::uint16_t kFlagMasked = 0x2000;

inline constexpr std::uint16_t kMethodStored = 0;
inline constexpr std::uint16_t kMethodDeflated = 8;

inline constexpr std::uint16_t kExtraZip64 = 0x0001;
inline constexpr std::uint16_t kExtraNtfs = 0x000A;
inline constexpr std::uint16_t kExtraTimestamp = 0x5455;

inline constexpr std::uint16_t kVersionPlain = 20;
inline constexpr std::uint16_t kVersionZip64 = 45;

/// A 16-bit or 32-bit field that is full refers to the ZIP64 field for its value.
inline constexpr std::uint16_t kFull16 = 0xFFFF;
inline constexpr std::uint32_t kFull32 = 0xFFFFFFFF;

/// Takes fields off the front of bytes that are known to be long enough.
class FieldReader {
public:
    explicit FieldReader(Bytes bytes) : m_bytes(bytes) {}

    std::uint16_t U16() { return static_cast<std::uint16_t>(Take(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Take(4)); }
    std::uint64_t U64() { return Take(8); }
    std::uint8_t U8() { return static_cast<std::uint8_t>(Take(1)); }
    void Skip(std::size_t count) { m_bytes = m_bytes.subspan(count); }
    Bytes Next(std::size_t count) {
        const Bytes next = m_bytes.first(count);
        Skip(count);
        return next;
    }
    std::size_t Left() const { return m_bytes.size(); }

private:
    std::uint64_t Take(std::size_t count) {
        std::uint64_t value = 0;
        for (std::size_t i = count; i-- > 0;) {
            value = value << 8 | m_bytes[i];
        }
        Skip(count);
        return value;
    }

    Bytes m_bytes;
};

/// Appends fields to bytes.
class FieldWriter {
public:
    explicit FieldWriter(std::vector<std::uint8_t>& bytes) : m_bytes(bytes) {}

    FieldWriter& U8(std::uint8_t value) { return Put(value, 1); }
    FieldWriter& U16(std::uint64_t value) { return Put(value, 2); }
    FieldWriter& U32(std::uint64_t value) { return Put(value, 4); }
    FieldWriter& U64(std::uint64_t value) { return Put(value, 8); }
    FieldWriter& Text(std::string_view text) {
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
        return *this;
    }

private:
    FieldWriter& Put(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) {
            m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
        return *this;
    }

    std::vector<std::uint8_t>& m_bytes;
};

} // namespace mxovshare::zip
