#include "MainWindow.h"

#include "common/ScopedFlag.h"
#include "common/SystemError.h"
#include "control/DpiContext.h"
#include "MainMenu.h"
#include "news/NewsButtons.h"
#include "package/PackageSummary.h"
#include "package/Paths.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/DroppedFiles.h"
#include "window/WindowPlacement.h"

#include <vector>

namespace viewer {

namespace {

constexpr wchar_t kFrameClass[] = L"MXOVViewerFrame";
constexpr UINT kSelected = WM_APP + 20;
constexpr UINT kDocumentRead = WM_APP + 21;

} // namespace

std::wstring MainWindow::Create() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass = {};
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_VIEWER));
    windowClass.hIconSm = static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(IDI_VIEWER), IMAGE_ICON,
                                                        GetSystemMetrics(SM_CXSMICON),
                                                        GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    windowClass.hbrBackground = GetSysColorBrush(COLOR_3DSHADOW);
    windowClass.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN);
    windowClass.lpszClassName = kFrameClass;
    AllowMixedDpi();
    if (!Window::Create(windowClass, WS_EX_ACCEPTFILES, kProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        nullptr)) {
        return Text(IDS_NO_WINDOW, {common::SystemErrorText(GetLastError())});
    }
    TranslateMenu(GetMenu(Handle()));
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_MAIN));
    if (std::wstring error = m_control.Create(Handle(), IDC_CONTROL); !error.empty()) {
        return error;
    }
    m_control.Notify(Handle(), {PackageController::kControlChanged, PackageController::kAdding,
                                PackageController::kAdded, kSelected});
    m_selection.Start(Handle(), kDocumentRead);
    m_columns.Apply(m_control.Content());
    const SIZE usual = m_layout.UsualSize();
    SetWindowPos(Handle(), nullptr, 0, 0, usual.cx, usual.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_maximised = RestorePlacement(Handle(), kSettingsKey);
    OnPackageChanged();
    return {};
}

void MainWindow::Show(int show) {
    ShowFocusIn(Handle());
    ShowWindow(Handle(), m_maximised && show == SW_SHOWNORMAL ? SW_SHOWMAXIMIZED : show);
    UpdateWindow(Handle());
}

bool MainWindow::PreTranslate(MSG& message) {
    if (m_packages.PreTranslate(message)) {
        return true;
    }
    if (IsOfFrame(message.hwnd) && TranslateAcceleratorW(Handle(), m_accelerators, &message)) {
        return true;
    }
    if (message.hwnd == Handle()) {
        return false;
    }
    return m_care.PreTranslate(message) || m_news.PreTranslate(message) || m_pages.PreTranslate(message) ||
           m_control.TranslateAccelerator(message) || WrapTabFocus(message);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return OnCreate() ? 0 : -1;
    case WM_SIZE:
        m_layout.Arrange();
        return 0;
    case WM_GETMINMAXINFO: {
        const SIZE least = m_layout.LeastSize();
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
        return 0;
    }
    case WM_INITMENUPOPUP:
        UpdateMenu(reinterpret_cast<HMENU>(wParam), m_packages);
        return 0;
    case WM_COMMAND:
        m_commands.Run(LOWORD(wParam));
        return 0;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_ACTIVATE:
        OnActivate(LOWORD(wParam) != WA_INACTIVE, reinterpret_cast<HWND>(lParam));
        return 0;
    case WM_MOVE:
        m_control.UpdatePlace();
        return 0;
    case WM_SETFOCUS:
        PassFocusOn();
        return 0;
    case WM_TIMER:
        OnTimer(wParam);
        return 0;
    case WM_DPICHANGED:
        OnDpiChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
        OnLookChanged(message, wParam, lParam);
        return Default(message, wParam, lParam);
    case WM_QUERYENDSESSION:
        m_packages.CancelOpening();
        return m_packages.Close();
    case WM_CLOSE:
        OnClose();
        return 0;
    case WM_DESTROY:
        m_control.Destroy();
        PostQuitMessage(0);
        return 0;
    default:
        return OnOwnMessage(message, wParam, lParam) ? 0 : Default(message, wParam, lParam);
    }
}

// Messages between the parts of the window; true when it was one.
bool MainWindow::OnOwnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const PackageSession* session = m_packages.Session();
    if (message == kSelected && session) {
        m_selection.Select(*session, {static_cast<int>(wParam), static_cast<int>(lParam)});
    } else if (message == kDocumentRead) {
        m_selection.OnRead();
    } else if (m_packages.OnMessage(message)) {
        m_selection.Refresh(m_packages.Session()); // any change may concern it
    } else {
        return false;
    }
    return true;
}

bool MainWindow::OnCreate() {
    return m_status.Create(Handle(), IDC_STATUS) && m_news.Create(Handle(), IDC_NEWS) &&
           m_pages.Create(Handle(), IDC_PAGES);
}

void MainWindow::OnDropFiles(HDROP drop) {
    const std::optional<AttachMode> mode = AttachModeByKey();
    const std::vector<std::wstring> files = TakeDroppedFiles(drop);
    SetForegroundWindow(Handle());
    m_packages.TakeFiles(files, mode);
}

void MainWindow::OnClose() {
    if (m_packages.IsPrompting()) {
        return;
    }
    m_packages.CancelOpening();
    const common::ScopedFlag closing(m_isClosing);
    if (!m_packages.Close()) {
        return;
    }
    Leave();
    if (!m_pages.EndPreview()) {
        // Windows of a thread that does not answer cannot be destroyed. The next start removes what is left.
        TerminateProcess(GetCurrentProcess(), 0);
    }
    DestroyWindow(Handle());
}

// The window goes before the package is cleaned up.
void MainWindow::OnPackageClosing() {
    if (m_isClosing) {
        Leave();
    }
}

void MainWindow::Leave() {
    if (IsWindowVisible(Handle())) {
        StorePlacement(Handle(), kSettingsKey);
        m_columns.Store(m_control.Content());
        ShowWindow(Handle(), SW_HIDE);
    }
}

// The documents are what is waited for; picture and history follow.
void MainWindow::OnCatalogueLoaded() {
    ShowControl(true);
    m_control.Paint();
}

void MainWindow::OnPackageChanged() {
    const PackageSession* session = m_packages.Session();
    m_care.OnPackageChanged();
    m_versions.OnPackageChanged();
    if (m_isClosing && !session) {
        return; // nobody sees the page of a window without a package any more
    }
    ShowTitle();
    m_selection.Refresh(session);
    if (!session) {
        m_pages.ShowStart(m_packages.Recent().Items());
    } else {
        m_pages.ShowPackage(ReadPackageSummary(session->FolderWithSeparator(), session->PackageFile()),
                            ReadHistory(session->FolderWithSeparator()));
    }
    ShowControl(session != nullptr);
    ShowPackageStatus();
}

void MainWindow::OnNewsChanged() {
    ShowTitle();
    const PackageNews& news = m_packages.News();
    m_news.Show(news.text, NewsButtons(news.actions));
    m_layout.Arrange();
}

void MainWindow::ShowTitle() {
    std::wstring title = kProgramName;
    if (const PackageSession* session = m_packages.Session()) {
        const std::wstring name = FileName(session->PackageFile());
        title = (m_packages.IsShowingVersion() ? Text(IDS_VERSION_TITLE, {name}) : name) + L" - " + title;
    }
    SetWindowTextW(Handle(), (m_packages.IsUnsaved() ? L"*" + title : title).c_str());
}

void MainWindow::OnTimer(UINT_PTR timer) {
    if (timer == StatusBar::kNoteTimer) {
        ShowPackageStatus();
    } else {
        m_packages.OnTimer();
    }
}

void MainWindow::ShowPackageStatus() {
    const PackageSession* session = m_packages.Session();
    ShowStatus(session ? session->PackageFile() : Text(IDS_READY));
}

void MainWindow::ShowStatus(const std::wstring& text) {
    const PackageSession* session = m_packages.IsOpening() ? nullptr : m_packages.Session();
    m_status.Show(text, session ? CountsText(session->Entries()) : std::wstring());
}

void MainWindow::ShowError(const std::wstring& text) {
    MessageBoxW(Handle(), text.c_str(), kProgramName, MB_OK | MB_ICONWARNING);
}

} // namespace viewer
