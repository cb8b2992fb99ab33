#include "window/ReportList.h"

#include <algorithm>

namespace viewer {

void AddReportColumns(HWND list, const std::vector<ReportColumn>& columns) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    RECT area = {};
    GetClientRect(list, &area);
    int rest = area.right - GetSystemMetrics(SM_CXVSCROLL);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring title = columns[i].title;
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = title.data();
        column.cx = i + 1 < columns.size() ? MulDiv(columns[i].width, static_cast<int>(GetDpiForWindow(list)),
                                                    USER_DEFAULT_SCREEN_DPI)
                                           : rest;
        rest -= column.cx;
        SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
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
