// The system's file dialog with a check box that asks whether to link a file or copy it.
#pragma once

#include "afxdlgs.h"

/// Chooses one file. The check box starts checked, which means linked. Shown with DoModal; Create of the base
/// makes a modeless dialog from a numbered template.
class MXOVCustomizeFileDialog : public CFileDialog {
public:
    /// The arguments are those of the framework's dialog.
    MXOVCustomizeFileDialog(BOOL open, LPCTSTR defaultExtension, LPCTSTR fileName, DWORD flags,
                            LPCTSTR filter, CWnd* parent);

    /// State of the check box: 0 or 1. Where the dialog cannot tell it, 1.
    void SetCheck(int check);
    int GetCheck();

    BOOL OnInitDialog() override;

protected:
    DECLARE_MESSAGE_MAP()

private:
    CButton m_checkBox;
};
