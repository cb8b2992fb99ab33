// CFileDialog: the system's dialog for choosing one file, in its newer style, with check boxes of the
// caller's.
//
// Covered: opening and saving, the filter, check boxes, the chosen path. COM must be initialised on the
// thread. Of the OFN_ flags those are used that the newer dialog has too (overwrite prompt, existing path or
// file, no validation, no links followed, no entry among the recent files, hidden files shown); the rest have
// no meaning there. OnInitDialog is not called, as documented for this style. Not covered: the older style
// (bVistaStyle and dwSize are there for the signature), several files, other controls, m_ofn, events.
#pragma once

#include "common/ComPtr.h"
#include "Dialog.h"

#include <commdlg.h>
#include <shobjidl.h>

/// Base of the dialogs that the system supplies.
class CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)

public:
    explicit CCommonDialog(CWnd* pParentWnd);
};

class CFileDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFileDialog)

public:
    /// TRUE opens, FALSE saves. The filter is a list "name|pattern|name|pattern||"; patterns are separated by
    /// ';'.
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr, LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0, BOOL bVistaStyle = TRUE);

    /// IDOK, or IDCANCEL when the user cancelled or the system has no such dialog. Runs once for an object.
    INT_PTR DoModal() override;

    /// The chosen file: its full path, its name with extension; empty before DoModal returned IDOK.
    CString GetPathName() const { return m_path; }

    /// Check boxes, before the dialog is shown, while it is and afterwards. E_NOINTERFACE when the system's
    /// dialog has none, otherwise its own results.
    HRESULT AddCheckButton(DWORD dwIDCtl, const CString& strLabel, BOOL bChecked);
    HRESULT SetCheckButtonState(DWORD dwIDCtl, BOOL bChecked);
    HRESULT GetCheckButtonState(DWORD dwIDCtl, BOOL& bChecked);

private:
    HRESULT Prepare();
    HRESULT SetFilter();

    CWnd* m_owner;
    common::ComPtr<IFileDialog> m_dialog;
    common::ComPtr<IFileDialogCustomize> m_customize;
    CString m_extension;
    CString m_name;
    CString m_filter;
    DWORD m_flags;
    CString m_path;
};
