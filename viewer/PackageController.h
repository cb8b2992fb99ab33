// The package that the window shows: opens, watches, saves, closes and recovers it.
#pragma once

#include "package/PackageSession.h"
#include "package/RecentPackages.h"
#include "package/UnpackTask.h"
#include "window/ProgressDialog.h"

#include <memory>
#include <string>

namespace viewer {

class ControlHost;

/// What the controller needs of the window that shows its package.
class PackageView {
public:
    /// The window that owns message boxes and receives the controller's messages.
    [[nodiscard]] virtual HWND Frame() const = 0;

    /// Called when a package was opened, saved or closed, and when opening ended without a change.
    virtual void OnPackageChanged() = 0;

    /// Shows a line of text until the next one.
    virtual void ShowStatus(const std::wstring& text) = 0;

    /// Shows what went wrong and waits until the user has read it.
    virtual void ShowError(const std::wstring& text) = 0;

protected:
    ~PackageView() = default;
};

class PackageController {
public:
    /// Posted to the frame when unpacking ended; the frame calls `OnUnpacked`.
    static constexpr UINT kUnpacked = WM_APP + 1;

    /// Keeps the recent packages below HKEY_CURRENT_USER in `settingsKey`. View and control outlive it.
    PackageController(PackageView& view, ControlHost& control, const wchar_t* settingsKey);
    PackageController(const PackageController&) = delete;
    PackageController& operator=(const PackageController&) = delete;

    /// The open package; null when there is none.
    [[nodiscard]] const PackageSession* Session() const { return m_session.get(); }
    [[nodiscard]] const RecentPackages& Recent() const { return m_recent; }
    [[nodiscard]] bool IsOpening() const { return m_task != nullptr; }

    /// Whether a prompt about the package is on the screen. Until it is answered, the package stays.
    [[nodiscard]] bool IsPrompting() const { return m_prompting; }

    /// Opens a package in place of the open one, which is closed only when the other is unpacked. Reports to
    /// the user what is wrong with it, and the open package stays as it was.
    void Open(const std::wstring& path);

    /// Opens the open package anew.
    void Reload();

    /// Ends the unpacking that is under way, if any.
    void CancelOpening();

    /// Saves what the control and other programs changed.
    void Save();

    /// Closes the open package. False when the user prefers to go on with it.
    bool Close();

    /// Offers to continue with the changes that viewers left which crashed. True when the user chose one
    /// package, which is then open.
    bool OfferCrashRecovery();

    /// Handles a timer of the frame.
    void OnTimer(UINT_PTR timer);
    void OnUnpacked();

    /// Lets the progress window handle its keyboard messages; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const;

private:
    [[nodiscard]] bool CanOpen(const std::wstring& path);
    void UpdateProgress();
    void DetectSave();
    void SwitchTo(std::unique_ptr<PackageSession> session);
    bool CloseInControl();

    PackageView& m_view;
    ControlHost& m_control;
    RecentPackages m_recent;
    bool m_prompting = false;
    bool m_reloading = false; // what is being unpacked is the open package
    std::unique_ptr<PackageSession> m_session;
    std::unique_ptr<UnpackTask> m_task;
    std::unique_ptr<ProgressDialog> m_progress;
};

} // namespace viewer
