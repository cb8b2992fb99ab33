#include "versions/VersionStore.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "package/Paths.h"
#include "session/SessionStore.h"
#include "versions/KeepVersion.h"
#include "versions/RestoreVersion.h"

#include <algorithm>
#include <utility>

namespace viewer {

namespace {

constexpr wchar_t kStoreName[] = L"MXOVVersions";
constexpr wchar_t kMutexName[] = L"Local\\MXOVVersions";
constexpr wchar_t kPackageExtension[] = L".versions";

// Keeps other viewers of this user, and other threads, out of the store while the object lives.
class StoreLock {
public:
    StoreLock() : m_mutex(CreateMutexW(nullptr, FALSE, kMutexName)) {
        WaitForSingleObject(m_mutex.get(), INFINITE);
    }
    ~StoreLock() { ReleaseMutex(m_mutex.get()); }
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;

private:
    common::UniqueHandle m_mutex;
};

// Of the letters of a path, in capitals: names of packages in one folder lead to different numbers.
std::uint64_t NumberOfPath(std::wstring path) {
    CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
    std::uint64_t number = 14695981039346656037U;
    for (const wchar_t unit : path) {
        number = (number ^ unit) * 1099511628211U;
    }
    return number;
}

// For people who look into the store.
std::wstring ShortStem(const std::wstring& path) {
    constexpr std::size_t kLongest = 40;
    std::wstring stem = FileStem(path).substr(0, kLongest);
    if (!stem.empty() && IS_HIGH_SURROGATE(stem.back())) {
        stem.pop_back();
    }
    return stem;
}

std::uint64_t SizeOf(const std::wstring& folder) {
    std::uint64_t size = 0;
    WIN32_FIND_DATAW found = {};
    const common::UniqueSearch search =
        common::OwnSearch(FindFirstFileW(common::LongPath(folder + L"\\*").c_str(), &found));
    for (bool more = bool(search); more; more = FindNextFileW(search.get(), &found)) {
        size += std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
    }
    return size;
}

void DropSurplus(const std::wstring& folder, std::size_t most) {
    for (const std::wstring& id : SurplusVersions(VersionIds(folder), most)) {
        DropVersion(folder, id);
    }
    SweepVersions(folder);
}

} // namespace

std::wstring VersionStore::UserFolder() {
    return ParentFolder(SessionStore::UserFolder()) + L"\\" + kStoreName;
}

std::wstring VersionStore::FolderOf(const std::wstring& packageFile) const {
    return m_folder + L"\\" + ShortStem(packageFile) + L"-" + std::to_wstring(NumberOfPath(packageFile)) +
           kPackageExtension;
}

mxovshare::PackageResult VersionStore::Keep(const std::wstring& packageFile, const VersionLimits& limits,
                                            mxovshare::PackageProgress* progress) const {
    const StoreLock lock;
    const std::wstring folder = FolderOf(packageFile);
    mxovshare::PackageResult result = KeepVersion(folder, packageFile, limits.bytes, progress);
    DropSurplus(folder, limits.versions);
    KeepWithin(limits.bytes);
    return result;
}

VersionList VersionStore::Read(const std::wstring& packageFile) const {
    const StoreLock lock;
    return ReadVersions(FolderOf(packageFile));
}

mxovshare::PackageResult VersionStore::Restore(const std::wstring& packageFile,
                                               const std::vector<KeptFile>& files, const std::wstring& target,
                                               mxovshare::PackageProgress* progress) const {
    const StoreLock lock;
    return RestoreFiles(FolderOf(packageFile), files, target, progress);
}

// Drops the oldest versions of all packages.
void VersionStore::KeepWithin(std::uint64_t bytes) const {
    std::uint64_t size = 0;
    std::vector<std::pair<std::wstring, std::wstring>> versions; // identifier and folder
    for (const std::wstring& folder : Folders()) {
        size += SizeOf(folder);
        for (std::wstring& id : VersionIds(folder)) {
            versions.emplace_back(std::move(id), folder);
        }
    }
    std::ranges::sort(versions);
    for (const auto& [id, folder] : versions) {
        if (size <= bytes) {
            return;
        }
        const std::uint64_t before = SizeOf(folder);
        DropVersion(folder, id);
        SweepVersions(folder);
        size -= before - std::min(before, SizeOf(folder));
    }
}

std::vector<std::wstring> VersionStore::Folders() const {
    std::vector<std::wstring> folders;
    for (const FolderEntry& entry : EntriesOf(m_folder)) {
        if (entry.isFolder && !entry.isLink && entry.name.ends_with(kPackageExtension)) {
            folders.push_back(m_folder + L"\\" + entry.name);
        }
    }
    return folders;
}

} // namespace viewer
