#include "earlier/PackageVersions.h"

#include "control/PropertiesWindow.h"
#include "controller/PackageController.h"
#include "earlier/VersionCommands.h"
#include "package/Paths.h"
#include "versions/VersionKeeper.h"

namespace viewer {

void PackageVersions::Show() {
    m_packages.Change([this](PackageSession& session) {
        CloseProperties(m_view.Frame());
        return Show(session);
    });
}

bool PackageVersions::Show(PackageSession& session) {
    VersionCommands commands(session, m_keeper, m_packages.IsUnsaved(), m_shown);
    if (!commands.Read(m_view.Frame())) {
        return false;
    }
    ShowVersions(m_view.Frame(), commands.Shown(), commands);
    return commands.HasChanged();
}

void PackageVersions::OnPackageChanged() {
    const PackageSession* session = m_packages.Session();
    const std::wstring file = session ? session->PackageFile() : std::wstring();
    Hold(m_keeper.IsShown(file) ? file : std::wstring());
}

void PackageVersions::Hold(const std::wstring& file) {
    if (file == m_heldFile) {
        return;
    }
    m_held.reset();
    if (!m_heldFile.empty()) {
        RemoveFolder(ParentFolder(m_heldFile));
    }
    m_heldFile = file;
    if (!file.empty()) {
        m_held = common::OwnFile(CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    }
}

} // namespace viewer
