// Dialog data exchange: binds controls to members and moves values.
//
// Covered: DDX_Control and DDX_Text for texts. A control that does not exist throws a CNotSupportedException.
// Not covered: the other DDX routines, validation (DDV).
#pragma once

#include "Wnd.h"

/// The state of one exchange; made by CWnd::UpdateData.
class CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate) noexcept
        : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

    /// The control of a number. PrepareEditCtrl notes besides that it takes typed input.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    /// Refuses the value of the last control: it gets the focus (an edit its text selected), the exchange
    /// ends.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls into the members
    CWnd* m_pDlgWnd;

private:
    HWND m_lastControl = nullptr;
    bool m_lastIsEdit = false;
};

/// Subclasses the control into rControl, the first time; later calls do nothing.
void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

/// Exchanges a control's text. A control that shows the text already is left alone.
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
