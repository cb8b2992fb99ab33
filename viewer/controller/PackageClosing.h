// Closing a package: nothing that is not in its file yet is lost without the user's consent.
#pragma once

#include "session/PackageSession.h"

namespace viewer {

class ControlHost;

class PackageClosing {
public:
    /// `owner` owns the prompts. The control shows the package of the session.
    PackageClosing(HWND owner, ControlHost& control, PackageSession& session)
        : m_owner(owner), m_control(control), m_session(session) {}

    /// Prompts for everything unsaved and saves it where the user agrees. False when the user keeps the
    /// package open.
    [[nodiscard]] bool Run();

private:
    [[nodiscard]] bool ResolveFailedSave();
    [[nodiscard]] bool WaitForOpenDocuments();
    [[nodiscard]] bool ResolveOutsideChanges(bool declined);
    [[nodiscard]] bool SaveCopy();

    HWND m_owner;
    ControlHost& m_control;
    PackageSession& m_session;
};

} // namespace viewer
