#include "versions/StoredFiles.h"

namespace viewer {

mxovshare::PackageResult StoredFiles::Read(const std::wstring& contents) {
    std::vector<mxovshare::PackageEntry> entries;
    mxovshare::PackageResult result = mxovshare::ListPackage(contents, entries);
    m_files.clear();
    for (mxovshare::PackageEntry& entry : entries) {
        if (!entry.isFolder) {
            std::wstring name = entry.name;
            m_files.emplace(std::move(name), std::move(entry));
        }
    }
    return result;
}

bool StoredFiles::Holds(const KeptFile& file) const {
    const auto found = m_files.find(file.name);
    return found != m_files.end() && found->second.size == file.size && found->second.crc32 == file.crc32;
}

mxovshare::PackageChanges StoredFiles::Without(const FileNames& names) const {
    mxovshare::PackageChanges changes;
    for (const auto& [name, entry] : m_files) {
        if (!names.contains(name)) {
            changes.removed.push_back(name);
        }
    }
    return changes;
}

std::uint64_t StoredFiles::PackedSize(const std::vector<std::wstring>& names) const {
    std::uint64_t size = 0;
    for (const std::wstring& name : names) {
        size += m_files.at(name).packedSize;
    }
    return size;
}

std::uint64_t StoredFiles::PackedSize() const {
    std::uint64_t size = 0;
    for (const auto& [name, entry] : m_files) {
        size += entry.packedSize;
    }
    return size;
}

} // namespace viewer
