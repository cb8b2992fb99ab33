#include "compare/DifferencesDialog.h"

#include "compare/TextPairDialog.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Dialog.h"
#include "window/ReportList.h"

namespace viewer {

namespace {

constexpr int kChangeWidth = 200; // of its column, at 96 dots per inch
constexpr int kNameWidth = 180;

class DifferencesDialog : public Dialog {
public:
    DifferencesDialog(const ComparedPackages& packages, const DifferenceReport& report)
        : m_packages(packages), m_report(report), m_hasNoise(report.lines.empty()) {}

    void Show(HWND owner) { ShowModal(IDD_DIFFERENCES, owner); }

private:
    bool OnInit() override {
        SetWindowTextW(Handle(), Text(IDS_COMPARE_TITLE).c_str());
        SetItemText(IDC_DIFFERENCES_SUMMARY, m_packages.summary);
        AddReportColumns(List(), {{Text(IDS_COLUMN_CHANGE), kChangeWidth},
                                  {Text(IDS_COLUMN_WHAT), kNameWidth},
                                  {Text(IDS_COLUMN_DETAILS)}});
        SetWindowTextW(List(), Text(IDS_DIFFERENCES).c_str());
        SetItemText(IDC_DIFFERENCES_NOISE, Text(IDS_WITH_NOISE));
        EnableWindow(Item(IDC_DIFFERENCES_NOISE), !m_report.noise.empty());
        CheckDlgButton(Handle(), IDC_DIFFERENCES_NOISE, m_hasNoise ? BST_CHECKED : BST_UNCHECKED);
        SetItemText(IDOK, Text(IDS_SIDE_BY_SIDE));
        SetItemText(IDCANCEL, Text(IDS_CLOSE));
        Fill();
        return true;
    }

    void OnDpiChanged(UINT before, UINT after) override { ScaleReportColumns(List(), before, after); }

    void Fill() {
        m_lines = m_report.lines;
        if (m_hasNoise) {
            m_lines.insert(m_lines.end(), m_report.noise.begin(), m_report.noise.end());
        }
        FillReport(List(), m_lines.size(), 0);
        InvalidateRect(List(), nullptr, TRUE);
        ShowSelected();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<NMHDR*>(lParam));
            return true;
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam));
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
            return End();
        case IDC_DIFFERENCES_NOISE:
            m_hasNoise = IsDlgButtonChecked(Handle(), IDC_DIFFERENCES_NOISE) == BST_CHECKED;
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
        SetDlgItemTextW(Handle(), IDC_DIFFERENCES_DETAILS, line ? line->details.c_str() : L"");
        EnableWindow(Item(IDOK), line && line->textKind);
    }

    void ShowTexts() const {
        const DifferenceLine* line = Selected();
        if (line && line->textKind) {
            ShowTextPair(Handle(), m_packages, *line, m_hasNoise);
        }
    }

    [[nodiscard]] const DifferenceLine* Selected() const {
        const int line = SelectedLine(List());
        return line < 0 ? nullptr : &m_lines.at(static_cast<std::size_t>(line));
    }

    [[nodiscard]] HWND List() const { return Item(IDC_DIFFERENCES_LIST); }

    const ComparedPackages& m_packages;
    const DifferenceReport& m_report;
    bool m_hasNoise; // the list shows what differs in numbers, blanks and comments alone
    std::vector<DifferenceLine> m_lines;
};

} // namespace

void ShowDifferences(HWND owner, const ComparedPackages& packages, const DifferenceReport& report) {
    DifferencesDialog(packages, report).Show(owner);
}

} // namespace viewer
