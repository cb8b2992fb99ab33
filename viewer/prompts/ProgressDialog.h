// The small window that shows how far long work is, with Cancel.
#pragma once

#include "session/WorkProgress.h"

#include <string>

namespace viewer {

class ProgressDialog {
public:
    /// Shows the progress of work, named by `title`, over its owner window. Cancel cancels the work.
    ProgressDialog(HWND owner, WorkProgress& work, const std::wstring& title);
    ~ProgressDialog();
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;

    /// Shows where the work is now.
    void Update();

    /// Handles the dialog's keyboard; true when the message was for it.
    [[nodiscard]] bool IsDialogMessage(MSG& message) const { return ::IsDialogMessageW(m_dialog, &message); }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND m_dialog = nullptr;
    WorkProgress& m_work;
};

} // namespace viewer
