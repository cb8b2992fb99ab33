// The folder in which the viewer unpacks packages and keeps unsaved work.
#pragma once

#include "session/PackageSession.h"

#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace viewer {

/// Creates sessions, takes over what earlier viewers left, and removes folders without making anybody wait.
class SessionStore {
public:
    /// The folder among the user's local application data, or where an administrator has packages unpacked.
    [[nodiscard]] static std::wstring UserFolder();

    /// The folders that earlier versions used, or viewers under other policies.
    [[nodiscard]] static std::vector<std::wstring> EarlierFolders();

    /// `folder` is created when it is needed. What was left in the `earlier` folders is taken over and
    /// removed too.
    explicit SessionStore(std::wstring folder, std::vector<std::wstring> earlier = {});

    /// Waits for the removals.
    ~SessionStore() { WaitForRemovals(); }
    SessionStore(const SessionStore&) = delete;
    SessionStore& operator=(const SessionStore&) = delete;

    /// Prepares a session for a package; unpacking creates the folder itself. Null on failure, with the
    /// reason in `error`. The store outlives its sessions.
    [[nodiscard]] std::unique_ptr<PackageSession> Create(const std::wstring& packageFile,
                                                         std::wstring& error);

    /// Takes over the sessions that were kept or left from a crash. Those whose package was not unpacked
    /// completely are removed.
    [[nodiscard]] std::vector<std::unique_ptr<PackageSession>> TakeOver() noexcept;

    /// Removes, in the background, the folders of finished sessions that could not be removed at their end.
    /// Keeps what a crash left.
    void RemoveLeftovers() noexcept;

    /// Removes the folder of a finished session in the background.
    void Remove(const std::wstring& folder) noexcept;

    /// Waits until everything is removed that is to be removed.
    void WaitForRemovals() noexcept;

private:
    void TakeOverFrom(const std::wstring& folder, std::vector<std::unique_ptr<PackageSession>>& sessions);
    template <class Work>
    void RunInBackground(Work work) noexcept;

    const std::vector<std::wstring> m_folders; // its own and the earlier ones, without a separator at the end
    std::mutex m_lock; // guards the next one: sessions also end on the thread that unpacks
    std::vector<std::future<void>> m_removals;
};

} // namespace viewer
