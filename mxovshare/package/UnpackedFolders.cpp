#include "package/UnpackedFolders.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "files/FolderPath.h"
#include "host/MessageBoxes.h"
#include "pack/ProgressMeter.h"
#include "package/PackageErrors.h"

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

// The stamp of a package file that the folder was unpacked from or saved to; empty for another file.
std::wstring RecordedStamp(const std::wstring& folder, const std::wstring& file) {
    const std::lock_guard guard(g_lock);
    const UnpackedFolder* entry = Find(folder);
    return entry != nullptr && common::IsSamePath(FolderPath(entry->file), FolderPath(file)) ? entry->stamp
                                                                                             : std::wstring();
}

} // namespace

std::wstring StampOfPackage(const std::wstring& file) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const common::UniqueHandle handle =
        common::OwnFile(CreateFileW(common::LongPath(file).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION about = {};
    if (!handle || GetFileInformationByHandle(handle.get(), &about) == FALSE) {
        return {};
    }
    std::wstring stamp;
    for (const DWORD part : {about.nFileSizeHigh, about.nFileSizeLow, about.ftLastWriteTime.dwHighDateTime,
                             about.ftLastWriteTime.dwLowDateTime, about.dwVolumeSerialNumber,
                             about.nFileIndexHigh, about.nFileIndexLow}) {
        stamp += (stamp.empty() ? L"" : L"-") + std::to_wstring(part);
    }
    return stamp;
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

ReplacementGuard::ReplacementGuard(const std::wstring& folder, const std::wstring& file)
    : m_file(file), m_expected(RecordedStamp(folder, file)) {
    if (m_expected.empty()) {
        m_expected = StampOfPackage(file);
    }
}

void ReplacementGuard::Confirm() {
    std::wstring now = StampOfPackage(m_file);
    if (!now.empty() && now != m_expected &&
        !AskYesNo(L"The package \"" + m_file +
                  L"\" was changed by somebody else since it was opened here.\n\nDo you want to replace it "
                  L"with your own state? What the other one changed is then lost.")) {
        throw Cancelled();
    }
    m_expected = std::move(now);
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
