// The dialog's modified state and the rebuilding of the package file.
#include "MXOVDocViewActiveXDlg.h"

#include "shell/HostText.h"
#include "shell/ModalScope.h"

#include <mxovshare.h>

using namespace docview;

void MXOVDocViewActiveXDlg::SaveOnClose() {
    if (!m_modified) {
        return;
    }
    const ModalScope modal(*this);
    const std::wstring question = HostText(hosttext::kAskSave);
    if (MessageBox(question.c_str(), kMessageTitle, MB_YESNO | MB_ICONEXCLAMATION) == IDYES) {
        RegeneratePackage();
    }
}

void MXOVDocViewActiveXDlg::SetModified(bool modified) {
    EnableItem(IDC_SAVE, modified);
    m_modified = modified;
}

void MXOVDocViewActiveXDlg::RegeneratePackage() {
    mxovshare::Utils::ReGenerateOrvandoFile(m_packageFolder, m_packageFile,
                                            HostText(hosttext::kRegenerateOperation));
}
