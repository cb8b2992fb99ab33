#include "controller/PackageClosing.h"

#include "control/ControlHost.h"
#include "mxovpackage.h"
#include "package/Paths.h"
#include "prompts/FileDialog.h"
#include "prompts/UnsavedPrompts.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

// What floats over the frame is hidden while questions are asked. It closes with the package and would take
// the focus along if the last question returned it there.
class OwnedWindowsHidden {
public:
    explicit OwnedWindowsHidden(HWND frame) : m_frame(frame) { ShowOwnedPopups(m_frame, FALSE); }
    ~OwnedWindowsHidden() { ShowOwnedPopups(m_frame, TRUE); }
    OwnedWindowsHidden(const OwnedWindowsHidden&) = delete;
    OwnedWindowsHidden& operator=(const OwnedWindowsHidden&) = delete;

private:
    HWND m_frame;
};

} // namespace

bool PackageClosing::Run() {
    const OwnedWindowsHidden hidden(m_owner);
    const bool changed = m_control.HasChanges();
    m_control.ClosePackage(); // asks whether to save what it knows of
    if (mxovshare::TakeSaveFailure(m_session.Folder())) {
        return ResolveFailedSave();
    }
    const bool declined = changed && !m_session.RecordSave();
    return WaitForOpenDocuments() && ResolveOutsideChanges(declined);
}

bool PackageClosing::ResolveFailedSave() {
    for (;;) {
        switch (AskAboutFailedSave(m_owner, m_session.PackageFile())) {
        case FailedSaveAnswer::GoOn:
            m_control.MarkChanged();
            return false;
        case FailedSaveAnswer::SaveCopy:
            if (SaveCopy()) {
                return true;
            }
            break;
        case FailedSaveAnswer::Keep:
            m_session.Keep();
            return true;
        case FailedSaveAnswer::Discard:
            return true;
        }
    }
}

// What a program that holds a document open saves after the folder is removed would be lost.
bool PackageClosing::WaitForOpenDocuments() {
    for (;;) {
        const std::vector<std::wstring> open = FindOpenDocuments(m_session.Folder());
        if (open.empty()) {
            return true;
        }
        const OpenAnswer answer = AskAboutOpenDocuments(m_owner, m_session.PackageFile(), open);
        if (answer != OpenAnswer::TryAgain) {
            return answer == OpenAnswer::Close;
        }
    }
}

// The control does not know what other programs did to the files of its package, such as an editor that the
// user opened one with.
bool PackageClosing::ResolveOutsideChanges(bool declined) {
    std::vector<FileChange> changes = m_session.Changes();
    if (declined) {
        std::erase_if(changes, IsControlChange);
    }
    if (changes.empty()) {
        return true;
    }
    switch (AskAboutChanges(m_owner, m_session.PackageFile(), changes, declined)) {
    case ChangesAnswer::Save:
        m_control.Save();
        return !mxovshare::TakeSaveFailure(m_session.Folder()) || ResolveFailedSave();
    case ChangesAnswer::Discard:
        return true;
    default:
        return false;
    }
}

bool PackageClosing::SaveCopy() {
    const std::optional<std::wstring> path =
        AskForCopy(m_owner, FileName(m_session.PackageFile()), IDS_SAVE_A_COPY);
    if (!path) {
        return false;
    }
    mxovshare::Utils::ReGenerateOrvandoFile(m_session.FolderWithSeparator(), *path, Text(IDS_SAVED_AS_COPY));
    return !mxovshare::TakeSaveFailure(m_session.Folder());
}

} // namespace viewer
