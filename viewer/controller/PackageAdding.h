// A document that the user adds with the control's "+" button.
#pragma once

#include "package/AddedDocument.h"

namespace viewer {

class ControlHost;
class PackageSession;
class PackageView;

/// Makes the addition what a reload shows, so that the document can be removed again, and asks when its copy
/// has the name of another one.
class PackageAdding {
public:
    /// Created before the button adds. The control shows the package of the session.
    PackageAdding(PackageView& view, ControlHost& control, PackageSession& session);

    /// Called after the button has added a document or the user has cancelled.
    void Finish();

private:
    [[nodiscard]] bool Resolve(const AddedDocument& document);
    [[nodiscard]] bool ResolveShared(const AddedDocument& document);
    void ShowFailure(const std::wstring& message);

    PackageView& m_view;
    ControlHost& m_control;
    PackageSession& m_session;
    const bool m_hadChanges;
    AddedDocumentRepair m_repair;
};

} // namespace viewer
