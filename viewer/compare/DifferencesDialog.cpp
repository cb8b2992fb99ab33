#include "compare/DifferencesDialog.h"

#include "compare/TextPairDialog.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/ReportList.h"
#include "window/Window.h"

#include <utility>

namespace viewer {

namespace {

constexpr int kChangeWidth = 200; // of its column, at 96 dots per inch
constexpr int kNameWidth = 180;

class DifferencesDialog {
public:
    DifferencesDialog(const ComparedPackages& packages, const DifferenceReport& report)
        : m_packages(packages), m_report(report), m_hasNoise(report.lines.empty()) {}

    void Show(HWND owner) {
        DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_DIFFERENCES), owner, Procedure,
                        reinterpret_cast<LPARAM>(this));
    }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        try {
            if (message == WM_INITDIALOG) {
                SetWindowLongPtrW(dialog, DWLP_USER, lParam);
                reinterpret_cast<DifferencesDialog*>(lParam)->OnInit(dialog);
                return TRUE;
            }
            auto* self = reinterpret_cast<DifferencesDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
            return self && self->OnMessage(message, wParam, lParam);
        } catch (...) {
            return TRUE; // out of memory: the dialog stays as it is
        }
    }

    void OnInit(HWND dialog) {
        m_dialog = dialog;
        m_dpi = GetDpiForWindow(dialog);
        CentreOn(dialog, GetWindow(dialog, GW_OWNER));
        ShowFocusInDialog(dialog);
        SetWindowTextW(dialog, Text(IDS_COMPARE_TITLE).c_str());
        SetDlgItemTextW(dialog, IDC_DIFFERENCES_SUMMARY, m_packages.summary.c_str());
        AddReportColumns(List(), {{Text(IDS_COLUMN_CHANGE), kChangeWidth},
                                  {Text(IDS_COLUMN_WHAT), kNameWidth},
                                  {Text(IDS_COLUMN_DETAILS)}});
        SetWindowTextW(List(), Text(IDS_DIFFERENCES).c_str());
        SetDlgItemTextW(dialog, IDC_DIFFERENCES_NOISE, Text(IDS_WITH_NOISE).c_str());
        EnableWindow(GetDlgItem(dialog, IDC_DIFFERENCES_NOISE), !m_report.noise.empty());
        CheckDlgButton(dialog, IDC_DIFFERENCES_NOISE, m_hasNoise ? BST_CHECKED : BST_UNCHECKED);
        SetDlgItemTextW(dialog, IDOK, Text(IDS_SIDE_BY_SIDE).c_str());
        SetDlgItemTextW(dialog, IDCANCEL, Text(IDS_CLOSE).c_str());
        Fill();
    }

    void Fill() {
        m_lines = m_report.lines;
        if (m_hasNoise) {
            m_lines.insert(m_lines.end(), m_report.noise.begin(), m_report.noise.end());
        }
        FillReport(List(), m_lines.size(), 0);
        InvalidateRect(List(), nullptr, TRUE);
        ShowSelected();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<NMHDR*>(lParam));
            return true;
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam));
        case WM_DPICHANGED: // the system scales everything else
            ScaleReportColumns(List(), std::exchange(m_dpi, HIWORD(wParam)), HIWORD(wParam));
            return false;
        default:
            return false;
        }
    }

    void OnNotify(NMHDR& header) {
        if (header.idFrom != IDC_DIFFERENCES_LIST) {
            return;
        }
        if (header.code == LVN_GETDISPINFOW) {
            LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
            AnswerText(item, ColumnText(m_lines.at(static_cast<std::size_t>(item.iItem)), item.iSubItem));
        } else if (header.code == LVN_ITEMCHANGED) {
            ShowSelected();
        } else if (header.code == NM_DBLCLK) {
            ShowTexts();
        }
    }

    bool OnCommand(int command) {
        switch (command) {
        case IDOK:
            ShowTexts();
            return true;
        case IDCANCEL:
            return EndDialog(m_dialog, IDCANCEL);
        case IDC_DIFFERENCES_NOISE:
            m_hasNoise = IsDlgButtonChecked(m_dialog, IDC_DIFFERENCES_NOISE) == BST_CHECKED;
            Fill();
            return true;
        default:
            return false;
        }
    }

    // The first line of the details is enough in the list.
    static std::wstring ColumnText(const DifferenceLine& line, int column) {
        if (column < 2) {
            return column == 0 ? line.kind : line.name;
        }
        return line.details.substr(0, line.details.find(L'\r'));
    }

    void ShowSelected() const {
        const DifferenceLine* line = Selected();
        SetDlgItemTextW(m_dialog, IDC_DIFFERENCES_DETAILS, line ? line->details.c_str() : L"");
        EnableWindow(GetDlgItem(m_dialog, IDOK), line && line->textKind);
    }

    void ShowTexts() const {
        const DifferenceLine* line = Selected();
        if (line && line->textKind) {
            ShowTextPair(m_dialog, m_packages, *line, m_hasNoise);
        }
    }

    [[nodiscard]] const DifferenceLine* Selected() const {
        const int line = SelectedLine(List());
        return line < 0 ? nullptr : &m_lines.at(static_cast<std::size_t>(line));
    }

    [[nodiscard]] HWND List() const { return GetDlgItem(m_dialog, IDC_DIFFERENCES_LIST); }

    const ComparedPackages& m_packages;
    const DifferenceReport& m_report;
    HWND m_dialog = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
    bool m_hasNoise; // the list shows what differs in numbers, blanks and comments alone
    std::vector<DifferenceLine> m_lines;
};

} // namespace

void ShowDifferences(HWND owner, const ComparedPackages& packages, const DifferenceReport& report) {
    DifferencesDialog(packages, report).Show(owner);
}

} // namespace viewer
