// What the controller needs of the window that shows its package.
#pragma once

#include <windows.h>

#include <string>

namespace viewer {

class PackageView {
public:
    /// The window that owns message boxes and receives the controller's messages.
    [[nodiscard]] virtual HWND Frame() const = 0;

    /// Called when the control has loaded another package, before anything else is read of it.
    virtual void OnCatalogueLoaded() = 0;

    /// Called when a package was opened, saved or closed, and when opening ended without a change.
    virtual void OnPackageChanged() = 0;

    /// Called when the package is about to be closed: every question about it is answered.
    virtual void OnPackageClosing() = 0;

    /// Called when the controller's `IsUnsaved` or `News` has changed.
    virtual void OnNewsChanged() = 0;

    /// Shows a line of text until the next one.
    virtual void ShowStatus(const std::wstring& text) = 0;

    /// Shows a line of text for some seconds.
    virtual void ShowNote(const std::wstring& text) = 0;

    /// Shows what went wrong and waits until the user has read it.
    virtual void ShowError(const std::wstring& text) = 0;

protected:
    ~PackageView() = default;
};

} // namespace viewer
