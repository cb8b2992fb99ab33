// A control whose whole area is a dialog.
#pragma once

#include "afxctl.h"

#include "common/WindowWatch.h"

/// Adds what a control needs for the child windows of its dialog: their keys, their focus and a drawing after
/// every new size. The framework knows the control's own window only.
class DialogControl : public COleControl {
public:
    /// Keyboard messages from the container: Tab, arrows, mnemonics, and Enter on a button.
    BOOL PreTranslateMessage(MSG* message) override;
    /// Activation by Tab or Shift+Tab starts at the first or the last control of the dialog.
    BOOL OnDoVerb(LONG verb, LPMSG message, HWND parent, LPCRECT rect) override;

protected:
    /// The window lies behind its dialog, and hosts with IsDialogMessage alone reach it by Tab.
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    /// Names the dialog, once it exists with all its controls. The control passes the focus on to it, and
    /// activates its user interface when one of its windows gets the focus or a click.
    void CoverWith(CDialog& dialog);

    /// Last step of OnDraw, which moves the dialog to the bounds: after a drawing elsewhere, as for printing,
    /// the window draws itself again at once. No sink is notified, since one that draws on every notice would
    /// never end.
    void RestoreDialog(const CRect& drawn);

    afx_msg int OnMouseActivate(CWnd* desktop, UINT hitTest, UINT message);
    afx_msg void OnSetFocus(CWnd* before);
    afx_msg void OnSize(UINT type, int cx, int cy);
    DECLARE_MESSAGE_MAP()

private:
    HWND DialogWindow() const { return m_dialog ? m_dialog->GetSafeHwnd() : nullptr; }
    void ActivateUI(LPMSG cause) noexcept;
    static LRESULT WatchedMessageProc(const common::WatchedMessage& message, void* control) noexcept;

    CDialog* m_dialog = nullptr;
};
