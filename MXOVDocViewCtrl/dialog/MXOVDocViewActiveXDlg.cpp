#include "MXOVDocViewActiveXDlg.h"

#include "ListSelection.h"
#include "popup/MXOVPopupDlg.h"
#include "WaitCursor.h"

using namespace docview;

MXOVDocViewActiveXDlg::MXOVDocViewActiveXDlg(CWnd* parent) : ModelessDialog(IDD, parent) {}

void MXOVDocViewActiveXDlg::DoDataExchange(CDataExchange* dx) {
    ModelessDialog::DoDataExchange(dx);
    // A box collects the controls inside it when it is bound, so its list comes first.
    DDX_Control(dx, IDC_PART_LIST, m_partList);
    DDX_Control(dx, IDC_PART_BOX, m_partBox);
    DDX_Control(dx, IDC_GCODE_LIST, m_gCodeList);
    DDX_Control(dx, IDC_GCODE_BOX, m_gCodeBox);
    DDX_Control(dx, IDC_SETUP_LIST, m_setupList);
    DDX_Control(dx, IDC_SETUP_BOX, m_setupBox);
    DDX_Control(dx, IDC_ADDITIONAL_LIST, m_additionalList);
    DDX_Control(dx, IDC_ADDITIONAL_BOX, m_additionalBox);
}

BEGIN_MESSAGE_MAP(MXOVDocViewActiveXDlg, ModelessDialog)
    ON_WM_PAINT()
    ON_WM_CTLCOLOR()
    ON_WM_SIZE()
    ON_WM_CONTEXTMENU()
    ON_NOTIFY(NM_CLICK, IDC_PART_LIST, &MXOVDocViewActiveXDlg::OnClickPart)
    ON_NOTIFY(NM_CLICK, IDC_GCODE_LIST, &MXOVDocViewActiveXDlg::OnClickGCode)
    ON_NOTIFY(NM_CLICK, IDC_SETUP_LIST, &MXOVDocViewActiveXDlg::OnClickSetup)
    ON_NOTIFY(NM_CLICK, IDC_ADDITIONAL_LIST, &MXOVDocViewActiveXDlg::OnClickAdditional)
    ON_NOTIFY(NM_DBLCLK, IDC_GCODE_LIST, &MXOVDocViewActiveXDlg::OnDoubleClickGCode)
    ON_NOTIFY(NM_DBLCLK, IDC_SETUP_LIST, &MXOVDocViewActiveXDlg::OnDoubleClickSetup)
    ON_NOTIFY(NM_DBLCLK, IDC_ADDITIONAL_LIST, &MXOVDocViewActiveXDlg::OnDoubleClickAdditional)
    ON_NOTIFY(NM_KILLFOCUS, IDC_ADDITIONAL_LIST, &MXOVDocViewActiveXDlg::OnKillFocusAdditional)
    ON_BN_CLICKED(IDC_ADD, &MXOVDocViewActiveXDlg::OnAdd)
    ON_BN_CLICKED(IDC_DELETE, &MXOVDocViewActiveXDlg::OnDelete)
    ON_BN_CLICKED(IDC_SAVE, &MXOVDocViewActiveXDlg::OnSave)
    ON_BN_CLICKED(IDC_UPDATE, &MXOVDocViewActiveXDlg::OnUpdate)
END_MESSAGE_MAP()

BOOL MXOVDocViewActiveXDlg::OnInitDialog() {
    ModelessDialog::OnInitDialog();
    CreateImageLists();
    for (CListCtrl* list : {&m_partList, &m_gCodeList, &m_setupList, &m_additionalList}) {
        SetUpList(*list);
    }
    if (m_buttonImagesMissing) {
        m_buttonImagesMissing = FALSE;
        LoadButtonImages();
        EnableDeleteButton(false);
    }
    ShowItem(IDC_UPDATE, false);
    if (!m_informationFile.empty()) {
        ShowLoadedPackage();
    }
    return TRUE;
}

void MXOVDocViewActiveXDlg::OnPaint() {
    ModelessDialog::OnPaint();
    CWnd* const controls[] = {&m_partBox,  &m_partList,  &m_gCodeBox,      &m_gCodeList,
                              &m_setupBox, &m_setupList, &m_additionalBox, &m_additionalList};
    for (CWnd* control : controls) {
        control->Invalidate();
    }
}

HBRUSH MXOVDocViewActiveXDlg::OnCtlColor(CDC* /*dc*/, CWnd* /*window*/, UINT /*kind*/) {
    // The base class is not called: it would set the colours of a grey dialog.
    return static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
}

void MXOVDocViewActiveXDlg::OnSize(UINT type, int cx, int cy) {
    ModelessDialog::OnSize(type, cx, cy);
}

void MXOVDocViewActiveXDlg::OnContextMenu(CWnd* window, CPoint point) {
    CRect inside;
    GetClientRect(inside);
    ClientToScreen(inside);
    if (!inside.PtInRect(point)) {
        ModelessDialog::OnContextMenu(window, point);
    }
}

void MXOVDocViewActiveXDlg::OnClickPart(NMHDR* /*header*/, LRESULT* result) {
    ClickPackageDocument(DocumentCategory::PartAssembly);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnClickGCode(NMHDR* /*header*/, LRESULT* result) {
    ClickPackageDocument(DocumentCategory::GCode);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnClickSetup(NMHDR* /*header*/, LRESULT* result) {
    ClickPackageDocument(DocumentCategory::SetupSheets);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnClickAdditional(NMHDR* /*header*/, LRESULT* result) {
    const int item = SelectedItem(m_additionalList);
    if (item >= 0) {
        ShowDocumentProperties(DocumentCategory::AdditionalDocument, item);
        EnableDeleteButton(true);
        m_additionalList.SetFocus();
    }
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnDoubleClickGCode(NMHDR* /*header*/, LRESULT* result) {
    OpenSelectedDocument(DocumentCategory::GCode);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnDoubleClickSetup(NMHDR* /*header*/, LRESULT* result) {
    OpenSelectedDocument(DocumentCategory::SetupSheets);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnDoubleClickAdditional(NMHDR* /*header*/, LRESULT* result) {
    if (SelectedItem(m_additionalList) >= 0) {
        EnableDeleteButton(true);
    }
    OpenSelectedDocument(DocumentCategory::AdditionalDocument);
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnKillFocusAdditional(NMHDR* /*header*/, LRESULT* result) {
    *result = 0;
}

void MXOVDocViewActiveXDlg::OnAdd() {
    AddAdditionalDocument();
}

void MXOVDocViewActiveXDlg::OnDelete() {
    DeleteAdditionalDocument();
}

void MXOVDocViewActiveXDlg::OnSave() {
    const WaitCursor waitCursor;
    RegeneratePackage();
    ReadPackageSummary();
    SetModified(false);
}

void MXOVDocViewActiveXDlg::OnUpdate() {
    SetModified(true);
}

void MXOVDocViewActiveXDlg::PostNcDestroy() {
    ModelessDialog::PostNcDestroy();
    MXOVPopupDlg::CloseOf(*this);
    m_buttonImagesMissing = TRUE; // the next window has new buttons
}
