// Keeps versions of packages in the background.
#pragma once

#include "versions/VersionSettings.h"
#include "versions/VersionStore.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace viewer {

class VersionKeeper {
public:
    /// Keeps them in `folder` as long as the settings allow it.
    VersionKeeper(std::wstring folder, VersionSettings settings);

    /// Returns when everything is kept that was asked for.
    ~VersionKeeper();
    VersionKeeper(const VersionKeeper&) = delete;
    VersionKeeper& operator=(const VersionKeeper&) = delete;

    [[nodiscard]] const VersionStore& Store() const { return m_store; }
    [[nodiscard]] const VersionSettings& Settings() const { return m_settings; }

    /// Keeps soon what a package file holds, and returns at once. After a failure posts `message` to
    /// `notify`.
    void Keep(const std::wstring& packageFile, HWND notify, UINT message);

    /// Waits until everything is kept that was asked for, but not longer than so many milliseconds.
    void Wait(DWORD milliseconds = 60'000);

    /// Why the last package could not be kept, once; empty when it could.
    [[nodiscard]] std::wstring TakeFailure();

    /// Whether a package file is a version that the user looks at.
    [[nodiscard]] bool IsShown(const std::wstring& packageFile) const;

private:
    struct Request {
        std::wstring packageFile;
        HWND notify;
        UINT message;
    };

    void Run() noexcept;
    void KeepNow(const Request& request);

    const VersionStore m_store;
    const VersionSettings m_settings;
    std::mutex m_lock; // guards the rest but the thread
    std::condition_variable m_changed;
    std::deque<Request> m_requests; // the first one is in work
    std::wstring m_failure;
    bool m_ending = false;
    std::thread m_thread;
};

} // namespace viewer
