#include "UnpackTask.h"

UnpackTask::UnpackTask(std::unique_ptr<PackageSession> session, HWND notify, UINT message)
    : m_session(std::move(session)), m_thread([this, notify, message] { Run(notify, message); }) {}

UnpackTask::~UnpackTask() {
    Cancel();
    if (m_thread.joinable())
        m_thread.join();
}

UnpackTask::Progress UnpackTask::Current() const {
    const std::lock_guard guard(m_lock);
    return m_progress;
}

std::pair<UnpackTask::Outcome, std::unique_ptr<PackageSession>> UnpackTask::Finish() {
    m_thread.join();
    return {std::move(m_outcome), std::move(m_session)};
}

bool UnpackTask::OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) {
    const std::lock_guard guard(m_lock);
    m_progress = {name, done, total};
    return !m_cancel;
}

void UnpackTask::Run(HWND notify, UINT message) noexcept {
    try {
        Unpack();
    } catch (...) {
        m_outcome.result = {false, false,
                            L"There is not enough memory to open " + m_session->PackageFile() + L"."};
    }
    PostMessageW(notify, message, 0, 0);
}

void UnpackTask::Unpack() {
    const std::wstring& file = m_session->PackageFile();
    std::vector<mxovshare::PackageEntry> entries;
    m_outcome.result = mxovshare::ListPackage(file, entries);
    if (!m_outcome.result.ok)
        return;
    for (const mxovshare::PackageEntry& entry : entries) {
        m_outcome.files += entry.isFolder ? 0 : 1;
        m_outcome.bytes += entry.size;
    }
    m_outcome.result = mxovshare::UnpackPackage(file, m_session->Folder(), this);
}
