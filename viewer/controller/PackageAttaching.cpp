#include "controller/PackageAttaching.h"

#include "control/PropertiesWindow.h"
#include "controller/PackageView.h"
#include "package/Paths.h"
#include "prompts/AttachPrompt.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"

namespace viewer {

bool PackageAttaching::Run(const std::vector<std::wstring>& files, std::optional<AttachMode> mode) {
    if (!CanAttach(files)) {
        return false;
    }
    CloseProperties(m_view.Frame());
    if (!mode) {
        mode = AskHowToAttach(m_view.Frame(), m_session.PackageFile(), files);
    }
    if (!mode) {
        return false;
    }
    const std::wstring refused = AttachDocuments(m_session.FolderWithSeparator(), files, *mode);
    if (!refused.empty()) {
        m_view.ShowError(refused);
    }
    return true;
}

bool PackageAttaching::CanAttach(const std::vector<std::wstring>& files) {
    if (!TakesDocuments(m_session.FolderWithSeparator())) {
        m_view.ShowError(Text(IDS_OLD_PACKAGE, {FileName(m_session.PackageFile())}));
        return false;
    }
    if (files.size() == 1 && FolderExists(files.front())) {
        m_view.ShowError(Text(IDS_FOLDER_NOT_ATTACHED, {FileName(files.front())}));
        return false;
    }
    return true;
}

} // namespace viewer
