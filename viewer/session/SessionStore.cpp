#include "session/SessionStore.h"

#include "common/Handles.h"
#include "common/Paths.h"
#include "common/Policies.h"
#include "common/SystemError.h"
#include "package/Paths.h"
#include "session/SessionFile.h"
#include "texts/Texts.h"

#include <shlobj.h>

namespace viewer {

namespace {

constexpr int kMostSessions = 10000;
constexpr wchar_t kFolderName[] = L"MXOVViewer";

// Listed to the end, because a folder that is being listed cannot be removed.
std::vector<std::wstring> SessionFiles(const std::wstring& folder) {
    std::vector<std::wstring> paths;
    for (const FolderEntry& entry : EntriesOf(folder)) {
        if (entry.name.ends_with(SessionFile::kExtension)) {
            paths.push_back(folder + L"\\" + entry.name);
        }
    }
    return paths;
}

void RemoveFinished(const std::wstring& sessions) {
    for (const FolderEntry& entry : EntriesOf(sessions)) {
        const std::wstring path = sessions + L"\\" + entry.name;
        if (entry.isFolder && !FileExists(path + SessionFile::kExtension)) {
            RemoveFolder(path);
        }
    }
}

// Under Wine, trying to remove a folder that is not empty makes listing it fail for a moment.
void RemoveIfEmpty(const std::wstring& folder) {
    if (EntriesOf(folder).empty()) {
        RemoveDirectoryW(folder.c_str());
    }
}

bool MakeFolder(const std::wstring& folder) {
    return CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

// Whether a file could not be created because its folder is not there.
bool IsGone(DWORD reason) {
    return reason == ERROR_PATH_NOT_FOUND || reason == ERROR_FILE_NOT_FOUND;
}

// The folders with `first` before them, and in no other place.
std::vector<std::wstring> WithFirst(std::wstring first, std::vector<std::wstring> folders) {
    std::erase_if(folders,
                  [&first](const std::wstring& folder) { return common::IsSamePath(folder, first); });
    folders.insert(folders.begin(), std::move(first));
    return folders;
}

std::wstring TemporaryFolder() {
    wchar_t path[MAX_PATH + 1] = L"";
    GetTempPathW(ARRAYSIZE(path), path);
    return std::wstring(path) + kFolderName;
}

// Among the user's local application data.
std::wstring LocalFolder() {
    wchar_t* path = nullptr;
    const HRESULT found = SHGetKnownFolderPath(FOLDERID_LocalAppData, KF_FLAG_CREATE, nullptr, &path);
    const common::UniqueTaskString owned(path);
    return SUCCEEDED(found) ? std::wstring(path) + L"\\" + kFolderName : TemporaryFolder();
}

} // namespace

std::wstring SessionStore::UserFolder() {
    const std::wstring chosen = common::UnpackFolderPolicy();
    if (chosen.empty()) {
        return LocalFolder();
    }
    MakeFolders(chosen); // a folder that cannot be created is reported at the first package
    const bool isSeparated = chosen.ends_with(L'\\') || chosen.ends_with(L'/');
    return chosen + (isSeparated ? L"" : L"\\") + kFolderName;
}

std::vector<std::wstring> SessionStore::EarlierFolders() {
    return {LocalFolder(), TemporaryFolder()};
}

SessionStore::SessionStore(std::wstring folder, std::vector<std::wstring> earlier)
    : m_folders(WithFirst(std::move(folder), std::move(earlier))) {}

std::unique_ptr<PackageSession> SessionStore::Create(const std::wstring& packageFile, std::wstring& error) {
    const std::wstring& store = m_folders.front();
    for (int number = 1; number <= kMostSessions; ++number) {
        const std::wstring folder =
            store + L"\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number);
        if (GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES) {
            continue;
        }
        SessionFile file = MakeFolder(store) ? SessionFile::Create(folder, packageFile) : SessionFile();
        if (file) {
            return std::unique_ptr<PackageSession>(
                new PackageSession(*this, packageFile, folder, std::move(file)));
        }
        // Another viewer that removes the last session of the folder removes the folder too, perhaps at this
        // moment.
        const DWORD reason = GetLastError();
        if (reason != ERROR_FILE_EXISTS && !(IsGone(reason) && MakeFolder(store))) {
            error = Text(IDS_STORE_UNUSABLE, {store, common::SystemErrorText(reason)});
            return nullptr;
        }
    }
    error = Text(IDS_STORE_FULL, {store});
    return nullptr;
}

std::vector<std::unique_ptr<PackageSession>> SessionStore::TakeOver() noexcept {
    std::vector<std::unique_ptr<PackageSession>> sessions;
    try {
        for (const std::wstring& folder : m_folders) {
            TakeOverFrom(folder, sessions);
        }
    } catch (...) {
        // The next start retries.
        for (const auto& session : sessions) {
            session->Keep();
        }
        sessions.clear();
    }
    return sessions;
}

void SessionStore::TakeOverFrom(const std::wstring& folder,
                                std::vector<std::unique_ptr<PackageSession>>& sessions) {
    for (const std::wstring& path : SessionFiles(folder)) {
        SessionFile file = SessionFile::Open(path);
        if (!file) {
            continue; // of a running viewer
        }
        const SessionFile::Content content = file.Read();
        std::unique_ptr<PackageSession> session(new PackageSession(
            *this, content.packageFile, path.substr(0, path.rfind(L'.')), std::move(file)));
        session->m_stamp = content.stamp;
        if (content.isUnpacked && FolderExists(session->Folder())) {
            sessions.push_back(std::move(session));
        }
    }
}

void SessionStore::RemoveLeftovers() noexcept {
    RunInBackground([this] {
        for (const std::wstring& folder : m_folders) {
            RemoveFinished(folder);
            RemoveIfEmpty(folder);
        }
    });
}

void SessionStore::Remove(const std::wstring& folder) noexcept {
    RunInBackground([folder] {
        RemoveFolder(folder);
        RemoveIfEmpty(ParentFolder(folder));
    });
}

void SessionStore::WaitForRemovals() noexcept {
    const std::lock_guard guard(m_lock);
    for (std::future<void>& removal : m_removals) {
        removal.wait();
    }
    m_removals.clear();
}

template <class Work>
void SessionStore::RunInBackground(Work work) noexcept {
    try {
        const std::lock_guard guard(m_lock);
        std::erase_if(m_removals, [](const std::future<void>& removal) {
            return removal.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        });
        m_removals.push_back(std::async(std::launch::async, std::move(work)));
    } catch (...) {
        // What stays is removed at the next start.
        return;
    }
}

} // namespace viewer
