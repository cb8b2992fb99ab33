// Base of the module's modeless dialogs.
#pragma once

#include "afxwin.h"

/// Return and Escape leave the dialog as it is; the framework's handlers would hide it, as they end a modal
/// one.
class ModelessDialog : public CDialog {
protected:
    ModelessDialog() = default;
    ModelessDialog(UINT id, CWnd* parent) : CDialog(id, parent) {}

    void OnOK() override {}
    void OnCancel() override {}
};
