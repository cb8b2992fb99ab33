// What becomes of unsaved changes: when a package is closed, when saving fails, and after a crash.
#include "MainWindow.h"

#include "FileDialog.h"
#include "FolderComparison.h"
#include "mxovpackage.h"
#include "Paths.h"
#include "Questions.h"

namespace {

// True while the object lives.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : m_flag(flag) { m_flag = true; }
    ~ScopedFlag() { m_flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& m_flag;
};

} // namespace

bool MainWindow::OfferLeftWork() {
    std::unique_ptr<PackageSession> chosen;
    for (std::unique_ptr<PackageSession>& session : PackageSession::TakeOver()) {
        if (chosen) {
            session->Keep();
            continue;
        }
        if (!DiffersFromPackage(session->Folder(), session->PackageFile()))
            continue;
        const ScopedFlag closing(m_closing);
        const LeftAnswer answer =
            AskAboutLeft(Handle(), session->PackageFile(), LastWriteBelow(session->Folder()));
        if (answer == LeftAnswer::Continue)
            chosen = std::move(session);
        else if (answer == LeftAnswer::Later)
            session->Keep();
    }
    if (!chosen)
        return false;
    mxovshare::ResumeFolder(chosen->Folder(), chosen->PackageFile(), chosen->Stamp());
    SwitchTo(std::move(chosen), L"recovered");
    m_control.MarkChanged();
    return true;
}

// The control saves on its own. After a failure it takes the package for saved, which it is not.
void MainWindow::OnWatch() {
    if (!m_session || m_closing)
        return;
    m_session->Record(mxovshare::StampOfFolder(m_session->Folder()));
    if (mxovshare::TakeSaveFailure(m_session->Folder()))
        m_control.MarkChanged();
}

// The control may ask whether to save, and messages arrive meanwhile. False when the user wants to go on with
// the package.
bool MainWindow::CloseInControl() {
    if (!m_session)
        return true;
    OnWatch();
    const ScopedFlag closing(m_closing);
    m_control.ClosePackage();
    return !mxovshare::TakeSaveFailure(m_session->Folder()) || SettleFailedSave();
}

bool MainWindow::SettleFailedSave() {
    for (;;) {
        switch (AskAboutUnsaved(Handle(), m_session->PackageFile())) {
        case UnsavedAnswer::GoOn:
            m_control.MarkChanged();
            return false;
        case UnsavedAnswer::SaveCopy:
            if (SaveCopy())
                return true;
            break;
        case UnsavedAnswer::Keep:
            m_session->Keep();
            return true;
        case UnsavedAnswer::Discard:
            return true;
        }
    }
}

bool MainWindow::SaveCopy() {
    const std::optional<std::wstring> path = AskForCopy(Handle(), FileName(m_session->PackageFile()));
    if (!path)
        return false;
    mxovshare::Utils::ReGenerateOrvandoFile(m_session->FolderWithSeparator(), *path, L"Saved as a copy");
    return !mxovshare::TakeSaveFailure(m_session->Folder());
}
