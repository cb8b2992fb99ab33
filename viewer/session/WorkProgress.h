// How far work on another thread is.
#pragma once

#include "mxovpackage.h"

#include <atomic>
#include <mutex>

namespace viewer {

/// The work reports here; the window shows it and may cancel.
class WorkProgress : public mxovshare::PackageProgress {
public:
    struct Progress {
        std::wstring name; ///< what is in work
        std::uint64_t done = 0;
        std::uint64_t total = 0;
    };

    void Cancel() noexcept { m_cancel = true; }
    [[nodiscard]] bool IsCancelled() const noexcept { return m_cancel; }

    [[nodiscard]] Progress Current() const {
        const std::lock_guard guard(m_lock);
        return m_progress;
    }

    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override {
        const std::lock_guard guard(m_lock);
        m_progress = {name, done, total};
        return !m_cancel;
    }

private:
    mutable std::mutex m_lock; // guards m_progress
    Progress m_progress;
    std::atomic<bool> m_cancel = false;
};

} // namespace viewer
