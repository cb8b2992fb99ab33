#include "GalleryDlg.h"

#include "resource.h"

GalleryDlg::GalleryDlg()
    : CDialog(IDD_GALLERY), m_collapsible([this](const CString& event) { Record(event); }) {}

BOOL GalleryDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_sections.Place(IDD_SECTIONS, *this, IDC_SECTIONS_PLACE) ||
        !m_collapsible.Place(IDD_COLLAPSIBLE, *this, IDC_COLLAPSIBLE_PLACE)) {
        EndDialog(IDABORT);
    }
    ::SetFocus(::GetNextDlgTabItem(m_hWnd, nullptr, FALSE));
    return FALSE;
}

void GalleryDlg::Record(const CString& event) {
    CWnd* const events = GetDlgItem(IDC_EVENTS);
    const LRESULT row = events->SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(event.GetString()));
    events->SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(row));
}
