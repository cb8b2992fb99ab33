#include "preview/HistoryPane.h"

#include "texts/Texts.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <algorithm>
#include <iterator>

#include <commctrl.h>

namespace viewer {

namespace {

constexpr wchar_t kHistoryClass[] = L"MXOVHistoryPane";
constexpr int kListId = 100;
constexpr int kRemarksId = 101;
// At 96 dots per inch.
constexpr int kHistoryMargin = 16;
constexpr int kHistoryGap = 6;
constexpr int kRemarksHeight = 56;
constexpr int kLabelGap = 4;
constexpr int kLeastRemarks = 120; // width of the column
constexpr int kCellPadding = 14;   // that a list view adds to a text

struct Column {
    UINT title;
    std::wstring HistoryLine::*text;
    int width; // at least, at 96 dots per inch; 0 for the column that receives the rest
};

constexpr Column kColumns[] = {
    {IDS_COLUMN_TIME, &HistoryLine::time, 130},
    {IDS_COLUMN_OPERATION, &HistoryLine::operation, 80},
    {IDS_COLUMN_BY, &HistoryLine::by, 100},
    {IDS_COLUMN_REMARKS, &HistoryLine::remarks, 0},
};

} // namespace

bool HistoryPane::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kHistoryClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, Text(IDS_PAGE_HISTORY).c_str(),
                          WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void HistoryPane::Show(std::vector<HistoryLine> lines) {
    if (lines == m_lines) {
        return;
    }
    m_lines = std::move(lines);
    ListView_SetItemCount(m_list, static_cast<int>(m_lines.size()));
    ListView_SetItemState(m_list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(m_list, 0, FALSE);
    ShowRemarks();
}

LRESULT HistoryPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return CreateParts() ? 0 : -1;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_ERASEBKGND: {
        RECT area = {};
        GetClientRect(Handle(), &area);
        Fill(reinterpret_cast<HDC>(wParam), area, CurrentPalette().page);
        return TRUE;
    }
    case WM_CTLCOLORSTATIC:
        if (reinterpret_cast<HWND>(lParam) == m_label) {
            const Palette palette = CurrentPalette();
            SetTextColor(reinterpret_cast<HDC>(wParam), palette.text);
            SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
            SetDCBrushColor(reinterpret_cast<HDC>(wParam), palette.page);
            return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
        }
        return Default(message, wParam, lParam);
    case WM_NOTIFY:
        switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
        case LVN_GETDISPINFOW:
            OnTextWanted(reinterpret_cast<NMLVDISPINFOW*>(lParam)->item);
            break;
        case LVN_ITEMCHANGED:
            ShowRemarks();
            break;
        default:
            break;
        }
        return 0;
    default:
        return Default(message, wParam, lParam);
    }
}

bool HistoryPane::CreateParts() {
    const auto create = [this](const wchar_t* className, const std::wstring& name, DWORD style, int id) {
        const HWND part = CreateWindowExW(
            WS_EX_CLIENTEDGE, className, name.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0,
            Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
        SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
        return part;
    };
    m_font = MakeMessageFont(Dpi());
    m_list =
        create(WC_LISTVIEWW, Text(IDS_PAGE_HISTORY),
               LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER, kListId);
    m_label = CreateWindowExW(0, L"STATIC", Text(IDS_REMARKS_OF_ENTRY).c_str(), WS_CHILD | WS_VISIBLE, 0, 0,
                              0, 0, Handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_label, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    m_remarks = create(L"EDIT", {}, ES_MULTILINE | ES_READONLY, kRemarksId);
    ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    AddColumns();
    return m_list && m_remarks;
}

void HistoryPane::OnMetricsChanged() {
    common::UniqueFont font = MakeMessageFont(Dpi());
    for (const HWND part : {m_list, m_label, m_remarks}) {
        SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    }
    m_font = std::move(font);
    Arrange();
}

void HistoryPane::AddColumns() {
    for (int i = 0; i < static_cast<int>(std::size(kColumns)); ++i) {
        std::wstring title = Text(kColumns[i].title);
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT;
        column.pszText = title.data();
        SendMessageW(m_list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

void HistoryPane::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    InflateRect(&area, -Scale(kHistoryMargin), -Scale(kHistoryMargin));
    const int width = std::max(0L, area.right - area.left);
    const int height = std::max(0L, area.bottom - area.top);
    const int remarks = std::min(Scale(kRemarksHeight), height);
    const int label =
        WrappedHeight(Handle(), m_font.get(), Text(IDS_REMARKS_OF_ENTRY), width) + Scale(kLabelGap);
    const int list = std::max(0, height - remarks - label - Scale(kHistoryGap));
    MoveWindow(m_list, area.left, area.top, width, list, TRUE);
    MoveWindow(m_label, area.left, area.top + height - remarks - label, width, label, TRUE);
    MoveWindow(m_remarks, area.left, area.top + height - remarks, width, remarks, TRUE);
    FitColumns(width);
}

// The remarks receive the rest of the width, less a vertical scroll bar.
void HistoryPane::FitColumns(int width) {
    int rest =
        width - GetSystemMetricsForDpi(SM_CXVSCROLL, Dpi()) - 2 * GetSystemMetricsForDpi(SM_CXEDGE, Dpi());
    for (int i = 0; i < static_cast<int>(std::size(kColumns)); ++i) {
        const int least = kColumns[i].width ? Scale(kColumns[i].width) : std::max(rest, Scale(kLeastRemarks));
        const int title = TextSize(Handle(), m_font.get(), Text(kColumns[i].title)).cx + Scale(kCellPadding);
        const int wanted = std::max(least, title);
        ListView_SetColumnWidth(m_list, i, wanted);
        rest -= wanted;
    }
}

void HistoryPane::OnTextWanted(LVITEMW& item) const {
    const auto row = static_cast<std::size_t>(item.iItem);
    if ((item.mask & LVIF_TEXT) && row < m_lines.size() &&
        item.iSubItem < static_cast<int>(std::size(kColumns))) {
        lstrcpynW(item.pszText, (m_lines[row].*kColumns[item.iSubItem].text).c_str(), item.cchTextMax);
    }
}

void HistoryPane::ShowRemarks() {
    const int row = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    const bool selected = row >= 0 && static_cast<std::size_t>(row) < m_lines.size();
    SetWindowTextW(m_remarks, selected ? m_lines[static_cast<std::size_t>(row)].remarks.c_str() : L"");
}

} // namespace viewer
