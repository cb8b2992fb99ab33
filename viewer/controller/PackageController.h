// The package that the window shows: opens, watches, saves, closes and recovers it.
#pragma once

#include "controller/PackageAdding.h"
#include "controller/PackageKeeping.h"
#include "controller/PackageOpening.h"
#include "controller/PackageStatus.h"
#include "controller/PackageView.h"
#include "package/Attachment.h"
#include "package/RecentPackages.h"
#include "session/PackageSession.h"
#include "session/SessionStore.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace viewer {

class ControlHost;
class PackageSaving;

class PackageController {
public:
    /// Arrive at the frame, which passes them to `OnMessage`.
    static constexpr UINT kUnpacked = WM_APP + 1;
    static constexpr UINT kControlChanged = WM_APP + 2;
    static constexpr UINT kWatched = WM_APP + 3;
    static constexpr UINT kAdding = WM_APP + 4; ///< sent
    static constexpr UINT kAdded = WM_APP + 5;
    static constexpr UINT kNotKept = WM_APP + 6;

    /// Keeps the recent packages below HKEY_CURRENT_USER in `settingsKey`. View, control, store and keeper
    /// outlive it.
    PackageController(PackageView& view, ControlHost& control, SessionStore& sessions,
                      VersionKeeper& versions, const wchar_t* settingsKey);
    PackageController(const PackageController&) = delete;
    PackageController& operator=(const PackageController&) = delete;

    /// The open package; null when there is none.
    [[nodiscard]] const PackageSession* Session() const { return m_session.get(); }
    [[nodiscard]] const RecentPackages& Recent() const { return m_recent; }
    [[nodiscard]] bool IsOpening() const { return m_opening.IsRunning(); }

    /// Whether what is open is an earlier version that is looked at, which is saved to another file only.
    [[nodiscard]] bool IsShowingVersion() const { return m_versions.IsVersion(m_session.get()); }

    /// Whether a prompt about the package is on the screen. Until it is answered, the package stays.
    [[nodiscard]] bool IsPrompting() const { return m_prompting; }

    /// Whether the package holds changes that are not in its file.
    [[nodiscard]] bool IsUnsaved() const { return m_status.IsUnsaved(); }

    /// What other programs did to the package, else that it holds programs; empty text for nothing.
    [[nodiscard]] const PackageNews& News() const { return m_status.News(); }

    /// Begins to unpack a package that is about to be opened, while the window is still being made. Reports
    /// nothing: what fails here fails again when it is opened.
    void Prepare(const std::wstring& path);

    /// Opens a package in place of the open one, which is closed only when the other is unpacked. Shows
    /// an error when it cannot be opened; the open package then stays as it was.
    void Open(const std::wstring& path);

    /// Handles files that were dropped or pasted: the first package among them is opened, other files are
    /// attached to the open package. `mode` is what the user chose by a key; without one a prompt asks.
    void TakeFiles(const std::vector<std::wstring>& files, std::optional<AttachMode> mode);

    /// Opens the open package anew.
    void Reload();

    /// Ends the unpacking that is under way, if any.
    void CancelOpening() { m_opening.Cancel(); }

    /// Saves what the control and other programs changed.
    void Save();

    /// Saves whether something was changed or not, with a note from the user that becomes the remarks of the
    /// history entry.
    void SaveWithNote();

    /// Saves to another file, which is then the open package.
    void SaveAs();

    /// Lets `change` prompt about the open package and change the files in its folder; it returns whether it
    /// did. They then count as unsaved changes, and the control shows them. False when the package cannot be
    /// changed now.
    bool Change(const std::function<bool(PackageSession&)>& change);

    /// Closes the open package. False when the user keeps it open.
    bool Close();

    /// Offers to continue with the changes that viewers left which crashed. True when the user chose one
    /// package, which is then open.
    bool OfferCrashRecovery();

    /// Handles a timer of the frame.
    void OnTimer() { m_opening.OnTimer(); }

    /// Handles a message to the frame; true when it was one of those above.
    bool OnMessage(UINT message);

    /// Lets the progress window handle its keyboard messages; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const { return m_opening.PreTranslate(message); }

private:
    [[nodiscard]] bool CanOpen(const std::wstring& path);
    void Attach(const std::vector<std::wstring>& files, std::optional<AttachMode> mode);
    [[nodiscard]] bool IsReady() const;
    void SaveHere(bool (PackageSaving::*way)());
    void Save(bool (PackageSaving::*way)());
    void AddToRecent();
    void OnUnpacked();
    void OnAdding();
    void OnAdded();
    void OnControlChanged();
    void OnWatched();
    void UpdateNews();
    void SwitchTo(std::unique_ptr<PackageSession> session);
    bool CloseInControl();

    PackageView& m_view;
    ControlHost& m_control;
    SessionStore& m_sessions;
    PackageKeeping m_versions;
    RecentPackages m_recent;
    bool m_prompting = false;
    bool m_reloading = false; // what is being unpacked is the open package
    std::unique_ptr<PackageSession> m_session;
    PackageStatus m_status;                  // of the session
    std::unique_ptr<PackageAdding> m_adding; // to the session, while the control adds
    PackageOpening m_opening;
};

} // namespace viewer
