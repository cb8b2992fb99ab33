#include "window/ReportList.h"

#include "window/Window.h"

#include <algorithm>

namespace viewer {

void AddReportColumns(HWND list, const std::vector<ReportColumn>& columns) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    RECT area = {};
    GetClientRect(list, &area);
    const UINT dpi = GetDpiForWindow(list);
    int rest = area.right - GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring title = columns[i].title;
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = title.data();
        column.cx = i + 1 < columns.size() ? ScaleFor(dpi, columns[i].width) : rest;
        rest -= column.cx;
        SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

void ScaleReportColumns(HWND list, UINT from, UINT to) {
    for (int i = 0; i < Header_GetItemCount(ListView_GetHeader(list)); ++i) {
        const int width = ListView_GetColumnWidth(list, i);
        ListView_SetColumnWidth(list, i, MulDiv(width, static_cast<int>(to), static_cast<int>(from)));
    }
}

void AnswerText(LVITEMW& item, const std::wstring& text) {
    if (item.mask & LVIF_TEXT) {
        lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
    }
}

void FillReport(HWND list, std::size_t count, std::size_t selected) {
    ListView_SetItemCount(list, static_cast<int>(count));
    if (count > 0) {
        const int line = static_cast<int>(std::min(selected, count - 1));
        ListView_SetItemState(list, line, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ListView_EnsureVisible(list, line, FALSE);
    }
}

int SelectedLine(HWND list) {
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

} // namespace viewer
