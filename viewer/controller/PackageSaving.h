// The ways in which the user saves the open package.
#pragma once

namespace viewer {

class ControlHost;
class PackageSession;
class PackageView;

class PackageSaving {
public:
    /// The control shows the package of the session.
    PackageSaving(PackageView& view, ControlHost& control, PackageSession& session)
        : m_view(view), m_control(control), m_session(session) {}

    /// Each saves whether something was changed or not. False when the user cancelled the prompt for it; a
    /// failure is reported by the library.
    bool Save();

    /// With a note from the user that becomes the remarks of the history entry.
    bool SaveWithNote();

    /// To another file, with which the session then continues.
    bool SaveAs();

private:
    PackageView& m_view;
    ControlHost& m_control;
    PackageSession& m_session;
};

} // namespace viewer
