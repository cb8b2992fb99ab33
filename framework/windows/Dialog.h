// CDialog: a dialog box made from a template of the resource module.
//
// Covered: modeless and modal dialogs from a resource or a template in memory, OnInitDialog, OnOK, OnCancel.
// The system pumps the messages of a modal dialog, so PreTranslateMessage is not called there; a modeless
// dialog's keyboard messages are its owner's to hand to IsDialogMessage. An exception out of OnInitDialog
// makes the creation fail. Not covered: help, default identifiers, routing of commands to the owner, extra
// initialisation data in the resource.
#pragma once

#include "Wnd.h"

class CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)

public:
    /// For a modal dialog; nothing is created yet.
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);

    /// Creates the dialog modeless; without a parent it has no owner. FALSE when the template does not exist
    /// or the window or its initialisation failed.
    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                                HINSTANCE hInst = nullptr);

    /// Runs the dialog of the constructor; the value of EndDialog, or -1 when it could not be made.
    virtual INT_PTR DoModal();
    /// Ends a modal dialog. A modeless one is only hidden: it overrides OnOK and OnCancel, and ends by
    /// DestroyWindow.
    void EndDialog(int nResult) noexcept;

    /// From WM_INITDIALOG, with all controls there. The default sends the data to the controls. TRUE: the
    /// system sets the focus, but not into a dialog with DS_CONTROL.
    virtual BOOL OnInitDialog();

protected:
    /// For a modeless dialog.
    CDialog() = default;

    virtual void OnOK();
    virtual void OnCancel();

    DECLARE_MESSAGE_MAP()

private:
    using CWnd::Create;
    static INT_PTR CALLBACK DialogProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static INT_PTR Initialise(HWND hWnd) noexcept;

    LPCTSTR m_lpszTemplateName = nullptr; ///< name or MAKEINTRESOURCE number; the caller's, not copied
    CWnd* m_pParentWnd = nullptr;         ///< owner of a modal dialog
    bool m_failed = false;                ///< OnInitDialog ended with an exception or an ended dialog
};
