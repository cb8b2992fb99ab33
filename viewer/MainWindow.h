// The viewer's window: owns its parts and passes messages between them.
#pragma once

#include "care/PackageCare.h"
#include "control/ControlHost.h"
#include "control/ListColumns.h"
#include "controller/PackageController.h"
#include "DocumentSelection.h"
#include "earlier/PackageVersions.h"
#include "MainCommands.h"
#include "MainLayout.h"
#include "MainPages.h"
#include "news/NewsBar.h"
#include "window/StatusBar.h"
#include "window/Window.h"

#include <shellapi.h>

#include <string>

namespace viewer {

class MainWindow : public Window, private PackageView {
public:
    /// Where the viewer keeps its settings, below HKEY_CURRENT_USER.
    static constexpr wchar_t kSettingsKey[] = L"Software\\MXOVDocView\\Viewer";

    /// The program's name in titles and message boxes.
    static constexpr wchar_t kProgramName[] = L"MXOV Viewer";

    /// Store and keeper outlive the window.
    MainWindow(SessionStore& sessions, VersionKeeper& versions)
        : m_packages(*this, m_control, sessions, versions, kSettingsKey),
          m_versions(*this, m_packages, versions) {}

    /// Creates the window and the control in it, hidden. Returns a message for the user, empty on
    /// success.
    [[nodiscard]] std::wstring Create();

    /// Shows the window, maximised when it was at the end of the last run and `show` asks for nothing
    /// special.
    void Show(int show);

    [[nodiscard]] PackageController& Packages() { return m_packages; }

    /// Passes keyboard messages to the accelerators, the progress window and the control; true when one of
    /// them has handled it.
    [[nodiscard]] bool PreTranslate(MSG& message);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    [[nodiscard]] HWND Frame() const override { return Handle(); }
    void OnCatalogueLoaded() override;
    void OnPackageChanged() override;
    void OnPackageClosing() override;
    void OnNewsChanged() override;
    void ShowStatus(const std::wstring& text) override;
    void ShowNote(const std::wstring& text) override { m_status.ShowNote(text); }
    void ShowError(const std::wstring& text) override;

    bool OnCreate();
    void OnDropFiles(HDROP drop);
    void OnActivate(bool active, HWND other);
    void PassFocusOn();
    void OnTimer(UINT_PTR timer);
    void OnLookChanged(UINT message, WPARAM wParam, LPARAM lParam);
    void OnDpiChanged(UINT dpi, const RECT& suggested);
    void OnClose();
    void Leave();
    bool OnOwnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    void ShowControl(bool shown);
    void ShowTitle();
    void ShowPackageStatus();
    bool WrapTabFocus(const MSG& message);
    [[nodiscard]] bool IsOfFrame(HWND window) const;

    MainPages m_pages;
    NewsBar m_news;
    StatusBar m_status;
    HACCEL m_accelerators = nullptr;
    HWND m_lastFocus = nullptr;
    bool m_maximised = false; // at the end of the last run
    bool m_isClosing = false;
    ControlHost m_control;
    MainLayout m_layout{*this, m_control, m_news, m_pages, m_status};
    ListColumns m_columns{kSettingsKey};
    PackageController m_packages;
    DocumentSelection m_selection{m_control, m_pages};
    PackageCare m_care{*this, m_packages};
    PackageVersions m_versions;
    MainCommands m_commands{*this, m_control, m_news, m_pages, m_packages, m_care, m_versions, m_selection};
};

} // namespace viewer
