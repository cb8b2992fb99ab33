// The document control inside the system's container window.
#pragma once

#include "common/ComPtr.h"
#include "control/ControlActivation.h"
#include "control/ControlEvents.h"

#include <initializer_list>
#include <string>

namespace viewer {

class ControlHost {
public:
    /// Creates the control in a container window, a child of `parent` without a size. Returns what went
    /// wrong, in words for the user; empty on success.
    [[nodiscard]] std::wstring Create(HWND parent, int id);

    /// Reports to `window` from now on what the user does in the control.
    void Notify(HWND window, const ControlEvents::Messages& messages) {
        m_events.Start(Content(), window, messages);
    }

    /// Releases the control and destroys its windows.
    void Destroy() noexcept;

    /// The width and height that show the whole control, in pixels of a frame with these dots per inch.
    [[nodiscard]] SIZE NaturalSize(UINT dpi) const;

    /// Moves the container and lets the control draw.
    void Move(const RECT& area);

    /// Passes the control where its properties window belongs. Called after each move of the frame.
    void UpdatePlace();

    /// The file that the control was created from.
    [[nodiscard]] const std::wstring& File() const { return m_activation.File(); }

    /// The part of the screen that the control takes up.
    [[nodiscard]] RECT ScreenArea() const;

    /// The dialog inside the control; null when there is none.
    [[nodiscard]] HWND Content() const { return GetWindow(ControlWindow(), GW_CHILD); }

    /// The control's members, as hosts call them. The folder ends with a separator.
    void LoadFile(const std::wstring& folder, const std::wstring& packageFile);
    void ClosePackage();
    void ClearAllData();

    /// Whether the control knows of changes to its package and offers to save them.
    [[nodiscard]] bool HasChanges() const;

    /// Lets the control save its package as its button does, whether it knows of changes or not.
    void Save();

    /// Makes the control take its package for changed, so that it offers to save it.
    void MarkChanged();

    /// The selected row of one of the lists, both counted from 0; -1 for none.
    [[nodiscard]] int SelectedRow(int list) const;

    /// Selects a row of a list.
    void SelectRow(int list, int row);

    /// Offers a keyboard message to the control; true when the control has handled it.
    [[nodiscard]] bool TranslateAccelerator(MSG& message);

    /// Shows the control or not.
    void Show(bool shown) { ShowWindow(m_container, shown ? SW_SHOWNA : SW_HIDE); }
    [[nodiscard]] bool IsShown() const { return (GetWindowLongW(m_container, GWL_STYLE) & WS_VISIBLE) != 0; }

    /// Paints at once what of the control is to be painted.
    void Paint() { RedrawWindow(m_container, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); }

    /// Lets the control take the user's input or not.
    void Enable(bool enabled) { EnableWindow(m_container, enabled); }

    /// Sets the focus to the control's first tab stop, or to its last.
    void SetFocus(bool last = false);
    [[nodiscard]] bool HasFocus() const { return IsChild(m_container, GetFocus()); }

private:
    void Call(const wchar_t* member, std::initializer_list<VARIANT> arguments = {});
    [[nodiscard]] HWND ControlWindow() const;
    [[nodiscard]] SIZE MeasureControl() const;
    void NameParts() const;

    HWND m_container = nullptr;
    ControlActivation m_activation;
    ControlEvents m_events;
    common::ComPtr<IDispatch> m_control;
    SIZE m_naturalSize = {};
};

} // namespace viewer
