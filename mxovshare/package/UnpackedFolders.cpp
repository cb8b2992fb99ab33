#include "package/UnpackedFolders.h"

#include "common/Paths.h"
#include "files/FolderPath.h"
#include "package/PackageErrors.h"
#include "package/PackageStamp.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <utility>

namespace mxovshare {

namespace {

struct UnpackedFolder {
    std::wstring folder;
    std::wstring file;
    std::wstring stamp;
    std::wstring remarks; // of the next save
    bool saveFailed = false;
};

// Packages are unpacked and saved on several threads.
std::mutex g_lock;
std::vector<UnpackedFolder> g_folders;

std::atomic<bool> g_unrecordedFailure = false; // of any folder

// The entry of a folder, or null; under the lock.
UnpackedFolder* Find(const std::wstring& folder) {
    const std::wstring path = FolderPath(folder);
    const auto found = std::ranges::find_if(
        g_folders, [&path](const UnpackedFolder& entry) { return common::IsSamePath(entry.folder, path); });
    return found != g_folders.end() ? &*found : nullptr;
}

UnpackedFolder& FindOrAdd(const std::wstring& folder) {
    if (UnpackedFolder* entry = Find(folder)) {
        return *entry;
    }
    g_folders.push_back({.folder = FolderPath(folder), .file = {}, .stamp = {}, .remarks = {}});
    return g_folders.back();
}

} // namespace

std::wstring RecordedStamp(const std::wstring& folder, const std::wstring& file) {
    const std::lock_guard guard(g_lock);
    const UnpackedFolder* entry = Find(folder);
    return entry != nullptr && common::IsSamePath(FolderPath(entry->file), FolderPath(file)) ? entry->stamp
                                                                                             : std::wstring();
}

void RecordFolder(const std::wstring& folder, const std::wstring& file, const std::wstring& stamp) {
    const std::lock_guard guard(g_lock);
    UnpackedFolder& entry = FindOrAdd(folder);
    entry.file = file;
    entry.stamp = stamp;
    entry.remarks.clear();
    entry.saveFailed = false;
}

std::wstring SaveRemarks(const std::wstring& folder) {
    const std::lock_guard guard(g_lock);
    const UnpackedFolder* entry = Find(folder);
    return entry != nullptr ? entry->remarks : std::wstring();
}

void RecordSave(const std::wstring& folder, const std::wstring& file, bool ok) noexcept {
    try {
        if (ok) {
            RecordFolder(folder, file, StampOfPackage(file));
            return;
        }
        const std::lock_guard guard(g_lock);
        FindOrAdd(folder).saveFailed = true;
    } catch (const std::bad_alloc&) {
        if (!ok) {
            g_unrecordedFailure = true;
        }
    }
}

std::wstring StampOfFolder(const std::wstring& folder) noexcept {
    std::wstring stamp;
    RunForResult(folder, [&] {
        const std::lock_guard guard(g_lock);
        if (const UnpackedFolder* entry = Find(folder)) {
            stamp = entry->stamp;
        }
    });
    return stamp;
}

void ResumeFolder(const std::wstring& folder, const std::wstring& file, const std::wstring& stamp) noexcept {
    RunForResult(file, [&] { RecordFolder(folder, file, stamp); });
}

void SetSaveRemarks(const std::wstring& folder, const std::wstring& remarks) noexcept {
    RunForResult(folder, [&] {
        const std::lock_guard guard(g_lock);
        FindOrAdd(folder).remarks = remarks;
    });
}

bool TakeSaveFailure(const std::wstring& folder) noexcept {
    bool failed = g_unrecordedFailure.exchange(false);
    RunForResult(folder, [&] {
        const std::lock_guard guard(g_lock);
        if (UnpackedFolder* entry = Find(folder)) {
            failed = std::exchange(entry->saveFailed, false) || failed;
        }
    });
    return failed;
}

} // namespace mxovshare
