// Unpacks a package on a thread of its own, so that the window stays alive.
#pragma once

#include "mxovpackage.h"
#include "session/PackageSession.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace viewer {

class UnpackTask : private mxovshare::PackageProgress {
public:
    struct Progress {
        std::wstring name; ///< what is in work
        std::uint64_t done = 0;
        std::uint64_t total = 0;
    };
    /// Starts to unpack into the session's folder; posts `message` to `notify` at the end, however it ends.
    UnpackTask(std::unique_ptr<PackageSession> session, HWND notify, UINT message);

    /// Cancels what is not finished and waits for its end.
    ~UnpackTask() override;
    UnpackTask(const UnpackTask&) = delete;
    UnpackTask& operator=(const UnpackTask&) = delete;

    void Cancel() noexcept { m_cancel = true; }
    [[nodiscard]] const std::wstring& PackageFile() const { return m_session->PackageFile(); }
    [[nodiscard]] Progress Current() const;

    /// Waits for the end and returns the result and the session. Called once.
    std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> Finish();

private:
    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override;
    void Run(HWND notify, UINT message) noexcept;

    std::unique_ptr<PackageSession> m_session;
    mxovshare::PackageResult m_result;
    mutable std::mutex m_lock; // guards m_progress
    Progress m_progress;
    std::atomic<bool> m_cancel = false;
    std::thread m_thread;
};

} // namespace viewer
