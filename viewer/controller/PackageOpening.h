// Unpacking a package in the background, with a progress window when it takes long.
#pragma once

#include "prompts/ProgressDialog.h"
#include "session/UnpackTask.h"

#include <memory>
#include <string>
#include <utility>

namespace viewer {

class PackageOpening {
public:
    /// Of the window that `Start` was passed.
    static constexpr UINT_PTR kTimer = 1;

    /// Begins to unpack into the session's folder, unseen.
    void Prepare(std::unique_ptr<PackageSession> session);

    /// Whether the unpacking of this package has begun unseen.
    [[nodiscard]] bool IsPrepared(const std::wstring& packageFile) const;

    /// Shows what was prepared. The timer of `frame` drives the progress window, and `message` is posted to
    /// it at the end.
    void Start(HWND frame, UINT message);

    [[nodiscard]] bool IsRunning() const { return m_task != nullptr; }

    /// Ends the unpacking that is under way, if any, seen or not.
    void Cancel();

    /// Shows the progress. Called for each message of the timer.
    void OnTimer();

    /// The result and the session of what was started, after its message. Called while it is running.
    [[nodiscard]] std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> Finish();

    /// Lets the progress window handle its keyboard messages; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const;

private:
    void CloseProgress();

    HWND m_frame = nullptr;
    std::unique_ptr<UnpackTask> m_prepared;
    std::unique_ptr<UnpackTask> m_task;
    std::unique_ptr<ProgressDialog> m_progress;
};

} // namespace viewer
