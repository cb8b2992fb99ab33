#include "controller/PackageSaving.h"

#include "control/ControlHost.h"
#include "control/PropertiesWindow.h"
#include "controller/PackageView.h"
#include "package/Paths.h"
#include "prompts/FileDialog.h"
#include "prompts/NoteDialog.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"

namespace viewer {

bool PackageSaving::Save() {
    m_control.Save();
    return true;
}

bool PackageSaving::SaveWithNote() {
    CloseProperties(m_view.Frame());
    const std::optional<std::wstring> note = AskForNote(m_view.Frame(), m_session.PackageFile());
    if (!note) {
        return false;
    }
    mxovshare::SetSaveRemarks(m_session.Folder(), *note);
    return Save();
}

bool PackageSaving::SaveAs() {
    CloseProperties(m_view.Frame());
    const std::optional<std::wstring> path =
        AskForCopy(m_view.Frame(), FileName(m_session.PackageFile()), IDS_SAVE_PACKAGE_AS);
    if (!path) {
        return false;
    }
    const std::wstring folder = m_session.FolderWithSeparator();
    mxovshare::Utils::ReGenerateOrvandoFile(folder, *path, Text(IDS_SAVED_AS, {FileName(*path)}));
    if (mxovshare::TakeSaveFailure(m_session.Folder())) {
        return false;
    }
    m_session.MoveTo(*path);
    m_control.LoadFile(folder, *path);
    return true;
}

} // namespace viewer
