#include "care/DifferencesDialog.h"

#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/ReportList.h"
#include "window/Window.h"

namespace viewer {

namespace {

constexpr int kChangeWidth = 80; // of its column, at 96 dots per inch
constexpr int kNameWidth = 210;

struct Differences {
    const std::wstring& summary;
    const std::vector<DifferenceLine>& lines;
};

HWND DifferencesList(HWND dialog) {
    return GetDlgItem(dialog, IDC_DIFFERENCES_LIST);
}

void FillDialog(HWND dialog, const Differences& differences) {
    CentreOn(dialog, GetWindow(dialog, GW_OWNER));
    SetDlgItemTextW(dialog, IDC_DIFFERENCES_SUMMARY, differences.summary.c_str());
    AddReportColumns(DifferencesList(dialog), {{Text(IDS_COLUMN_CHANGE), kChangeWidth},
                                               {Text(IDS_COLUMN_WHAT), kNameWidth},
                                               {Text(IDS_COLUMN_DETAILS)}});
    SetWindowTextW(dialog, Text(IDS_COMPARE_TITLE).c_str());
    SetWindowTextW(DifferencesList(dialog), Text(IDS_DIFFERENCES).c_str());
    SetDlgItemTextW(dialog, IDCANCEL, Text(IDS_CLOSE).c_str());
    FillReport(DifferencesList(dialog), differences.lines.size(), 0);
}

// The first line of the details is enough in the list.
std::wstring ColumnText(const DifferenceLine& line, int column) {
    if (column < 2) {
        return column == 0 ? line.kind : line.name;
    }
    return line.details.substr(0, line.details.find(L'\r'));
}

void AnswerList(HWND dialog, const Differences& differences, NMHDR& header) {
    if (header.idFrom != IDC_DIFFERENCES_LIST) {
        return;
    }
    if (header.code == LVN_GETDISPINFOW) {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
        AnswerText(item,
                   ColumnText(differences.lines.at(static_cast<std::size_t>(item.iItem)), item.iSubItem));
    } else if (header.code == LVN_ITEMCHANGED) {
        const int line = SelectedLine(header.hwndFrom);
        SetDlgItemTextW(dialog, IDC_DIFFERENCES_DETAILS,
                        line < 0 ? L""
                                 : differences.lines.at(static_cast<std::size_t>(line)).details.c_str());
    }
}

INT_PTR CALLBACK DifferencesProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        const auto* differences = reinterpret_cast<const Differences*>(GetWindowLongPtrW(dialog, DWLP_USER));
        switch (message) {
        case WM_INITDIALOG:
            SetWindowLongPtrW(dialog, DWLP_USER, lParam);
            FillDialog(dialog, *reinterpret_cast<const Differences*>(lParam));
            return TRUE;
        case WM_NOTIFY:
            if (differences) {
                AnswerList(dialog, *differences, *reinterpret_cast<NMHDR*>(lParam));
            }
            return TRUE;
        case WM_COMMAND:
            return LOWORD(wParam) == IDCANCEL && EndDialog(dialog, IDCANCEL);
        default:
            return FALSE;
        }
    } catch (...) {
        return TRUE; // out of memory: the dialog stays as it is
    }
}

} // namespace

void ShowDifferences(HWND owner, const std::wstring& summary, const std::vector<DifferenceLine>& lines) {
    const Differences differences = {summary, lines};
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_DIFFERENCES), owner, DifferencesProcedure,
                    reinterpret_cast<LPARAM>(&differences));
}

} // namespace viewer
