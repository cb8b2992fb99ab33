// Unpacks a package on a thread of its own, so that the window stays alive.
#pragma once

#include "session/PackageSession.h"
#include "session/WorkProgress.h"

#include <mutex>
#include <thread>

namespace viewer {

class UnpackTask : public WorkProgress {
public:
    /// Starts to unpack into the session's folder.
    explicit UnpackTask(std::unique_ptr<PackageSession> session);

    /// Cancels what is not finished and waits for its end.
    ~UnpackTask() override;
    UnpackTask(const UnpackTask&) = delete;
    UnpackTask& operator=(const UnpackTask&) = delete;

    [[nodiscard]] const std::wstring& PackageFile() const { return m_session->PackageFile(); }

    /// Posts `message` to `window` at the end, however it ends; at once when it has ended. Called once.
    void NotifyAtEnd(HWND window, UINT message);

    /// Waits for the end and returns the result and the session. Called once.
    std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> Finish();

private:
    void Run() noexcept;

    std::unique_ptr<PackageSession> m_session;
    mxovshare::PackageResult m_result;
    std::mutex m_lock; // guards the next three
    HWND m_window = nullptr;
    UINT m_message = 0;
    bool m_hasEnded = false;
    std::thread m_thread;
};

} // namespace viewer
