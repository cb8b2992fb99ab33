#include "versions/VersionFolder.h"

#include "common/LongPath.h"
#include "package/Paths.h"
#include "versions/StoredFiles.h"

#include <algorithm>
#include <map>

namespace viewer {

namespace {

// FileNames of files by the contents that hold them.
using References = std::map<std::wstring, FileNames>;

References ReferencesOf(const std::vector<Version>& versions) {
    References references;
    for (const Version& version : versions) {
        for (const KeptFile& file : version.files) {
            references[file.contents].insert(file.name);
        }
    }
    return references;
}

// The identifier in the name of a file with this extension; empty for any other file.
std::wstring IdOf(const std::wstring& name, const std::wstring& extension) {
    const std::size_t length = name.size() - std::min(name.size(), extension.size());
    const std::wstring id = name.substr(0, length);
    return name.substr(length) == extension && IsVersionId(id) ? id : std::wstring();
}

void DeleteIn(const std::wstring& folder, const std::wstring& name) noexcept {
    try {
        DeleteFileW(common::LongPath(folder + L"\\" + name).c_str());
    } catch (...) {
        // Out of memory: the next sweep removes it.
        return;
    }
}

// Whether they are worth the writing of the others.
bool AreMany(std::uint64_t unused, std::uint64_t all) {
    constexpr std::uint64_t kPart = 4;
    return unused > 0 && unused >= all / kPart;
}

void RemoveUnused(const std::wstring& contents, const FileNames& used) {
    StoredFiles stored;
    if (!stored.Read(contents).ok) {
        return; // restoring from it reports the reason
    }
    const mxovshare::PackageChanges changes = stored.Without(used);
    if (AreMany(stored.PackedSize(changes.removed), stored.PackedSize())) {
        mxovshare::ChangePackage(contents, contents, changes);
    }
}

} // namespace

std::vector<std::wstring> VersionIds(const std::wstring& folder) {
    std::vector<std::wstring> ids;
    for (const FolderEntry& entry : EntriesOf(folder)) {
        if (std::wstring id = IdOf(entry.name, kListExtension); !id.empty()) {
            ids.push_back(std::move(id));
        }
    }
    std::ranges::sort(ids);
    return ids;
}

VersionList ReadVersions(const std::wstring& folder) {
    VersionList list;
    for (const std::wstring& id : VersionIds(folder)) {
        Version version;
        if (ReadVersion(folder, id, version)) {
            list.versions.push_back(std::move(version));
        } else {
            list.damaged.push_back(id);
        }
    }
    return list;
}

std::wstring ContentsPath(const std::wstring& folder, const std::wstring& id) {
    return folder + L"\\" + id + kContentsExtension;
}

void DropVersion(const std::wstring& folder, const std::wstring& id) noexcept {
    DeleteIn(folder, id + kListExtension);
}

void SweepVersions(const std::wstring& folder) {
    const References references = ReferencesOf(ReadVersions(folder).versions);
    for (const FolderEntry& entry : EntriesOf(folder)) {
        if (!IdOf(entry.name, kListExtension).empty()) {
            continue;
        }
        const auto used = references.find(IdOf(entry.name, kContentsExtension));
        if (used == references.end()) {
            DeleteIn(folder, entry.name);
        } else {
            RemoveUnused(folder + L"\\" + entry.name, used->second);
        }
    }
    RemoveDirectoryW(common::LongPath(folder).c_str()); // when it is empty
}

} // namespace viewer
