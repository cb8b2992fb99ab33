// What becomes of unsaved changes: when a package is closed, when saving fails, and after a crash.
#include "MainWindow.h"

#include "mxovpackage.h"
#include "package/FolderComparison.h"
#include "package/Paths.h"
#include "window/FileDialog.h"
#include "window/UnsavedPrompts.h"

#include <string_view>

namespace viewer {

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

// Whether the control itself makes such a change: in the information file, and with copies that it attaches
// and removes.
bool IsOwnChange(const FileChange& change) {
    constexpr wchar_t kCopies[] = L"ReferanceFiles\\";
    return SamePath(FileName(change.name), L"mxinfo.ini") ||
           (change.kind != FileChangeKind::Changed &&
            SamePath(change.name.substr(0, std::size(kCopies) - 1), kCopies));
}

} // namespace

bool MainWindow::OfferLeftWork() {
    std::unique_ptr<PackageSession> chosen;
    for (std::unique_ptr<PackageSession>& session : PackageSession::TakeOver()) {
        if (chosen) {
            session->Keep();
            continue;
        }
        if (!DiffersFromPackage(session->Folder(), session->PackageFile())) {
            continue;
        }
        const ScopedFlag closing(m_closing);
        const LeftAnswer answer =
            AskAboutLeft(Handle(), session->PackageFile(), LastWriteBelow(session->Folder()));
        if (answer == LeftAnswer::Continue) {
            chosen = std::move(session);
        } else if (answer == LeftAnswer::Later) {
            session->Keep();
        }
    }
    if (!chosen) {
        return false;
    }
    chosen->Resume();
    SwitchTo(std::move(chosen));
    m_control.MarkChanged();
    return true;
}

// The control saves on its own. After a failure it takes the package for saved, which it is not.
void MainWindow::OnWatch() {
    if (!m_session || m_closing) {
        return;
    }
    if (RecordSave()) {
        ShowSaved();
    }
    if (mxovshare::TakeSaveFailure(m_session->Folder())) {
        m_control.MarkChanged();
    }
}

// True when the package was saved since the last time.
bool MainWindow::RecordSave() {
    const std::wstring stamp = mxovshare::StampOfFolder(m_session->Folder());
    const bool saved = stamp != m_session->Stamp();
    m_session->Record(stamp);
    return saved;
}

// The control may ask whether to save, and messages arrive meanwhile. False when the user wants to go on with
// the package.
bool MainWindow::CloseInControl() {
    if (!m_session) {
        return true;
    }
    CloseProperties();
    OnWatch();
    const ScopedFlag closing(m_closing);
    const bool changed = m_control.HasChanges();
    m_control.ClosePackage();
    if (mxovshare::TakeSaveFailure(m_session->Folder())) {
        return SettleFailedSave();
    }
    const bool declined = changed && !RecordSave();
    return SettleOpenDocuments() && SettleOthersChanges(declined);
}

// A click outside closes the properties of a document, a shortcut does not: they would go on to show a
// document of a package that is closed. A disabled frame has a modal dialog, which is not to be closed.
void MainWindow::CloseProperties() const {
    if (!IsWindowEnabled(Handle())) {
        return;
    }
    const auto close = [](HWND window, LPARAM frame) -> BOOL {
        wchar_t name[8] = L"";
        GetClassNameW(window, name, ARRAYSIZE(name));
        if (GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(frame) &&
            name == std::wstring_view(L"#32770")) {
            DestroyWindow(window);
        }
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(Handle()));
}

// What such a program saves after the folder is removed would be lost.
bool MainWindow::SettleOpenDocuments() {
    for (;;) {
        const std::vector<std::wstring> open = FindOpenDocuments(m_session->Folder());
        if (open.empty()) {
            return true;
        }
        const OpenAnswer answer = AskAboutOpen(Handle(), m_session->PackageFile(), open);
        if (answer != OpenAnswer::TryAgain) {
            return answer == OpenAnswer::Close;
        }
    }
}

// What other programs did to the files of the open package, such as an editor that the user opened one with:
// the control does not look for that.
bool MainWindow::SettleOthersChanges(bool declined) {
    std::vector<FileChange> changes = m_session->Changes();
    if (declined) {
        std::erase_if(changes, IsOwnChange);
    }
    if (changes.empty()) {
        return true;
    }
    switch (AskAboutChanges(Handle(), m_session->PackageFile(), changes, declined)) {
    case ChangesAnswer::Save:
        m_control.Save();
        return !mxovshare::TakeSaveFailure(m_session->Folder()) || SettleFailedSave();
    case ChangesAnswer::Discard:
        return true;
    default:
        return false;
    }
}

void MainWindow::SavePackage() {
    if (!m_session || m_closing || IsOpening()) {
        return;
    }
    if (!m_control.HasChanges() && m_session->Changes().empty()) {
        ShowStatus(L"There is nothing to save", m_facts);
        return;
    }
    {
        const ScopedFlag closing(m_closing);
        m_control.Save();
    }
    OnWatch();
    ShowPackage();
}

bool MainWindow::SettleFailedSave() {
    for (;;) {
        switch (AskAboutUnsaved(Handle(), m_session->PackageFile())) {
        case UnsavedAnswer::GoOn:
            m_control.MarkChanged();
            return false;
        case UnsavedAnswer::SaveCopy:
            if (SaveCopy()) {
                return true;
            }
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
    if (!path) {
        return false;
    }
    mxovshare::Utils::ReGenerateOrvandoFile(m_session->FolderWithSeparator(), *path, L"Saved as a copy");
    return !mxovshare::TakeSaveFailure(m_session->Folder());
}

} // namespace viewer
