// Packed data that this process has unpacked and verified before.
#pragma once

#include "files/ByteSource.h"
#include "zip/ZipEntry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <tuple>

namespace mxovshare {

/// Remembers the checksums of packed data that unpacked to what its entry states. A copy of such data with
/// the same checksum is sound and need not be unpacked again. Thread-safe.
class VerifiedEntryCache {
public:
    /// The cache of this process.
    static VerifiedEntryCache& Instance();

    /// Adds an entry that was unpacked and verified.
    void Add(const ZipEntry& entry, std::uint32_t packedChecksum);

    /// The checksum that packed data of the entry must have; empty when it is unknown.
    std::optional<std::uint32_t> PackedChecksum(const ZipEntry& entry) const;

    /// Whether the packed data of `entry` in `source` has the checksum that it must have; false also when
    /// that is unknown. `onPiece` is called for each piece and may throw.
    bool IsVerified(const ByteSource& source, const ZipEntry& entry,
                    const std::function<void(Bytes)>& onPiece) const;

    void Clear();

    /// The cache is emptied when it is full, so memory stays bounded.
    static constexpr std::size_t kMaxEntries = 100'000;

private:
    // Size, size of the packed data, checksum of the content.
    using Key = std::tuple<std::uint64_t, std::uint64_t, std::uint32_t>;
    static Key KeyOf(const ZipEntry& entry) { return {entry.size, entry.packedSize, entry.crc32}; }

    mutable std::mutex m_mutex;
    std::map<Key, std::uint32_t> m_verified;
};

} // namespace mxovshare
