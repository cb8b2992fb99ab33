#include "Dialog.h"

#include "WindowMessages.h"
#include "WindowProcedure.h"

using namespace framework;

namespace {

/// A dialog template of the resource module; null when there is none.
LPCDLGTEMPLATE FindTemplate(LPCTSTR name) noexcept {
    const HINSTANCE module = AfxGetResourceHandle();
    const HRSRC place = ::FindResource(module, name, RT_DIALOG);
    const HGLOBAL resource = place ? ::LoadResource(module, place) : nullptr;
    return static_cast<LPCDLGTEMPLATE>(resource ? ::LockResource(resource) : nullptr);
}

} // namespace

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd) {}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCE(nIDTemplate), pParentWnd) {}

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd) {
    m_lpszTemplateName = lpszTemplateName;
    return CreateIndirect(FindTemplate(lpszTemplateName), pParentWnd, AfxGetResourceHandle());
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
    return Create(MAKEINTRESOURCE(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst) {
    WindowCreation creation(this);
    m_failed = false;
    const HWND parent = pParentWnd ? pParentWnd->m_hWnd : nullptr;
    const HWND created = lpDialogTemplate
                             ? ::CreateDialogIndirectParam(hInst ? hInst : AfxGetInstanceHandle(),
                                                           lpDialogTemplate, parent, &DialogProc, 0)
                             : nullptr;
    if (!created) {
        creation.Fail();
        return FALSE;
    }
    // The initialisation may have destroyed the window, and a self-deleting object with it.
    if (FromHandlePermanent(created) != this) {
        return FALSE;
    }
    if (m_failed) {
        DestroyWindow();
        return FALSE;
    }
    return TRUE;
}

INT_PTR CDialog::DoModal() {
    LPCDLGTEMPLATE dialogTemplate = FindTemplate(m_lpszTemplateName);
    if (!dialogTemplate) {
        return -1;
    }
    WindowCreation creation(this);
    m_failed = false;
    const INT_PTR result =
        ::DialogBoxIndirectParam(AfxGetResourceHandle(), dialogTemplate,
                                 m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr, &DialogProc, 0);
    creation.Fail(); // does nothing when there was a window
    return m_failed ? -1 : result;
}

void CDialog::EndDialog(int nResult) noexcept {
    ::EndDialog(m_hWnd, nResult);
}

BOOL CDialog::OnInitDialog() {
    if (!UpdateData(FALSE)) {
        m_failed = true;
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) {
        EndDialog(IDOK);
    }
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

INT_PTR CALLBACK CDialog::DialogProc(HWND hWnd, UINT message, WPARAM, LPARAM) noexcept {
    // Everything else comes through the window procedure.
    return message == WM_INITDIALOG ? Initialise(hWnd) : FALSE;
}

INT_PTR CDialog::Initialise(HWND hWnd) noexcept {
    auto* dialog = static_cast<CDialog*>(FromHandlePermanent(hWnd));
    if (!dialog) {
        return FALSE;
    }
    BOOL setFocus = FALSE;
    if (Guard([&] { setFocus = dialog->OnInitDialog(); })) {
        // The system would take the focus from the host for a dialog inside a control (DS_CONTROL).
        return setFocus && !(::GetWindowLong(hWnd, GWL_STYLE) & DS_CONTROL);
    }
    if (FromHandlePermanent(hWnd) == dialog) {
        dialog->m_failed = true;
        dialog->EndDialog(-1);
    }
    return FALSE;
}
