#include "MainPages.h"

#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Painting.h"

#include <algorithm>

#include <commctrl.h>

namespace viewer {

namespace {

constexpr wchar_t kPagesClass[] = L"MXOVPages";
constexpr UINT kTitles[] = {IDS_PAGE_PICTURE, IDS_PAGE_HISTORY, IDS_PAGE_DOCUMENT};

} // namespace

bool MainPages::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kPagesClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, Text(IDS_PACKAGE).c_str(),
                          WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void MainPages::ShowPackage(PackageSummary summary, std::vector<HistoryLine> history) {
    m_preview.Show(std::move(summary));
    m_history.Show(std::move(history));
    if (!HasTabs()) {
        Select(Page::Picture);
    }
}

void MainPages::ShowStart(const std::vector<std::wstring>& recent) {
    m_preview.Clear();
    m_start.ShowRecent(recent);
    m_document.Show(nullptr);
    TabCtrl_SetCurSel(m_tabs, 0);
    ShowWindow(m_tabs, SW_HIDE);
    Arrange();
    ShowSelected();
}

void MainPages::Select(Page page) {
    ShowWindow(m_tabs, SW_SHOWNA);
    TabCtrl_SetCurSel(m_tabs, static_cast<int>(page));
    Arrange();
    ShowSelected();
}

void MainPages::TakeFocus() {
    if (HasTabs()) {
        SetFocus(m_tabs);
    } else {
        m_start.TakeFocus();
    }
}

bool MainPages::PreTranslate(MSG& message) {
    return !m_start.WantsKey(message) && TranslateKeyInside(Handle(), message);
}

LRESULT MainPages::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return CreateTabs() && m_start.Create(Handle(), IDC_START) &&
                       m_preview.Create(Handle(), IDC_PREVIEW) && m_history.Create(Handle(), IDC_HISTORY) &&
                       m_document.Create(Handle(), IDC_DOCUMENT)
                   ? 0
                   : -1;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(TCN_SELCHANGE)) {
            ShowSelected();
        }
        return 0;
    default:
        return Default(message, wParam, lParam);
    }
}

bool MainPages::CreateTabs() {
    m_font = MakeMessageFont(Dpi());
    m_tabs = CreateWindowExW(0, WC_TABCONTROLW, Text(IDS_PAGES).c_str(),
                             WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP, 0, 0, 0, 0, Handle(),
                             reinterpret_cast<HMENU>(IDC_TABS), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_tabs, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    for (int i = 0; i < static_cast<int>(std::size(kTitles)); ++i) {
        std::wstring title = Text(kTitles[i]);
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = title.data();
        SendMessageW(m_tabs, TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    return m_tabs != nullptr;
}

void MainPages::OnMetricsChanged() {
    m_font = MakeMessageFont(Dpi());
    SendMessageW(m_tabs, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    m_start.ChangeDpi(Dpi());
    m_preview.ChangeDpi(Dpi());
    m_history.ChangeDpi(Dpi());
    m_document.ChangeDpi(Dpi());
    Arrange();
}

// The pages fill what the tabs leave.
void MainPages::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    int top = 0;
    if (HasTabs()) {
        RECT inside = area;
        TabCtrl_AdjustRect(m_tabs, FALSE, &inside);
        top = std::min(inside.top, area.bottom);
    }
    MoveWindow(m_tabs, 0, 0, area.right, top, TRUE);
    MoveWindow(m_start.Handle(), 0, 0, area.right, area.bottom, TRUE);
    for (const HWND page : Pages()) {
        MoveWindow(page, 0, top, area.right, std::max(0L, area.bottom - top), TRUE);
    }
}

void MainPages::ShowSelected() {
    const std::array<HWND, 3> pages = Pages();
    for (int i = 0; i < static_cast<int>(pages.size()); ++i) {
        const bool shown = HasTabs() && i == TabCtrl_GetCurSel(m_tabs);
        ShowWindow(pages[static_cast<std::size_t>(i)], shown ? SW_SHOWNA : SW_HIDE);
    }
    ShowWindow(m_start.Handle(), HasTabs() ? SW_HIDE : SW_SHOWNA);
}

// In the order of their tabs.
std::array<HWND, 3> MainPages::Pages() const {
    return {m_preview.Handle(), m_history.Handle(), m_document.Handle()};
}

} // namespace viewer
