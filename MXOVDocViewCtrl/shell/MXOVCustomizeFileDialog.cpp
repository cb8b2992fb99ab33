#include "MXOVCustomizeFileDialog.h"

#include "HostText.h"

using namespace docview;

namespace {

constexpr DWORD kLinkCheckBox = 1000003;
constexpr DWORD kStructureSize = 0; // the framework's own
constexpr BOOL kNewerStyle = TRUE;

} // namespace

MXOVCustomizeFileDialog::MXOVCustomizeFileDialog(BOOL open, LPCTSTR defaultExtension, LPCTSTR fileName,
                                                 DWORD flags, LPCTSTR filter, CWnd* parent)
    : CFileDialog(open, defaultExtension, fileName, flags, filter, parent, kStructureSize, kNewerStyle) {
    AddCheckButton(kLinkCheckBox, HostText(hosttext::kLinkFile).c_str(), TRUE);
}

BEGIN_MESSAGE_MAP(MXOVCustomizeFileDialog, CFileDialog)
END_MESSAGE_MAP()

BOOL MXOVCustomizeFileDialog::OnInitDialog() {
    CFileDialog::OnInitDialog();
    if (!m_checkBox.GetSafeHwnd()) {
        m_checkBox.SubclassDlgItem(kLinkCheckBox, this);
    }
    return TRUE;
}

void MXOVCustomizeFileDialog::SetCheck(int check) {
    SetCheckButtonState(kLinkCheckBox, check);
}

int MXOVCustomizeFileDialog::GetCheck() {
    BOOL checked = TRUE;
    return SUCCEEDED(GetCheckButtonState(kLinkCheckBox, checked)) ? checked : 1;
}
