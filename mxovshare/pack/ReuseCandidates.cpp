#include "pack/ReuseCandidates.h"

#include "zip/ZipWriter.h"

#include <map>
#include <string_view>

namespace mxovshare {

std::vector<const ZipEntry*> FindReuseCandidates(const std::vector<FolderItem>& items,
                                                 const std::vector<ZipEntry>& entries) {
    // Not a hash table: a forged package could choose names that collide.
    std::map<std::string_view, const ZipEntry*> byName;
    for (const ZipEntry& entry : entries) {
        if (ZipWriter::CanCopyPacked(entry)) {
            byName.emplace(entry.name, &entry);
        }
    }
    std::vector<const ZipEntry*> candidates;
    candidates.reserve(items.size());
    for (const FolderItem& item : items) {
        const auto found = byName.find(item.item.name);
        const bool same = found != byName.end() && !item.isFolder && found->second->size == item.size &&
                          found->second->modified.fileTime == item.item.modified.fileTime;
        candidates.push_back(same ? found->second : nullptr);
    }
    return candidates;
}

} // namespace mxovshare
