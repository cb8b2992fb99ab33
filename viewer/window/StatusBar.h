// The status bar: what happens, and at the right a fact about what is open.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

class StatusBar {
public:
    /// Of the parent, while a note is shown.
    static constexpr UINT_PTR kNoteTimer = 2;

    [[nodiscard]] bool Create(HWND parent, int id);

    /// Shows a line of text until the next one, and the fact.
    void Show(const std::wstring& text, const std::wstring& fact);

    /// Shows a line of text for some seconds; then the parent receives the timer and shows the next one.
    void ShowNote(const std::wstring& text);

    /// Follows the size of the parent, in pixels. The fact gets what it needs.
    void Arrange(int parentWidth);

    /// Shows its texts in the size for these dots per inch.
    void ChangeDpi(UINT dpi);

    [[nodiscard]] int Height() const;

private:
    void SetPart(int part, const std::wstring& text);

    HWND m_bar = nullptr; // child, destroyed with the parent
    common::UniqueFont m_font;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
    std::wstring m_fact;
};

} // namespace viewer
