// A button in a dialog for a file that chooses a folder instead.
#pragma once

#include "common/ComObject.h"

#include <windows.h>

#include <shobjidl.h>

namespace viewer {

/// Belongs to one dialog while that is shown. Pressing it closes the dialog.
class FolderButton final : public common::ComObject<IFileDialogEvents, IFileDialogControlEvents> {
public:
    /// Adds the button to a dialog; without it where the system has none for dialogs.
    explicit FolderButton(IFileDialog& dialog);

    /// The dialog calls back until then.
    void Detach(IFileDialog& dialog) const;

    [[nodiscard]] bool IsPressed() const { return m_isPressed; }

private:
    HRESULT STDMETHODCALLTYPE OnFileOk(IFileDialog*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnFolderChanging(IFileDialog*, IShellItem*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnFolderChange(IFileDialog*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnSelectionChange(IFileDialog*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShareViolation(IFileDialog*, IShellItem*,
                                               FDE_SHAREVIOLATION_RESPONSE*) noexcept override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE OnTypeChange(IFileDialog*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnOverwrite(IFileDialog*, IShellItem*,
                                          FDE_OVERWRITE_RESPONSE*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE OnItemSelected(IFileDialogCustomize*, DWORD, DWORD) noexcept override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnButtonClicked(IFileDialogCustomize* custom, DWORD control) noexcept override;
    HRESULT STDMETHODCALLTYPE OnCheckButtonToggled(IFileDialogCustomize*, DWORD, BOOL) noexcept override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnControlActivating(IFileDialogCustomize*, DWORD) noexcept override {
        return S_OK;
    }

    DWORD m_cookie = 0;
    bool m_isAdvised = false;
    bool m_isPressed = false;
};

} // namespace viewer
