#include "session/PackageWatch.h"

#include "common/Handles.h"
#include "mxovpackage.h"
#include "package/PackageSummary.h"
#include "package/Paths.h"

#include <chrono>

namespace viewer {

namespace {

constexpr DWORD kQuietTime = 150;  // milliseconds without a change before a look
constexpr int kMostDelays = 10;    // then it looks although changes continue
constexpr DWORD kLookAgain = 2000; // milliseconds until a file is asked whose folder reports nothing

using UniqueNotification = common::UniqueOf<HANDLE, &FindCloseChangeNotification>;

// Signalled after a change in a folder; empty when the folder cannot be watched.
UniqueNotification WatchFolder(const std::wstring& folder, bool subfolders) {
    constexpr DWORD kChanges = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                               FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
    const HANDLE handle = FindFirstChangeNotificationW(folder.c_str(), subfolders, kChanges);
    return UniqueNotification(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace

// The part that the thread shares with the object, and outlives it when the thread has to be left to itself.
class PackageWatch::Worker {
public:
    Worker(const PackageSession& session, HWND notify, UINT message)
        : m_folder(session.Folder()), m_packageFile(session.PackageFile()),
          m_packageFolder(ParentFolder(m_packageFile)), m_notify(notify), m_message(message),
          m_knownStamp(session.Stamp()), m_entries(session.Entries()),
          m_wake(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

    void Run() {
        const UniqueNotification inFolder = WatchFolder(m_folder, true);
        UniqueNotification besidePackage = WatchFolder(m_packageFolder, false);
        do {
            Look();
            if (!besidePackage) {
                besidePackage = WatchFolder(m_packageFolder, false);
            }
        } while (WaitForChange(inFolder.get(), besidePackage.get()));
    }

    void Stop() {
        m_stopping = true;
        SetEvent(m_wake.get());
    }

    void Update(const PackageSession& session) {
        const std::lock_guard guard(m_lock);
        m_knownStamp = session.Stamp();
        m_entries = session.Entries();
        ++m_updates;
        m_state.reset(); // compared with what was recorded before
        SetEvent(m_wake.get());
    }

    std::optional<PackageState> Take() {
        const std::lock_guard guard(m_lock);
        return std::exchange(m_state, std::nullopt);
    }

private:
    void Look();
    bool WaitForChange(HANDLE inFolder, HANDLE besidePackage);
    bool WaitOnce(const std::vector<HANDLE>& handles, DWORD milliseconds);

    const std::wstring m_folder;
    const std::wstring m_packageFile;
    const std::wstring m_packageFolder;
    const HWND m_notify;
    const UINT m_message;
    std::mutex m_lock; // guards the next four
    std::wstring m_knownStamp;
    std::vector<mxovshare::PackageEntry> m_entries;
    unsigned m_updates = 0;
    std::optional<PackageState> m_state;
    std::wstring m_lastStamp;
    common::UniqueHandle m_wake;
    std::atomic<bool> m_stopping = false;
};

void PackageWatch::Worker::Look() {
    PackageState state;
    std::vector<mxovshare::PackageEntry> entries;
    unsigned updates = 0;
    {
        const std::lock_guard guard(m_lock);
        updates = m_updates;
        state.knownStamp = m_knownStamp;
        entries = m_entries;
    }
    state.stamp = mxovshare::StampOfPackageFile(m_packageFile);
    state.folderFound = !state.stamp.empty() || FolderExists(m_packageFolder);
    state.changes = FindChanges(m_folder, entries);
    if (!state.stamp.empty() && state.stamp != state.knownStamp) {
        state.savedBy = LastSaver(m_packageFile, m_folder + L"\\");
        state.savedAt = LastWriteOf(m_packageFile);
    }
    m_lastStamp = state.stamp;
    const std::lock_guard guard(m_lock);
    if (updates != m_updates) {
        return; // the next look is on its way
    }
    m_state = std::move(state);
    PostMessageW(m_notify, m_message, 0, 0);
}

// False when the watch is to end.
bool PackageWatch::Worker::WaitForChange(HANDLE inFolder, HANDLE besidePackage) {
    std::vector<HANDLE> handles{m_wake.get()};
    for (const HANDLE handle : {inFolder, besidePackage}) {
        if (handle) {
            handles.push_back(handle);
        }
    }
    // A folder that goes away as a whole reports nothing.
    while (!m_stopping && !WaitOnce(handles, kLookAgain)) {
        if (mxovshare::StampOfPackageFile(m_packageFile) != m_lastStamp) {
            break;
        }
    }
    for (int i = 0; i < kMostDelays && !m_stopping && WaitOnce(handles, kQuietTime); ++i) {
    }
    return !m_stopping;
}

// True when one of the handles was signalled within that time.
bool PackageWatch::Worker::WaitOnce(const std::vector<HANDLE>& handles, DWORD milliseconds) {
    const DWORD result =
        WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, milliseconds);
    const std::size_t index = result - WAIT_OBJECT_0;
    if (index >= handles.size()) {
        return false;
    }
    if (index > 0) {
        FindNextChangeNotification(handles[index]);
    }
    return true;
}

PackageWatch::PackageWatch(const PackageSession& session, HWND notify, UINT message)
    : m_worker(std::make_shared<Worker>(session, notify, message)),
      m_thread([worker = m_worker] { worker->Run(); }) {}

PackageWatch::~PackageWatch() {
    m_worker->Stop();
}

void PackageWatch::Update(const PackageSession& session) {
    m_worker->Update(session);
}

std::optional<PackageState> PackageWatch::Take() {
    return m_worker->Take();
}

} // namespace viewer
