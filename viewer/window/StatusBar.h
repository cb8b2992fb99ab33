// The status bar: what happens, and at the right a fact about what is open.
#pragma once

#include <windows.h>

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

    /// Follows the size of the parent; the fact gets a part of this width, in pixels.
    void Arrange(int parentWidth, int factWidth);

    [[nodiscard]] int Height() const;

private:
    void SetPart(int part, const std::wstring& text);

    HWND m_bar = nullptr; // child, destroyed with the parent
};

} // namespace viewer
