#include "pack/VerifiedEntryCache.h"

#include "zip/Checksum.h"
#include "zip/ZipFormat.h"

namespace mxovshare {

VerifiedEntryCache& VerifiedEntryCache::Instance() {
    static VerifiedEntryCache cache;
    return cache;
}

void VerifiedEntryCache::Add(const ZipEntry& entry, std::uint32_t packedChecksum) {
    if (entry.method != zip::kMethodDeflated) {
        return; // stored data is the content itself
    }
    const std::lock_guard guard(m_mutex);
    if (m_verified.size() == kMaxEntries) {
        m_verified.clear();
    }
    m_verified.insert_or_assign(KeyOf(entry), packedChecksum);
}

std::optional<std::uint32_t> VerifiedEntryCache::PackedChecksum(const ZipEntry& entry) const {
    if (entry.method == zip::kMethodStored) {
        return entry.crc32;
    }
    const std::lock_guard guard(m_mutex);
    const auto found = m_verified.find(KeyOf(entry));
    return found != m_verified.end() ? std::optional(found->second) : std::nullopt;
}

bool VerifiedEntryCache::IsVerified(const ByteSource& source, const ZipEntry& entry,
                                    const std::function<void(Bytes)>& onPiece) const {
    const auto known = PackedChecksum(entry);
    if (!known) {
        return false;
    }
    std::uint32_t checksum = 0;
    ReadPieces(source, entry.dataOffset, entry.packedSize, [&](Bytes piece) {
        onPiece(piece);
        checksum = Checksum(checksum, piece);
    });
    return checksum == *known;
}

void VerifiedEntryCache::Clear() {
    const std::lock_guard guard(m_mutex);
    m_verified.clear();
}

} // namespace mxovshare
