// Whether the open package is saved, and what other programs did to it.
#pragma once

#include "session/PackageNews.h"

#include <memory>
#include <optional>

namespace viewer {

class PackageStatus {
public:
    /// Watches a package from now on, which ends before the next `Stop`. Posts `message` to `notify` when
    /// there may be news.
    void Start(const PackageSession& session, HWND notify, UINT message);

    /// Watches nothing from now on.
    void Stop();

    /// Forgets what was seen, and looks again. Called after saves and other changes of our own.
    void LookAgain(const PackageSession& session);

    /// Takes what the watch has seen. False when there is nothing new.
    bool Take();

    /// Finds out anew; null for no package. `hasChanges`: the control has unsaved changes. True when the next
    /// two have changed.
    bool Update(const PackageSession* session, bool hasChanges);

    /// Whether the package holds changes that are not in its file.
    [[nodiscard]] bool IsUnsaved() const { return m_unsaved; }

    /// What other programs did to the package, else that it holds programs; empty text for nothing.
    [[nodiscard]] const PackageNews& News() const { return m_news; }

    /// Whether the package file was not there at the last look.
    [[nodiscard]] bool IsFileGone() const { return m_state && m_state->stamp.empty(); }

private:
    [[nodiscard]] bool IsCurrent(const PackageSession& session) const;

    bool m_unsaved = false;
    PackageNews m_news;
    PackageNews m_programs;              // that the package holds
    std::optional<PackageState> m_state; // as the watch saw it last
    std::unique_ptr<PackageWatch> m_watch;
};

} // namespace viewer
