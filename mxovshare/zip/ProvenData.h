// Packed data that this process has unpacked once and found sound.
#pragma once

#include "ZipEntry.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <tuple>

namespace mxovshare {

/// Remembers the checksum of packed data that was seen to unpack to what its entry states. Data with that
/// checksum need not be unpacked again to know that it is sound, wherever it was copied to. For any thread.
class ProvenData {
public:
    /// The one of this process.
    static ProvenData& Instance();

    /// Notes what unpacking an entry's data has proven.
    void Add(const ZipEntry& entry, std::uint32_t packedChecksum);

    /// Whether an entry whose packed data has this checksum is known to be sound.
    bool Has(const ZipEntry& entry, std::uint32_t packedChecksum) const;

    void Forget();

    /// It remembers no more than these, so memory stays bounded.
    static constexpr std::size_t kMost = 100'000;

private:
    // Size, size of the packed data, checksum of the content.
    using Key = std::tuple<std::uint64_t, std::uint64_t, std::uint32_t>;
    static Key KeyOf(const ZipEntry& entry) { return {entry.size, entry.packedSize, entry.crc32}; }

    mutable std::mutex m_mutex;
    std::map<Key, std::uint32_t> m_proofs;
};

} // namespace mxovshare
