// The small window that shows how far a long unpacking is, with Cancel.
#pragma once

#include "session/UnpackTask.h"

namespace viewer {

class ProgressDialog {
public:
    /// Shows progress of the task beside its owner window. Cancel cancels the task.
    ProgressDialog(HWND owner, UnpackTask& task);
    ~ProgressDialog();
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;

    /// Shows where the task is now.
    void Update();

    /// Handles the dialog's keyboard; true when the message was for it.
    [[nodiscard]] bool IsDialogMessage(MSG& message) const { return ::IsDialogMessageW(m_dialog, &message); }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND m_dialog = nullptr;
    UnpackTask& m_task;
};

} // namespace viewer
