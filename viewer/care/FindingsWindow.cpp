#include "care/FindingsWindow.h"

#include "care/FindingSentences.h"
#include "package/Paths.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/ReportList.h"

#include <algorithm>
#include <utility>

namespace viewer {

namespace {

struct CureButton {
    int id;
    CureCommand command;
    UINT text;
};

constexpr CureButton kCureButtons[] = {
    {IDC_CURE_FIND, CureCommand::Find, IDS_CURE_FIND},
    {IDC_CURE_FIND_IN_FOLDER, CureCommand::FindInFolder, IDS_CURE_FIND_IN_FOLDER},
    {IDC_CURE_COPY, CureCommand::MakeCopy, IDS_CURE_COPY},
    {IDC_CURE_REMOVE, CureCommand::Remove, IDS_CURE_REMOVE},
    {IDC_CURE_ATTACH, CureCommand::Attach, IDS_CURE_ATTACH},
    {IDC_CURE_SET_DATE, CureCommand::SetDate, IDS_CURE_SET_DATE},
};

// By severity.
constexpr UINT kSeverities[] = {IDS_ERROR, IDS_WARNING, IDS_NOTE};
constexpr UINT kOneFinding[] = {IDS_ONE_ERROR, IDS_ONE_WARNING, IDS_ONE_NOTE};
constexpr UINT kManyFindings[] = {IDS_ERRORS, IDS_WARNINGS, IDS_NOTES};

constexpr int kKindWidth = 90; // of its column, at 96 dots per inch
constexpr int kDocumentWidth = 170;

std::wstring FindingText(const care::Finding& finding, int column) {
    switch (column) {
    case 0:
        return Text(kSeverities[static_cast<std::size_t>(finding.severity)]);
    case 1:
        return finding.document.empty() ? finding.section : FileName(finding.document);
    default:
        return FindingSentence(finding);
    }
}

std::wstring DetailsOf(const care::Finding& finding) {
    std::wstring details = FindingSentence(finding);
    if (const std::wstring cure = CureSentence(finding); !cure.empty()) {
        details += L" " + cure;
    }
    return care::CuresOf(finding).empty() ? details + L"\r\n" + Text(IDS_NO_CURE) : details;
}

} // namespace

std::wstring FindingsSummary(const std::wstring& package, const std::vector<care::Finding>& findings) {
    if (findings.empty()) {
        return Text(IDS_NO_FINDINGS, {package});
    }
    std::wstring counts;
    for (std::size_t i = 0; i < std::size(kSeverities); ++i) {
        const auto count =
            std::ranges::count(findings, static_cast<care::Severity>(i), &care::Finding::severity);
        if (count > 0) {
            counts += counts.empty() ? L"" : L", ";
            counts += count == 1 ? Text(kOneFinding[i]) : Text(kManyFindings[i], {std::to_wstring(count)});
        }
    }
    return Text(IDS_FINDING_COUNTS, {package, counts});
}

void FindingsWindow::Show(HWND owner, const std::wstring& package, std::vector<care::Finding> findings) {
    if (!Handle() && !Create(IDD_FINDINGS, owner)) {
        return;
    }
    const int selected = SelectedLine(List());
    m_findings = std::move(findings);
    SetItemText(IDC_FINDINGS_SUMMARY, FindingsSummary(package, m_findings));
    FillReport(List(), m_findings.size(), selected < 0 ? 0 : static_cast<std::size_t>(selected));
    ShowSelected();
    ShowWindow(Handle(), SW_SHOW);
    SetFocus(List());
}

void FindingsWindow::Close() {
    if (Handle()) {
        DestroyWindow(Handle());
    }
}

const care::Finding* FindingsWindow::Selected() const {
    const int row = Handle() ? SelectedLine(List()) : -1;
    return row >= 0 && static_cast<std::size_t>(row) < m_findings.size()
               ? &m_findings[static_cast<std::size_t>(row)]
               : nullptr;
}

bool FindingsWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return true;
    case WM_NOTIFY:
        OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        return true;
    default:
        return false;
    }
}

void FindingsWindow::OnDpiChanged(UINT before, UINT after) {
    ScaleReportColumns(List(), before, after);
}

bool FindingsWindow::OnInit() {
    AddReportColumns(List(), {{Text(IDS_COLUMN_KIND), kKindWidth},
                              {Text(IDS_COLUMN_DOCUMENT), kDocumentWidth},
                              {Text(IDS_COLUMN_FINDING)}});
    SetWindowTextW(Handle(), Text(IDS_CHECK_TITLE).c_str());
    SetWindowTextW(List(), Text(IDS_FINDINGS).c_str());
    SetItemText(IDCANCEL, Text(IDS_CLOSE));
    for (const CureButton& button : kCureButtons) {
        SetItemText(button.id, Text(button.text));
    }
    return false; // the focus is set when it is shown
}

void FindingsWindow::OnCommand(int command) {
    const auto button = std::ranges::find(kCureButtons, command, &CureButton::id);
    if (button != std::end(kCureButtons)) {
        m_cure(button->command);
    } else if (command == IDCANCEL) {
        Close();
    }
}

void FindingsWindow::OnNotify(NMHDR& header) const {
    if (header.idFrom != IDC_FINDINGS_LIST) {
        return;
    }
    if (header.code == LVN_GETDISPINFOW) {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
        AnswerText(item, FindingText(m_findings.at(static_cast<std::size_t>(item.iItem)), item.iSubItem));
    } else if (header.code == LVN_ITEMCHANGED) {
        ShowSelected();
    }
}

void FindingsWindow::ShowSelected() const {
    const care::Finding* finding = Selected();
    SetDlgItemTextW(Handle(), IDC_FINDINGS_DETAILS, finding ? DetailsOf(*finding).c_str() : L"");
    const std::vector<care::Cure> cures = finding ? care::CuresOf(*finding) : std::vector<care::Cure>();
    for (const CureButton& button : kCureButtons) {
        EnableWindow(Item(button.id), std::ranges::find(cures, CureOf(button.command)) != cures.end());
    }
}

HWND FindingsWindow::List() const {
    return Item(IDC_FINDINGS_LIST);
}

} // namespace viewer
