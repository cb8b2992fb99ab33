#include "session/UnpackTask.h"

namespace viewer {

UnpackTask::UnpackTask(std::unique_ptr<PackageSession> session, HWND notify, UINT message)
    : m_session(std::move(session)), m_thread([this, notify, message] { Run(notify, message); }) {}

UnpackTask::~UnpackTask() {
    Cancel();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

UnpackTask::Progress UnpackTask::Current() const {
    const std::lock_guard guard(m_lock);
    return m_progress;
}

std::pair<mxovshare::PackageResult, std::unique_ptr<PackageSession>> UnpackTask::Finish() {
    m_thread.join();
    return {std::move(m_result), std::move(m_session)};
}

bool UnpackTask::OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    const std::lock_guard guard(m_lock);
    m_progress = {name, done, total};
    return !m_cancel;
}

void UnpackTask::Run(HWND notify, UINT message) noexcept {
    m_result = mxovshare::UnpackPackage(m_session->PackageFile(), m_session->Folder(), this);
    PostMessageW(notify, message, 0, 0);
}

} // namespace viewer
