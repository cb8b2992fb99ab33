#include "session/FolderComparison.h"

#include "common/InformationFile.h"
#include "common/Paths.h"
#include "package/Paths.h"

#include <algorithm>
#include <map>

namespace viewer {

namespace {

using mxovshare::PackageEntry;

// What can be listed: a folder that cannot counts as empty.
std::vector<PackageEntry> FilesBelow(const std::wstring& folder) {
    std::vector<PackageEntry> files;
    mxovshare::ListFolder(folder, files);
    return files;
}

std::wstring NameOf(const PackageEntry& file) {
    return FileName(file.name);
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.size() - FileName(path).size());
}

// Orders names as the file system compares them.
struct NameLess {
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

bool HasContent(const std::wstring& folder, const PackageEntry& file, const PackageEntry& entry) {
    std::uint32_t checksum = 0;
    return file.size == entry.size && mxovshare::ReadChecksum(folder + L"\\" + file.name, checksum).ok &&
           checksum == entry.crc32;
}

bool HasContentOrTime(const std::wstring& folder, const PackageEntry& file, const PackageEntry& entry) {
    return (file.size == entry.size && CompareFileTime(&file.modified, &entry.modified) == 0) ||
           HasContent(folder, file, entry);
}

using Sameness = bool (*)(const std::wstring&, const PackageEntry&, const PackageEntry&);

std::vector<FileChange> Compare(const std::wstring& folder, const std::vector<PackageEntry>& entries,
                                Sameness isSame) {
    std::map<std::wstring, const PackageEntry*, NameLess> missing;
    for (const PackageEntry& entry : entries) {
        if (!entry.isFolder && !mxovshare::IsOfficeLock(FileName(entry.name))) {
            missing.emplace(entry.name, &entry);
        }
    }
    std::vector<FileChange> changes;
    for (const PackageEntry& file : FilesBelow(folder)) {
        if (mxovshare::IsOfficeLock(NameOf(file))) {
            continue;
        }
        const auto found = missing.find(file.name);
        if (found == missing.end()) {
            changes.push_back({file.name, FileChangeKind::Added});
            continue;
        }
        if (!isSame(folder, file, *found->second)) {
            changes.push_back({file.name, FileChangeKind::Changed});
        }
        missing.erase(found);
    }
    for (const auto& [name, entry] : missing) {
        changes.push_back({name, FileChangeKind::Removed});
    }
    std::ranges::sort(changes, NameLess(), &FileChange::name);
    return changes;
}

bool IsInformationFile(const FileChange& change) {
    return common::IsSamePath(FileName(change.name), common::kInformationFile);
}

} // namespace

bool IsControlChange(const FileChange& change) {
    constexpr std::wstring_view kCopies = L"ReferanceFiles\\";
    return IsInformationFile(change) || (change.kind != FileChangeKind::Changed &&
                                         common::IsSamePath(change.name.substr(0, kCopies.size()), kCopies));
}

std::vector<FileChange> FindChanges(const std::wstring& folder, const std::vector<PackageEntry>& entries) {
    return Compare(folder, entries, HasContentOrTime);
}

bool DiffersFromPackage(const std::wstring& folder, const std::wstring& packageFile) {
    std::vector<PackageEntry> entries;
    return !mxovshare::ListPackage(packageFile, entries).ok || !Compare(folder, entries, HasContent).empty();
}

std::vector<std::wstring> FindOpenDocuments(const std::wstring& folder) {
    std::vector<PackageEntry> files = FilesBelow(folder);
    const auto firstLock = std::partition(files.begin(), files.end(), [](const PackageEntry& file) {
        return !mxovshare::IsOfficeLock(NameOf(file));
    });
    std::vector<std::wstring> open;
    for (auto lock = firstLock; lock != files.end(); ++lock) {
        for (auto file = files.begin(); file != firstLock; ++file) {
            if (FolderOf(file->name) == FolderOf(lock->name) &&
                mxovshare::IsOfficeLockOf(NameOf(*lock), NameOf(*file))) {
                open.push_back(file->name);
            }
        }
    }
    return open;
}

FILETIME LastWriteBelow(const std::wstring& folder) {
    FILETIME last = {};
    for (const PackageEntry& file : FilesBelow(folder)) {
        if (CompareFileTime(&file.modified, &last) > 0) {
            last = file.modified;
        }
    }
    return last;
}

} // namespace viewer
