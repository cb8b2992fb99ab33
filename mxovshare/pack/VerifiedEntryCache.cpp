#include "pack/VerifiedEntryCache.h"

#include "zip/ZipFormat.h"

namespace mxovshare {

VerifiedEntryCache& VerifiedEntryCache::Instance() {
    static VerifiedEntryCache data;
    return data;
}

void VerifiedEntryCache::Add(const ZipEntry& entry, std::uint32_t packedChecksum) {
    // Else the data is the content itself.
    if (entry.method != zip::kMethodDeflated) {
        return;
    }
    const std::lock_guard guard(m_mutex);
    if (m_verified.size() == kMaxEntries) {
        m_verified.clear();
    }
    m_verified.insert_or_assign(KeyOf(entry), packedChecksum);
}

bool VerifiedEntryCache::Contains(const ZipEntry& entry, std::uint32_t packedChecksum) const {
    if (entry.method == zip::kMethodStored) {
        return packedChecksum == entry.crc32;
    }
    const std::lock_guard guard(m_mutex);
    const auto found = m_verified.find(KeyOf(entry));
    return found != m_verified.end() && found->second == packedChecksum;
}

void VerifiedEntryCache::Clear() {
    const std::lock_guard guard(m_mutex);
    m_verified.clear();
}

} // namespace mxovshare
