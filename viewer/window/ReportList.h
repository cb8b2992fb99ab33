// Lists of lines in columns whose texts the owner has.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

namespace viewer {

/// The width is for 96 dots per inch; that of the last column is what the others leave.
struct ReportColumn {
    std::wstring title;
    int width = 0;
};

/// Adds the columns of a list.
void AddReportColumns(HWND list, const std::vector<ReportColumn>& columns);

/// Widens the columns for other dots per inch.
void ScaleReportColumns(HWND list, UINT from, UINT to);

/// Answers the list's question for a text.
void AnswerText(LVITEMW& item, const std::wstring& text);

/// Sets the number of lines and selects one; the last when there are fewer.
void FillReport(HWND list, std::size_t count, std::size_t selected);

/// The selected line; -1 for none.
[[nodiscard]] int SelectedLine(HWND list);

} // namespace viewer
