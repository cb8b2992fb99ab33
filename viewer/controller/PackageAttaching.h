// Attaching files from outside to the open package.
#pragma once

#include "package/Attachment.h"

#include <optional>
#include <string>
#include <vector>

namespace viewer {

class PackageSession;
class PackageView;

class PackageAttaching {
public:
    PackageAttaching(PackageView& view, const PackageSession& session) : m_view(view), m_session(session) {}

    /// Attaches files, asking how unless `mode` states it, and shows why some cannot be attached. False when
    /// the package is as it was before.
    [[nodiscard]] bool Run(const std::vector<std::wstring>& files, std::optional<AttachMode> mode);

private:
    [[nodiscard]] bool CanAttach(const std::vector<std::wstring>& files);

    PackageView& m_view;
    const PackageSession& m_session;
};

} // namespace viewer
