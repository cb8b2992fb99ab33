#include "MainWindow.h"

#include "common/SystemError.h"
#include "control/PropertiesWindow.h"
#include "HelpMenu.h"
#include "package/PackageSummary.h"
#include "package/Paths.h"
#include "resources/resource.h"
#include "window/DroppedFiles.h"
#include "window/FileDialog.h"
#include "window/RecentMenu.h"
#include "window/WindowPlacement.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <vector>

namespace viewer {

namespace {

constexpr wchar_t kFrameClass[] = L"MXOVViewerFrame";
constexpr int kGap = 1; // between control and preview, at 96 dots per inch
constexpr int kLeastPreview = 220;
constexpr int kUsualPreview = 620;
constexpr int kUsualHeight = 640;
constexpr int kFactsWidth = 160;
constexpr UINT_PTR kNoteTimer = 2;
constexpr UINT kNoteTime = 5000; // milliseconds

NewsBar::Button NewsButton(NewsAction action) {
    switch (action) {
    case NewsAction::Save:
        return {IDM_FILE_SAVE, L"Save"};
    case NewsAction::Reload:
        return {IDM_VIEW_REFRESH, L"Reload"};
    default:
        return {IDM_PACKAGE_COMPARE, L"Compare"};
    }
}

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
    if (!Window::Create(windowClass, WS_EX_ACCEPTFILES, kProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        nullptr)) {
        return L"The window cannot be created: " + common::SystemErrorText(GetLastError()) + L".";
    }
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_MAIN));
    if (std::wstring error = m_control.Create(Handle(), IDC_CONTROL); !error.empty()) {
        return error;
    }
    m_control.NotifyChanges(Handle(), PackageController::kControlChanged);
    m_columns.Apply(m_control.Content());
    const SIZE usual = FrameSize(kUsualPreview, kUsualHeight);
    SetWindowPos(Handle(), nullptr, 0, 0, usual.cx, usual.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_maximised = RestorePlacement(Handle(), kSettingsKey);
    OnPackageChanged();
    return {};
}

void MainWindow::Show(int show) {
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
    return m_control.TranslateAccelerator(message) || WrapTabFocus(message);
}

// Whether a window is the frame, inside it, or floats over it as the properties of a document do. Modal
// dialogs float too, but handle their messages themselves.
bool MainWindow::IsOfFrame(HWND window) const {
    return GetAncestor(window, GA_ROOTOWNER) == Handle();
}

// The control leaves Tab to its container at both ends, and no other part of the window takes the focus.
bool MainWindow::WrapTabFocus(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || !m_control.HasFocus()) {
        return false;
    }
    m_control.SetFocus(GetKeyState(VK_SHIFT) < 0);
    return true;
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return OnCreate() ? 0 : -1;
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_GETMINMAXINFO:
        OnMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    case WM_INITMENUPOPUP:
        OnInitMenuPopup(reinterpret_cast<HMENU>(wParam));
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
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
        if (m_control.IsShown()) {
            m_control.SetFocus();
        }
        return 0;
    case WM_TIMER:
        OnTimer(wParam);
        return 0;
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
        return m_packages.OnMessage(message) ? 0 : Default(message, wParam, lParam);
    }
}

bool MainWindow::OnCreate() {
    m_status =
        CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                        Handle(), reinterpret_cast<HMENU>(IDC_STATUS), GetModuleHandleW(nullptr), nullptr);
    return m_status && m_news.Create(Handle(), IDC_NEWS) && m_preview.Create(Handle(), IDC_PREVIEW);
}

void MainWindow::OnSize() {
    SendMessageW(m_status, WM_SIZE, 0, 0);
    RECT client = {};
    RECT status = {};
    GetClientRect(Handle(), &client);
    GetWindowRect(m_status, &status);
    const LONG bottom = client.bottom - (status.bottom - status.top);
    const LONG split = m_control.IsShown() ? std::min(ControlSize().cx, client.right) : 0;
    const int parts[] = {std::max<int>(0, client.right - Scale(kFactsWidth)), -1};
    SendMessageW(m_status, SB_SETPARTS, ARRAYSIZE(parts), reinterpret_cast<LPARAM>(parts));
    if (bottom <= 0) {
        return;
    }
    if (split > 0) {
        m_control.Move({0, 0, split, bottom});
    }
    const int left = split > 0 ? split + Scale(kGap) : 0;
    const int width = std::max<int>(0, client.right - left);
    const int top = std::min<int>(m_news.HeightFor(width), bottom);
    MoveWindow(m_news.Handle(), left, 0, width, top, TRUE);
    MoveWindow(m_preview.Handle(), left, top, width, bottom - top, TRUE);
}

// Never smaller than the control with a useful piece of the preview.
void MainWindow::OnMinMaxInfo(MINMAXINFO& info) const {
    if (!m_status) {
        return;
    }
    const SIZE least = FrameSize(kLeastPreview, 0);
    info.ptMinTrackSize = {least.cx, least.cy};
}

// The outer size that leaves the preview this width, and the control at least this height and all that it
// needs.
SIZE MainWindow::FrameSize(int previewWidth, int leastHeight) const {
    RECT status = {};
    GetWindowRect(m_status, &status);
    const SIZE control = ControlSize();
    RECT frame = {0, 0, control.cx + Scale(kGap + previewWidth),
                  std::max<LONG>(control.cy, Scale(leastHeight)) + status.bottom - status.top};
    AdjustWindowRectExForDpi(&frame, WS_OVERLAPPEDWINDOW, TRUE, 0, GetDpiForWindow(Handle()));
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void MainWindow::OnInitMenuPopup(HMENU menu) const {
    const bool isOpening = m_packages.IsOpening();
    EnableMenuItem(menu, IDM_FILE_OPEN, MF_BYCOMMAND | (isOpening ? MF_GRAYED : MF_ENABLED));
    for (const UINT command : {IDM_FILE_SAVE, IDM_FILE_CLOSE, IDM_VIEW_REFRESH}) {
        const bool enabled = m_packages.Session() && !isOpening;
        EnableMenuItem(menu, command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
    }
    if (IsRecentMenu(menu)) {
        FillRecentMenu(menu, m_packages.Recent().Items(), !isOpening);
    }
}

void MainWindow::OnCommand(int command) {
    switch (command) {
    case IDM_FILE_OPEN:
        BrowseForPackage();
        break;
    case IDM_FILE_SAVE:
        m_packages.Save();
        break;
    case IDM_FILE_CLOSE:
        m_packages.Close();
        break;
    case IDM_FILE_EXIT:
        SendMessageW(Handle(), WM_CLOSE, 0, 0);
        break;
    case IDM_VIEW_REFRESH:
        m_packages.Reload();
        break;
    case IDM_PACKAGE_COMPARE:
        m_packages.Compare();
        break;
    case IDM_HELP_TOPICS:
        if (const std::wstring error = ShowHelpTopics(); !error.empty()) {
            ShowError(error);
        }
        break;
    case IDM_HELP_ABOUT:
        ShowAbout(Handle(), m_control.File());
        break;
    default:
        if (command >= IDM_RECENT_FIRST && command <= IDM_RECENT_LAST) {
            OpenRecent(static_cast<std::size_t>(command - IDM_RECENT_FIRST));
        }
        break;
    }
}

void MainWindow::OnDropFiles(HDROP drop) {
    const std::optional<AttachMode> mode = AttachModeByKey();
    const std::vector<std::wstring> files = TakeDroppedFiles(drop);
    SetForegroundWindow(Handle());
    m_packages.Drop(files, mode);
}

// The focus returns to where it was inside the window.
void MainWindow::OnActivate(bool active, HWND other) {
    if (!active) {
        m_lastFocus = GetFocus();
        if (IsProperties(other, Handle())) {
            PlaceProperties(other, m_control.ScreenArea()); // the control does not know about monitors
        }
    } else if (IsChild(Handle(), m_lastFocus) && IsWindowVisible(m_lastFocus)) {
        SetFocus(m_lastFocus);
    } else {
        SetFocus(Handle());
    }
}

void MainWindow::OnClose() {
    if (m_packages.IsPrompting()) {
        return;
    }
    m_packages.CancelOpening();
    if (!m_packages.Close()) {
        return;
    }
    StorePlacement(Handle(), kSettingsKey);
    m_columns.Store(m_control.Content());
    DestroyWindow(Handle());
}

void MainWindow::BrowseForPackage() {
    CloseProperties(Handle());
    if (const std::optional<std::wstring> path = AskForPackage(Handle())) {
        m_packages.Open(*path);
    }
}

void MainWindow::OpenRecent(std::size_t index) {
    const std::vector<std::wstring>& recent = m_packages.Recent().Items();
    if (index < recent.size()) {
        m_packages.Open(std::wstring(recent[index]));
    }
}

void MainWindow::OnPackageChanged() {
    const PackageSession* session = m_packages.Session();
    ShowControl(session != nullptr);
    ShowTitle();
    if (!session) {
        m_preview.Clear();
        ShowStatus(L"Ready");
        return;
    }
    m_preview.Show(ReadPackageSummary(session->FolderWithSeparator(), session->PackageFile()));
    ShowStatus(session->PackageFile());
}

void MainWindow::OnNewsChanged() {
    ShowTitle();
    const PackageNews& news = m_packages.News();
    std::vector<NewsBar::Button> buttons;
    buttons.reserve(news.actions.size());
    for (const NewsAction action : news.actions) {
        buttons.push_back(NewsButton(action));
    }
    m_news.Show(news.text, buttons);
    OnSize();
}

void MainWindow::ShowTitle() {
    std::wstring title = kProgramName;
    if (const PackageSession* session = m_packages.Session()) {
        title = FileName(session->PackageFile()) + L" - " + title;
    }
    SetWindowTextW(Handle(), (m_packages.IsUnsaved() ? L"*" + title : title).c_str());
}

// Without a package there is nothing to attach documents to.
void MainWindow::ShowControl(bool shown) {
    if (shown == m_control.IsShown()) {
        return;
    }
    const bool focused = m_control.HasFocus();
    m_control.Show(shown);
    OnSize();
    if (shown) {
        m_control.SetFocus(); // the frame may have the focus already, and then passes none on
    } else if (focused) {
        SetFocus(Handle());
    }
}

// A note passes after a while.
void MainWindow::ShowNote(const std::wstring& text) {
    ShowStatus(text);
    SetTimer(Handle(), kNoteTimer, kNoteTime, nullptr);
}

void MainWindow::OnTimer(UINT_PTR timer) {
    if (timer != kNoteTimer) {
        m_packages.OnTimer();
        return;
    }
    const PackageSession* session = m_packages.Session();
    ShowStatus(session ? session->PackageFile() : L"Ready");
}

void MainWindow::ShowStatus(const std::wstring& text) {
    KillTimer(Handle(), kNoteTimer);
    const PackageSession* session = m_packages.IsOpening() ? nullptr : m_packages.Session();
    const std::wstring counts = session ? CountsText(session->Entries()) : std::wstring();
    SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(counts.c_str()));
}

void MainWindow::ShowError(const std::wstring& text) {
    MessageBoxW(Handle(), text.c_str(), kProgramName, MB_OK | MB_ICONWARNING);
}

// The control's natural size, or a default where it reports none.
SIZE MainWindow::ControlSize() const {
    const SIZE natural = m_control.NaturalSize();
    return {natural.cx > 0 ? natural.cx : Scale(372), natural.cy > 0 ? natural.cy : Scale(480)};
}

} // namespace viewer
