#include "SectionPage.h"

#include "resource.h"

#include <array>

namespace {

constexpr int kStep = 20; // pixels by which the notes grow and shrink

struct Tool {
    const wchar_t* number;
    const wchar_t* name;
    const wchar_t* diameter;
};
constexpr std::array kTools{
    Tool{L"T1", L"Face mill", L"50 mm"},   Tool{L"T2", L"End mill", L"12 mm"},
    Tool{L"T5", L"Centre drill", L"3 mm"}, Tool{L"T6", L"Twist drill", L"6.8 mm"},
    Tool{L"T7", L"Thread tap", L"M8"},
};

} // namespace

// The boxes collect the controls in and below them when they are bound, so each control comes before its box.
void SectionPage::DoDataExchange(CDataExchange* exchange) {
    GalleryPage::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_NOTES, m_notes);
    DDX_Control(exchange, IDC_OPERATIONS_BOX, m_operationsBox);
    DDX_Control(exchange, IDC_TOOLS, m_tools);
    DDX_Control(exchange, IDC_TOOLS_BOX, m_toolsBox);
    DDX_Control(exchange, IDC_NOTES_BOX, m_notesBox);
}

BEGIN_MESSAGE_MAP(SectionPage, GalleryPage)
    ON_BN_CLICKED(IDC_SHOW_TOOLS, &SectionPage::OnShowTools)
    ON_BN_CLICKED(IDC_ENABLE_TOOLS, &SectionPage::OnEnableTools)
    ON_BN_CLICKED(IDC_FOLD_TOOLS, &SectionPage::OnFoldTools)
    ON_BN_CLICKED(IDC_TALLER, &SectionPage::OnTaller)
    ON_BN_CLICKED(IDC_SHORTER, &SectionPage::OnShorter)
END_MESSAGE_MAP()

BOOL SectionPage::OnInitDialog() {
    GalleryPage::OnInitDialog();
    Check(IDC_SHOW_TOOLS, true);
    Check(IDC_ENABLE_TOOLS, true);
    FillTools();
    return TRUE;
}

void SectionPage::OnShowTools() {
    m_toolsBox.ShowSection(IsChecked(IDC_SHOW_TOOLS));
}

void SectionPage::OnEnableTools() {
    m_toolsBox.EnableSection(IsChecked(IDC_ENABLE_TOOLS));
}

void SectionPage::OnFoldTools() {
    m_toolsBox.Toggle();
}

void SectionPage::OnTaller() {
    ResizeNotes(kStep);
}

void SectionPage::OnShorter() {
    ResizeNotes(-kStep);
}

void SectionPage::FillTools() {
    m_tools.InsertColumn(0, L"No.", LVCFMT_LEFT, 40);
    m_tools.InsertColumn(1, L"Tool", LVCFMT_LEFT, 130);
    m_tools.InsertColumn(2, L"Size", LVCFMT_RIGHT, 70);
    int row = 0;
    for (const Tool& tool : kTools) {
        m_tools.InsertItem(row, tool.number);
        m_tools.SetItemText(row, 1, tool.name);
        m_tools.SetItemText(row, 2, tool.diameter);
        ++row;
    }
}

// SetHeight sizes the box alone; what stands in it is the dialog's business.
void SectionPage::ResizeNotes(int difference) {
    CRect box;
    m_notesBox.GetWindowRect(&box);
    CWnd* const notes = GetDlgItem(IDC_NOTES);
    if (!notes->IsWindowVisible()) {
        return; // folded
    }
    const int shift = m_notesBox.SetHeight(box.Height() + difference);
    CRect place;
    notes->GetWindowRect(&place);
    ScreenToClient(&place);
    place.bottom += shift;
    notes->MoveWindow(&place);
}
