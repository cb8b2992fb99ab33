#include "DataExchange.h"

HWND CDataExchange::PrepareCtrl(int nIDC) {
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (!control) {
        AfxThrowNotSupportedException();
    }
    m_lastControl = control;
    m_lastIsEdit = false;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    const HWND control = PrepareCtrl(nIDC);
    m_lastIsEdit = true;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_lastControl) {
        ::SetFocus(m_lastControl);
        if (m_lastIsEdit) {
            ::SendMessage(m_lastControl, EM_SETSEL, 0, -1);
        }
    }
    AfxThrowUserException();
}

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (rControl.m_hWnd) {
        return;
    }
    if (!rControl.SubclassWindow(pDX->PrepareCtrl(nIDC))) {
        AfxThrowNotSupportedException();
    }
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    CWnd* control = CWnd::FromHandle(pDX->PrepareEditCtrl(nIDC));
    CString shown;
    control->GetWindowText(shown);
    if (pDX->m_bSaveAndValidate) {
        value = shown;
    } else if (shown != value) {
        control->SetWindowText(value);
    }
}
