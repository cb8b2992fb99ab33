#include "ProvenData.h"

#include "ZipFormat.h"

namespace mxovshare {

ProvenData& ProvenData::Instance() {
    static ProvenData data;
    return data;
}

void ProvenData::Add(const ZipEntry& entry, std::uint32_t packedChecksum) {
    // Else the data is the content itself.
    if (entry.method != zip::kMethodDeflated) {
        return;
    }
    const std::lock_guard guard(m_mutex);
    if (m_proofs.size() == kMost) {
        m_proofs.clear();
    }
    m_proofs.insert_or_assign(KeyOf(entry), packedChecksum);
}

bool ProvenData::Has(const ZipEntry& entry, std::uint32_t packedChecksum) const {
    if (entry.method == zip::kMethodStored) {
        return packedChecksum == entry.crc32;
    }
    const std::lock_guard guard(m_mutex);
    const auto found = m_proofs.find(KeyOf(entry));
    return found != m_proofs.end() && found->second == packedChecksum;
}

void ProvenData::Forget() {
    const std::lock_guard guard(m_mutex);
    m_proofs.clear();
}

} // namespace mxovshare
