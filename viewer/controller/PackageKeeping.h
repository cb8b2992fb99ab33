// Keeping versions of the open package.
#pragma once

#include "versions/VersionKeeper.h"

namespace viewer {

class PackageSession;
class PackageView;

class PackageKeeping {
public:
    /// Posts `message` to the view's window when a version could not be kept. Both outlive it.
    PackageKeeping(PackageView& view, VersionKeeper& keeper, UINT message)
        : m_view(view), m_keeper(keeper), m_message(message) {}

    /// Called when another package is open.
    void Start() { m_stamp.clear(); }

    /// Keeps what the package file holds, once for each save.
    void Keep(const PackageSession& session);

    /// Shows why a version could not be kept. Called for the message.
    void ShowFailure();

    /// Whether what is open is an earlier version that is looked at; null for no package.
    [[nodiscard]] bool IsVersion(const PackageSession* session) const;

private:
    PackageView& m_view;
    VersionKeeper& m_keeper;
    const UINT m_message;
    std::wstring m_stamp; // of the package file that was kept last
};

} // namespace viewer
