// Unpacks a package on a thread of its own, so that the window stays alive.
#pragma once

#include "session/PackageSession.h"
#include "session/WorkProgress.h"

#include <thread>

namespace viewer {

class UnpackTask : public WorkProgress {
public:
    /// Starts to unpack into the session's folder; posts `message` to `notify` at the end, however it ends.
    UnpackTask(std::unique_ptr<PackageSession> session, HWND notify, UINT message);

    /// Cancels what is not finished and waits for its end.
    ~UnpackTask() override;
    UnpackTask(const UnpackTask&) = delete;
    UnpackTask& operator=(const UnpackTask&) = delete;

    [[nodiscard]] const std::wstring& PackageFile() const { return m_session->PackageFile(); }

    /// Waits for the end and returns the result and the session. Called once.
    std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> Finish();

private:
    void Run(HWND notify, UINT message) noexcept;

    std::unique_ptr<PackageSession> m_session;
    mxovshare::PackageResult m_result;
    std::thread m_thread;
};

} // namespace viewer
