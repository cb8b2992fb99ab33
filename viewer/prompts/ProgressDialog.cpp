#include "prompts/ProgressDialog.h"

#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Window.h"

#include <commctrl.h>

namespace viewer {

namespace {

constexpr int kBarSteps = 1000;

} // namespace

ProgressDialog::ProgressDialog(HWND owner, WorkProgress& work, const std::wstring& title) : m_work(work) {
    m_dialog = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PROGRESS), owner, Procedure,
                                  reinterpret_cast<LPARAM>(this));
    SetDlgItemTextW(m_dialog, IDC_PROGRESS_PACKAGE, title.c_str());
    SetDlgItemTextW(m_dialog, IDCANCEL, Text(IDS_CANCEL).c_str());
    SendDlgItemMessageW(m_dialog, IDC_PROGRESS_BAR, PBM_SETRANGE32, 0, kBarSteps);
    CentreOn(m_dialog, owner);
    Update();
    ShowWindow(m_dialog, SW_SHOW);
}

ProgressDialog::~ProgressDialog() {
    DestroyWindow(m_dialog);
}

void ProgressDialog::Update() {
    const WorkProgress::Progress progress = m_work.Current();
    const auto step =
        progress.total == 0 ? 0 : progress.done * 1.0 / static_cast<double>(progress.total) * kBarSteps;
    SendDlgItemMessageW(m_dialog, IDC_PROGRESS_BAR, PBM_SETPOS, static_cast<WPARAM>(step), 0);
    SetDlgItemTextW(m_dialog, IDC_PROGRESS_ENTRY, progress.name.c_str());
}

INT_PTR CALLBACK ProgressDialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        ShowFocusInDialog(dialog);
        return TRUE;
    }
    if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) {
        reinterpret_cast<ProgressDialog*>(GetWindowLongPtrW(dialog, DWLP_USER))->m_work.Cancel();
        EnableWindow(GetDlgItem(dialog, IDCANCEL), FALSE);
        return TRUE;
    }
    return FALSE;
}

} // namespace viewer
