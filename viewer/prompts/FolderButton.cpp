#include "prompts/FolderButton.h"

#include "common/ComPtr.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

constexpr DWORD kFolderButton = 1;

} // namespace

FolderButton::FolderButton(IFileDialog& dialog) {
    common::ComPtr<IFileDialogCustomize> custom;
    if (SUCCEEDED(dialog.QueryInterface(__uuidof(IFileDialogCustomize), custom.ReceiveVoid())) &&
        SUCCEEDED(custom->AddPushButton(kFolderButton, Text(IDS_FOLDER_BUTTON).c_str()))) {
        m_isAdvised = SUCCEEDED(dialog.Advise(this, &m_cookie));
    }
}

void FolderButton::Detach(IFileDialog& dialog) const {
    if (m_isAdvised) {
        dialog.Unadvise(m_cookie);
    }
}

HRESULT FolderButton::OnButtonClicked(IFileDialogCustomize* custom, DWORD control) noexcept {
    common::ComPtr<IFileDialog> dialog;
    if (control == kFolderButton &&
        SUCCEEDED(custom->QueryInterface(__uuidof(IFileDialog), dialog.ReceiveVoid()))) {
        m_isPressed = true;
        dialog->Close(HRESULT_FROM_WIN32(ERROR_CANCELLED));
    }
    return S_OK;
}

} // namespace viewer
