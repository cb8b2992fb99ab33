// Watches an open package for what other programs do to its folder and its file.
#pragma once

#include "common/BackgroundThread.h"
#include "session/PackageSession.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

/// What the file system shows of an open package.
struct PackageState {
    std::vector<FileChange> changes; ///< of the folder since it was unpacked or saved here
    std::wstring stamp;              ///< of the package file; empty when it cannot be found
    std::wstring knownStamp;         ///< that the session had recorded when the comparison began
    bool folderFound = true;         ///< whether the folder of the package file can be reached
    std::wstring savedBy;  ///< who saved the package file last, when that was not done here; may be empty
    FILETIME savedAt = {}; ///< last write of the package file, UTC
};

class PackageWatch {
public:
    /// Watches the folder and the package file of a session. After the first look and after each change posts
    /// `message` to `notify`.
    PackageWatch(const PackageSession& session, HWND notify, UINT message);

    /// Ends the watch. A thread that is held up by a file server which does not answer is left to itself.
    ~PackageWatch();
    PackageWatch(const PackageWatch&) = delete;
    PackageWatch& operator=(const PackageWatch&) = delete;

    /// Compares with what the session records now, and forgets the state of before. Called after each save,
    /// and when the viewer itself has changed the folder.
    void Update(const PackageSession& session);

    /// The latest state, once; nothing when there is none since the last call.
    [[nodiscard]] std::optional<PackageState> Take();

private:
    class Worker;

    std::shared_ptr<Worker> m_worker;
    common::BackgroundThread m_thread;
};

} // namespace viewer
