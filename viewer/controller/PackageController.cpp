#include "controller/PackageController.h"

#include "common/Paths.h"
#include "common/ScopedFlag.h"
#include "control/ControlHost.h"
#include "control/PropertiesWindow.h"
#include "controller/PackageAttaching.h"
#include "controller/PackageClosing.h"
#include "controller/PackageRecovery.h"
#include "controller/PackageSaving.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <algorithm>

namespace viewer {

PackageController::PackageController(PackageView& view, ControlHost& control, SessionStore& sessions,
                                     VersionKeeper& versions, const wchar_t* settingsKey)
    : m_view(view), m_control(control), m_sessions(sessions), m_versions(view, versions, kNotKept),
      m_recent(settingsKey) {}

void PackageController::Prepare(const std::wstring& path) {
    std::wstring error;
    if (std::unique_ptr<PackageSession> session = m_sessions.Create(path, error)) {
        m_opening.Prepare(std::move(session));
    }
}

void PackageController::Open(const std::wstring& path) {
    if (IsOpening() || m_prompting) {
        MessageBeep(MB_OK);
        return;
    }
    if (!CanOpen(path)) {
        m_opening.Cancel();
        return;
    }
    std::unique_ptr<PackageSession> session;
    if (std::wstring error; !m_opening.IsPrepared(path)) {
        session = m_sessions.Create(path, error);
        if (!session) {
            m_view.ShowError(Text(IDS_CANNOT_OPEN, {FileName(path), error}));
            return;
        }
    }
    // The open package is saved before it is unpacked again, and must not change in between.
    m_reloading = m_session && common::IsSamePath(path, m_session->PackageFile());
    if (m_reloading) {
        if (!CloseInControl()) {
            m_reloading = false;
            return;
        }
        m_control.Enable(false);
    }
    if (session) {
        m_opening.Prepare(std::move(session));
    }
    m_opening.Start(m_view.Frame(), kUnpacked);
    m_view.ShowStatus(Text(IDS_OPENING, {path}));
}

bool PackageController::CanOpen(const std::wstring& path) {
    if (FolderExists(path)) {
        m_view.ShowError(Text(IDS_FOLDER_IS_NO_PACKAGE, {FileName(path)}));
        return false;
    }
    if (!FileExists(path)) {
        m_recent.Remove(path);
        m_view.OnPackageChanged();
        m_view.ShowError(Text(IDS_PACKAGE_NOT_FOUND, {path}));
        return false;
    }
    return true;
}

void PackageController::TakeFiles(const std::vector<std::wstring>& files, std::optional<AttachMode> mode) {
    const auto package = std::ranges::find_if(files, IsPackageName);
    if (files.empty()) {
        return;
    }
    if (package != files.end() || !m_session) {
        Open(package != files.end() ? *package : files.front());
    } else {
        Attach(files, mode);
    }
}

void PackageController::Attach(const std::vector<std::wstring>& files, std::optional<AttachMode> mode) {
    const auto attach = [&](const PackageSession& session) {
        return PackageAttaching(m_view, session).Run(files, mode);
    };
    if (!Change(attach)) {
        MessageBeep(MB_OK);
    }
}

void PackageController::Reload() {
    if (m_session) {
        Open(std::wstring(m_session->PackageFile()));
    }
}

bool PackageController::IsReady() const {
    return m_session && !m_prompting && !IsOpening();
}

void PackageController::Save() {
    if (IsReady() && !m_status.IsFileGone() && !m_control.HasChanges() && m_session->Changes().empty()) {
        m_view.ShowNote(Text(IDS_NOTHING_TO_SAVE));
    } else {
        SaveHere(&PackageSaving::Save);
    }
}

void PackageController::SaveWithNote() {
    SaveHere(&PackageSaving::SaveWithNote);
}

void PackageController::SaveHere(bool (PackageSaving::*way)()) {
    if (IsShowingVersion()) {
        m_view.ShowNote(Text(IDS_VERSION_READ_ONLY));
        return;
    }
    if (IsReady()) {
        m_versions.Keep(*m_session);
    }
    Save(way);
}

void PackageController::SaveAs() {
    Save(&PackageSaving::SaveAs);
}

void PackageController::Save(bool (PackageSaving::*way)()) {
    if (!IsReady()) {
        return;
    }
    const std::wstring file = m_session->PackageFile();
    bool saved = false;
    {
        const common::ScopedFlag prompting(m_prompting);
        saved = (PackageSaving(m_view, m_control, *m_session).*way)();
    }
    if (m_session->PackageFile() != file) {
        m_status.Start(*m_session, m_view.Frame(), kWatched);
        AddToRecent();
        m_versions.Keep(*m_session);
    }
    OnControlChanged();
    m_view.OnPackageChanged();
    if (saved && !m_control.HasChanges()) {
        m_view.ShowNote(Text(IDS_SAVED));
    }
}

bool PackageController::Change(const std::function<bool(PackageSession&)>& change) {
    if (!IsReady()) {
        return false;
    }
    {
        const common::ScopedFlag prompting(m_prompting);
        if (change(*m_session)) {
            m_control.LoadFile(m_session->FolderWithSeparator(), m_session->PackageFile());
            m_control.MarkChanged();
            m_status.LookAgain(*m_session);
        }
    }
    OnControlChanged();
    return true;
}

bool PackageController::Close() {
    if (!m_session || m_prompting || IsOpening()) {
        return true;
    }
    if (!CloseInControl()) {
        return false;
    }
    m_view.OnPackageClosing();
    m_status.Stop();
    m_adding.reset();
    m_control.ClearAllData();
    m_session.reset();
    UpdateNews();
    m_view.OnPackageChanged();
    return true;
}

bool PackageController::OfferCrashRecovery() {
    std::unique_ptr<PackageSession> chosen;
    {
        const common::ScopedFlag prompting(m_prompting);
        chosen = AskToContinue(m_view.Frame(), m_sessions);
    }
    if (!chosen) {
        return false;
    }
    m_opening.Cancel();
    chosen->Resume();
    SwitchTo(std::move(chosen));
    m_control.MarkChanged();
    return true;
}

// A version that is looked at is gone when it is closed.
void PackageController::AddToRecent() {
    if (!IsShowingVersion()) {
        m_recent.Add(m_session->PackageFile());
    }
}

void PackageController::SwitchTo(std::unique_ptr<PackageSession> session) {
    if (!m_reloading && !CloseInControl()) {
        m_view.OnPackageChanged();
        return;
    }
    session->RecordSave();
    m_status.Stop();
    m_adding.reset();
    m_control.LoadFile(session->FolderWithSeparator(), session->PackageFile());
    m_session = std::move(session);
    m_view.OnCatalogueLoaded();
    m_versions.Start();
    m_status.Start(*m_session, m_view.Frame(), kWatched);
    AddToRecent();
    UpdateNews();
    m_view.OnPackageChanged();
}

// Messages arrive while a prompt is on the screen.
bool PackageController::CloseInControl() {
    if (!m_session) {
        return true;
    }
    CloseProperties(m_view.Frame());
    OnControlChanged();
    const common::ScopedFlag prompting(m_prompting);
    const std::wstring before = mxovshare::StampOfFolder(m_session->Folder());
    const bool closed = PackageClosing(m_view.Frame(), m_control, *m_session).Run();
    if (mxovshare::StampOfFolder(m_session->Folder()) != before) {
        m_versions.Keep(*m_session);
    }
    return closed;
}

} // namespace viewer
