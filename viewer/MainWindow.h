// The viewer's window: menus, the document control at the left, the preview beside it, the status bar below.
#pragma once

#include "control/ControlHost.h"
#include "package/PackageSession.h"
#include "package/RecentPackages.h"
#include "package/UnpackTask.h"
#include "preview/PreviewPane.h"
#include "window/ProgressDialog.h"
#include "window/Window.h"

#include <shellapi.h>

#include <memory>
#include <string>

namespace viewer {

class MainWindow : public Window {
public:
    /// Where the viewer keeps its settings, below HKEY_CURRENT_USER.
    static constexpr wchar_t kSettingsKey[] = L"Software\\MXOVDocView\\Viewer";

    /// The program's name in titles and message boxes.
    static constexpr wchar_t kProgramName[] = L"MXOV Viewer";

    MainWindow();

    /// Creates the window and the control in it, hidden. Returns what went wrong, in words for the user;
    /// empty on success.
    [[nodiscard]] std::wstring Create();

    /// Shows the window, maximised when it was at the end of the last run and `show` asks for nothing
    /// special.
    void Show(int show);

    /// Opens a package in place of the open one. What is wrong with it is told to the user, and the open
    /// package stays as it was.
    void OpenPackage(const std::wstring& path);

    /// Offers to continue with what viewers that did not end properly left. True when the user chose one,
    /// which is then open.
    bool OfferLeftWork();

    /// Gives keyboard messages to the accelerators, the progress window and the control; true when one took
    /// it.
    [[nodiscard]] bool PreTranslate(MSG& message);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    static constexpr UINT kUnpacked = WM_APP + 1;

    bool OnCreate();
    void OnSize();
    [[nodiscard]] bool IsOfFrame(HWND window) const;
    bool MoveFocusRound(const MSG& message);
    void OnMinMaxInfo(MINMAXINFO& info) const;
    void OnInitMenuPopup(HMENU menu);
    void OnCommand(int command);
    void OnDropFiles(HDROP drop);
    void OnActivate(bool active);
    void OnTimer(UINT_PTR timer);
    void OnProgress();
    void OnWatch();
    void OnUnpacked();
    void OnClose();

    void BrowseForPackage();
    void OpenRecent(std::size_t index);
    void FillRecentMenu(HMENU menu) const;
    void CancelOpening();
    void SwitchTo(std::unique_ptr<PackageSession> session);
    bool ClosePackage();
    bool CloseInControl();
    void CloseProperties() const;
    bool RecordSave();
    bool SettleFailedSave();
    bool SettleOpenDocuments();
    bool SettleOthersChanges(bool declined);
    void SavePackage();
    bool SaveCopy();
    void ShowPackage();
    void ShowControl(bool shown);
    void ShowSaved();
    void ShowStatus(const std::wstring& text, const std::wstring& facts);
    void ShowHelp();
    void ShowAbout();
    void Complain(const std::wstring& text);
    [[nodiscard]] SIZE ControlSize() const;
    [[nodiscard]] SIZE FrameSize(int previewWidth, int leastHeight) const;
    [[nodiscard]] bool IsOpening() const { return m_task != nullptr; }

    RecentPackages m_recent;
    PreviewPane m_preview;
    HWND m_status = nullptr;
    HACCEL m_accelerators = nullptr;
    HWND m_lastFocus = nullptr;
    bool m_maximised = false; // at the end of the last run
    bool m_closing = false;   // the control may be asking a question
    bool m_reopening = false; // what is being unpacked is the open package
    std::wstring m_facts;     // number and size of the open package's files
    std::unique_ptr<PackageSession> m_session;
    ControlHost m_control;
    std::unique_ptr<UnpackTask> m_task;
    std::unique_ptr<ProgressDialog> m_progress;
};

} // namespace viewer
