// The system's file dialog with a check box that chooses between linking and copying a file.
#pragma once

#include "afxdlgs.h"

/// Chooses one file. The check box starts checked, which means linked. Shown with DoModal; Create of the base
/// makes a modeless dialog from a numbered template.
class MXOVCustomizeFileDialog : public CFileDialog {
public:
    /// The arguments are those of the framework's dialog.
    MXOVCustomizeFileDialog(BOOL open, LPCTSTR defaultExtension, LPCTSTR fileName, DWORD flags,
                            LPCTSTR filter, CWnd* parent);

    /// State of the check box: 0 or 1; 1 when the dialog cannot report it.
    void SetCheck(int check);
    int GetCheck();

    BOOL OnInitDialog() override;

protected:
    DECLARE_MESSAGE_MAP()

private:
    CButton m_checkBox;
};
