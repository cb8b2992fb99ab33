// Attaching files from outside to the open package.
#pragma once

#include "package/Attachment.h"

#include <optional>
#include <string>
#include <vector>

namespace viewer {

class ControlHost;
class PackageSession;
class PackageView;

class PackageAttaching {
public:
    /// The control shows the package of the session.
    PackageAttaching(PackageView& view, ControlHost& control, const PackageSession& session)
        : m_view(view), m_control(control), m_session(session) {}

    /// Attaches files, asking how unless `mode` states it, and shows why some cannot be attached.
    void Run(const std::vector<std::wstring>& files, std::optional<AttachMode> mode);

private:
    [[nodiscard]] bool CanAttach(const std::vector<std::wstring>& files);

    PackageView& m_view;
    ControlHost& m_control;
    const PackageSession& m_session;
};

} // namespace viewer
