#include "versions/VersionKeeper.h"

#include "versions/WorkFolder.h"

#include <chrono>
#include <utility>

namespace viewer {

VersionKeeper::VersionKeeper(std::wstring folder, VersionSettings settings)
    : m_store(std::move(folder)), m_settings(std::move(settings)), m_thread([this] { Run(); }) {}

VersionKeeper::~VersionKeeper() {
    {
        const std::lock_guard guard(m_lock);
        m_ending = true;
        m_changed.notify_all();
    }
    m_thread.join();
}

void VersionKeeper::Keep(const std::wstring& packageFile, HWND notify, UINT message) {
    if (m_settings.AreKept() && !IsShown(packageFile)) {
        const std::lock_guard guard(m_lock);
        m_requests.push_back({packageFile, notify, message});
        m_changed.notify_all();
    }
}

void VersionKeeper::Wait(DWORD milliseconds) {
    std::unique_lock guard(m_lock);
    m_changed.wait_for(guard, std::chrono::milliseconds(milliseconds), [this] { return m_requests.empty(); });
}

std::wstring VersionKeeper::TakeFailure() {
    const std::lock_guard guard(m_lock);
    return std::exchange(m_failure, {});
}

bool VersionKeeper::IsShown(const std::wstring& packageFile) const {
    return WorkFolder::IsIn(m_store.Folder(), packageFile);
}

void VersionKeeper::Run() noexcept {
    for (std::unique_lock guard(m_lock);;) {
        m_changed.wait(guard, [this] { return m_ending || !m_requests.empty(); });
        if (m_requests.empty()) {
            return;
        }
        const Request& request = m_requests.front(); // stays in its place when others are added
        guard.unlock();
        try {
            KeepNow(request);
        } catch (...) {
            // Out of memory: this version is not kept.
        }
        guard.lock();
        m_requests.pop_front();
        m_changed.notify_all();
    }
}

void VersionKeeper::KeepNow(const Request& request) {
    const mxovshare::PackageResult result = m_store.Keep(request.packageFile, m_settings.Limits());
    WorkFolder::RemoveLeftovers(m_store.Folder());
    if (!result.ok) {
        const std::lock_guard guard(m_lock);
        m_failure = result.message;
        PostMessageW(request.notify, request.message, 0, 0);
    }
}

} // namespace viewer
